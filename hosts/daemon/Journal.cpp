// SPDX-License-Identifier: MIT
#include "hosts/daemon/Journal.h"

#include "DozelyKit/core/foundation/RootFolder.h"

#include <QFile>
#include <QtEndian>

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>

using namespace dozely;

QByteArray Journal::encoded(const Fields &fields)
{
    constexpr qsizetype longest = 4096; // bytes; an entry must fit into a datagram
    QByteArray bytes;
    for (const auto &[name, text] : fields) {
        const QByteArray value = text.toUtf8().left(longest);
        if (!value.contains('\n')) {
            bytes += name + '=' + value + '\n';
            continue;
        }
        char size[sizeof(quint64)];
        qToLittleEndian(static_cast<quint64>(value.size()), size);
        bytes += name + '\n' + QByteArray(size, sizeof size) + value + '\n';
    }
    return bytes;
}

Journal::Sent Journal::send(const Fields &fields)
{
    const QByteArray path = QFile::encodeName(RootFolder::join("/run/systemd/journal/socket"));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<size_t>(path.size()) >= sizeof address.sun_path)
        return Sent::No;
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
    if (!m_socket.isValid())
        m_socket.reset(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const QByteArray bytes = encoded(fields);
    // To the address each time, since the journal may be started anew.
    const auto sent = ::sendto(m_socket.get(), bytes.constData(), static_cast<size_t>(bytes.size()),
                               MSG_NOSIGNAL, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    if (sent >= 0)
        return Sent::Yes;
    return errno == EAGAIN || errno == ENOBUFS ? Sent::Later : Sent::No;
}
