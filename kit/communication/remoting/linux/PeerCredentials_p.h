// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/NSConnection.h"

#include <sys/socket.h>

namespace dozely
{

/// Who opened the other end of a Unix-domain stream, or listens there, by the kernel's word (unix(7),
/// SO_PEERCRED). Absent when it cannot be read: an unknown peer is nobody, never root.
inline std::optional<NSConnection::Peer> peerCredentials(int descriptor)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0 ||
        size != sizeof credentials || credentials.uid == static_cast<uid_t>(-1))
        return std::nullopt;
    return NSConnection::Peer{credentials.uid, credentials.pid};
}

} // namespace dozely
