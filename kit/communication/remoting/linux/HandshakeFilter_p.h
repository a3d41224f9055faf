// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>

#include <optional>
#include <sys/types.h>

namespace dozely
{

/// What passes of D-Bus's handshake (D-Bus Specification, "Authentication Protocol") on its way to sd-bus,
/// which answers it. sd-bus reads from a socket pair, so that the kernel calls its peer ourselves; the
/// identity that the peer claims is held against the real one here, and our own goes on in its place.
///
/// Everything is looked at, so that it is known where the handshake ends and messages begin.
class DOZELYKIT_AUTOTEST_EXPORT HandshakeFilter
{
public:
    /// A handshake of more than that is none.
    static constexpr qsizetype maximumLine = 512;
    static constexpr int maximumLines = 32;

    /// The words of a client, whose user id is `peer`, to us; ends with "BEGIN". Absent: nobody is accepted.
    static HandshakeFilter ofClient(std::optional<uid_t> peer) { return {"BEGIN", peer, true}; }
    /// The answers of a server; end with "OK".
    static HandshakeFilter ofServer() { return {"OK", std::nullopt, false}; }

    /// Takes the next byte. True when it ended a line: then `passed` gets what goes on, and isDone may hold.
    bool take(char byte, QByteArray *passed);

    bool isDone() const { return m_isDone; }
    /// No handshake: too long, not begun with the byte 0, or by somebody whom the kernel does not name.
    bool hasFailed() const { return m_hasFailed; }

private:
    HandshakeFilter(QByteArray last, std::optional<uid_t> peer, bool isClient)
        : m_last(std::move(last)), m_peer(peer), m_isClient(isClient)
    {
    }
    QByteArray withOurIdentity(const QByteArray &command, const QByteArray &claim) const;

    QByteArray m_last; ///< The word that ends it.
    std::optional<uid_t> m_peer;
    bool m_isClient;
    QByteArray m_line;
    int m_lines = 0;
    bool m_isDone = false;
    bool m_hasFailed = false;
};

} // namespace dozely
