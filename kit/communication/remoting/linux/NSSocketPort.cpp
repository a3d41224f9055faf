// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/NSSocketPort.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
// The platform's address record: 8-bit length, 8-bit family, 104 bytes of path.
constexpr qsizetype recordSize = 106;
constexpr qsizetype headerSize = 2;
constexpr qsizetype pathSize = recordSize - headerSize;
constexpr int unixFamily = 1;
constexpr int streamType = 1;
constexpr int backlog = 4096; // the kernel cuts it to net.core.somaxconn

// What Linux wants instead: a 16-bit family and 108 bytes of path. A record without terminating zero still
// gets one.
bool toLinuxAddress(const QByteArray &record, sockaddr_un *address)
{
    if (record.size() != recordSize || record.at(1) != unixFamily)
        return false;
    const auto length = qstrnlen(record.constData() + headerSize, pathSize);
    if (length == 0)
        return false;
    std::memset(address, 0, sizeof *address);
    address->sun_family = AF_UNIX;
    static_assert(sizeof address->sun_path > pathSize);
    std::memcpy(address->sun_path, record.constData() + headerSize, length);
    return true;
}

bool isSupported(int family, int socketType, int protocol)
{
    return family == unixFamily && socketType == streamType && protocol == 0;
}

int openSocket()
{
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

void closeKeepingErrno(int descriptor)
{
    const int error = errno;
    ::close(descriptor);
    errno = error;
}
} // namespace

struct NSSocketPort::Private {
    QByteArray address;
    sockaddr_un linuxAddress{};
    int listening = -1;
    bool server = false;
    bool valid = false;
    std::function<void()> invalidationHandler;
};

NSSocketPort::NSSocketPort() : d(std::make_unique<Private>()) {}

NSSocketPort::~NSSocketPort()
{
    if (d->listening >= 0)
        ::close(d->listening);
}

bool NSSocketPort::initWithProtocolFamily(int family, int socketType, int protocol, const QByteArray &address)
{
    if (!isSupported(family, socketType, protocol) || !toLinuxAddress(address, &d->linuxAddress))
        return false;
    const int descriptor = openSocket();
    if (descriptor < 0)
        return false;
    // Born with its final mode: there is no moment at which the file has another one.
    const mode_t previousMask = ::umask(0111);
    const int bound =
        ::bind(descriptor, reinterpret_cast<const sockaddr *>(&d->linuxAddress), sizeof d->linuxAddress);
    ::umask(previousMask);
    if (bound != 0 || ::listen(descriptor, backlog) != 0) {
        closeKeepingErrno(descriptor);
        return false;
    }
    d->address = address;
    d->listening = descriptor;
    d->server = true;
    d->valid = true;
    return true;
}

bool NSSocketPort::initRemoteWithProtocolFamily(int family, int socketType, int protocol,
                                                const QByteArray &address)
{
    if (!isSupported(family, socketType, protocol) || !toLinuxAddress(address, &d->linuxAddress))
        return false;
    d->address = address;
    d->valid = true;
    return true;
}

bool NSSocketPort::isValid() const
{
    return d->valid;
}

void NSSocketPort::invalidate()
{
    if (!d->valid)
        return;
    d->valid = false;
    // The handler goes first: whoever watches the descriptor must let go of it before its number is free
    // again.
    if (const auto handler = std::exchange(d->invalidationHandler, {}))
        handler();
    if (d->listening >= 0)
        ::close(std::exchange(d->listening, -1));
}

QByteArray NSSocketPort::address() const
{
    return d->address;
}

bool NSSocketPort::isServer() const
{
    return d->server;
}

int NSSocketPort::listeningDescriptor() const
{
    return d->listening;
}

int NSSocketPort::connectStream() const
{
    if (!d->valid || d->server) {
        errno = EINVAL;
        return -1;
    }
    const int descriptor = openSocket();
    if (descriptor < 0)
        return -1;
    if (::connect(descriptor, reinterpret_cast<const sockaddr *>(&d->linuxAddress), sizeof d->linuxAddress) !=
        0) {
        closeKeepingErrno(descriptor);
        return -1;
    }
    return descriptor;
}

void NSSocketPort::setInvalidationHandler(std::function<void()> handler)
{
    d->invalidationHandler = std::move(handler);
}
