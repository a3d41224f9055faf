// SPDX-License-Identifier: MIT
#include "hosts/common/performing/OrderStream.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Descriptor.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace dozely;

namespace
{
/// One byte, and room for one descriptor beside it.
class Message
{
public:
    Message()
    {
        header.msg_iov = &m_content;
        header.msg_iovlen = 1;
        header.msg_control = m_control;
        header.msg_controllen = sizeof m_control;
    }
    Message(const Message &) = delete;
    Message &operator=(const Message &) = delete;

    msghdr header{};

private:
    char m_byte = 'O';
    iovec m_content{&m_byte, 1};
    alignas(cmsghdr) char m_control[CMSG_SPACE(sizeof(int))]{};
};

Error failure(const char *what)
{
    return Error{QString("%1: %2").arg(QString(what), qt_error_string(errno))};
}
} // namespace

Result<void> OrderStream::send(int socket, const PerformanceOrder &order)
{
    const QByteArray data = order.toData();
    if (data.isEmpty())
        return Error{"the parameters cannot be sent", unsendable};
    const Descriptor memory(::memfd_create("order", MFD_CLOEXEC));
    QFile file;
    if (!memory.isValid() || !file.open(memory.get(), QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(data) != data.size())
        return failure("memory");
    Message message;
    cmsghdr *const header = CMSG_FIRSTHDR(&message.header);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof(int));
    const int number = memory.get();
    std::memcpy(CMSG_DATA(header), &number, sizeof number);
    if (::sendmsg(socket, &message.header, MSG_NOSIGNAL | MSG_DONTWAIT) != 1)
        return failure("sendmsg");
    return {};
}

bool OrderStream::go(int socket)
{
    const char byte = 'G';
    return ::send(socket, &byte, 1, MSG_NOSIGNAL | MSG_DONTWAIT) == 1;
}

OrderStream::News OrderStream::hear(int socket)
{
    char byte = 0;
    const ssize_t size = ::recv(socket, &byte, 1, MSG_DONTWAIT);
    if (size == 1)
        return News::Begun;
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return News::None;
    return size < 0 && errno == ECONNRESET ? News::EndedUnheard : News::Ended; // unix(7)
}

void OrderStream::tellBegun(int socket)
{
    const char byte = 'B';
    ::send(socket, &byte, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

Result<PerformanceOrder> OrderStream::read(int socket)
{
    Message message;
    ssize_t size = 0;
    do {
        size = ::recvmsg(socket, &message.header, MSG_CMSG_CLOEXEC);
    } while (size < 0 && errno == EINTR);
    if (size < 0)
        return failure("standard input");
    const cmsghdr *const header = size == 1 ? CMSG_FIRSTHDR(&message.header) : nullptr;
    if (!header || header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS ||
        header->cmsg_len != CMSG_LEN(sizeof(int)))
        return Error{"standard input brings no order; hosts of the system start this program"};
    int number = -1;
    std::memcpy(&number, CMSG_DATA(header), sizeof number);
    const Descriptor memory(number);
    QFile file;
    if (::lseek(memory.get(), 0, SEEK_SET) != 0 || !file.open(memory.get(), QIODevice::ReadOnly) ||
        file.size() > PropertyList::ofTheSystem.size)
        return Error{"the order cannot be read"};
    return PerformanceOrder::fromData(file.readAll());
}
