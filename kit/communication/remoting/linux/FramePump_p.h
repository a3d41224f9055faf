// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/linux/HandshakeFilter_p.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"

#include <QByteArray>

namespace dozely
{

/// Moves what a peer sends to sd-bus, and looks at the head of each message on the way: sd-bus itself
/// collects up to 128 MiB for whoever announces that much, and 64 streams of one user would take the whole
/// machine's memory.
class DOZELYKIT_AUTOTEST_EXPORT FramePump
{
public:
    /// The largest message: its values, and room for its header.
    static constexpr quint64 maximumMessage = static_cast<quint64>(CborBlock::maximumSize) + (64 << 10);

    /// Reads from `peer`, writes to `feed`; both stay the caller's. The handshake comes first.
    FramePump(int peer, int feed, HandshakeFilter handshake)
        : m_peer(peer), m_feed(feed), m_handshake(std::move(handshake))
    {
    }

    /// The peer's socket has something to read again, as far as is known.
    void wake() { m_isDrained = false; }

    /// Moves some of what is there, without waiting: positive when sd-bus has more to read (be it the end of
    /// the stream), 0 when there is nothing, a negative errno value for a message beyond the limit.
    int pump();

private:
    /// How many of the bytes may go on; the others are the head of a message that is not whole yet. A
    /// negative errno value for what is none, or is too large.
    qsizetype check(QByteArrayView bytes);
    int forward(QByteArrayView bytes);

    int m_peer;
    int m_feed;
    HandshakeFilter m_handshake;
    bool m_ended = false;
    bool m_isDrained = false; ///< The last read took all that there was.
    QByteArray m_held;        ///< The head of a message that is not whole yet.
    QByteArray m_backlog;     ///< Checked, but sd-bus had no room for it.
    quint64 m_left = 0;       ///< What is still to come of the present message.
};

} // namespace dozely
