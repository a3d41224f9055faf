// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>

#include <functional>
#include <memory>

/// One end of a stream socket: a server port listens, a client port knows an address and connects at first
/// use.
///
/// The address record is the platform's 106-byte Unix-domain address: an 8-bit length, an 8-bit family and
/// 104 bytes of path. Only protocol family 1 (Unix domain), socket type 1 (stream) and protocol 0 exist here.
///
/// OWNERSHIP: the port owns its descriptor and closes it when it is invalidated or destroyed. It never
/// removes a socket file. THREADING: used from the thread that made it.
class DOZELYKIT_EXPORT NSSocketPort
{
public:
    virtual ~NSSocketPort();
    NSSocketPort(const NSSocketPort &) = delete;
    NSSocketPort &operator=(const NSSocketPort &) = delete;

    /// False once invalidated, or when the port was never made.
    virtual bool isValid() const;

    /// Closes the descriptor and tells the connection that uses the port. Harmless when repeated.
    virtual void invalidate();

    /// The address record that the port was made with.
    QByteArray address() const;

    /// True for a port that listens.
    bool isServer() const;

    /// The listening descriptor, or -1. Stays the port's.
    int listeningDescriptor() const;

    /// Opens a fresh stream to the address of a client port, without waiting. The caller owns the descriptor.
    /// -1 when nobody listens; errno says why, EAGAIN that the other side's queue is full just now.
    int connectStream() const;

    /// Registers the one function that is called when the port becomes invalid; an empty one takes it back.
    void setInvalidationHandler(std::function<void()> handler);

protected:
    NSSocketPort();

    /// Makes the socket, binds it to the address and listens. The socket file is born with mode 0666. False
    /// on failure, with nothing left behind but, possibly, what was there before.
    bool initWithProtocolFamily(int family, int socketType, int protocol, const QByteArray &address);

    /// Remembers the address; nothing is opened before it is needed. False for another family or a bad
    /// record.
    bool initRemoteWithProtocolFamily(int family, int socketType, int protocol, const QByteArray &address);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
