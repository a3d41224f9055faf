// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>

#include <optional>

namespace dozely
{

/// How two ends of a stream make themselves known to each other before messages begin (D-Bus Specification,
/// "Authentication Protocol"): EXTERNAL alone, which is the kernel's word; no descriptors travel.
///
/// Any thread; nothing blocks.
class DOZELYKIT_AUTOTEST_EXPORT Handshake
{
public:
    /// A handshake of more than that is none.
    static constexpr qsizetype maximumLine = 512;
    static constexpr int maximumLines = 32;

    enum class State {
        Going,
        Done,    ///< What follows are messages.
        Failed,  ///< Not the protocol, or an identity that is not the peer's.
        Refused, ///< The server has no room for another stream; a client alone hears that.
    };

    /// The words of a server to a client who is `peer` by the kernel's word; nobody is let in without that.
    static Handshake ofServer(std::optional<quint32> peer) { return {true, peer}; }

    /// The words of a client, of which `opening` comes first.
    static Handshake ofClient() { return {false, std::nullopt}; }

    /// All that a client has to say: it does not wait for the answer, and messages may follow at once.
    static QByteArray opening(quint32 ownUserId);

    /// What a server says instead of an answer when it takes no more streams.
    static QByteArray refusal();

    /// Takes the handshake's part of what came, from the front of `bytes`, and appends what is to be
    /// answered.
    State take(QByteArray *bytes, QByteArray *answer);

private:
    Handshake(bool isServer, std::optional<quint32> peer) : m_isServer(isServer), m_peer(peer) {}

    State takeFromClient(QByteArray line, QByteArray *answer);
    State takeFromServer(const QByteArray &line);
    bool isPeer(const QByteArray &claim) const;
    QByteArray answerTo(const QByteArray &command);
    QByteArray answerToIdentity(const QByteArray &claim);

    bool m_isServer;
    std::optional<quint32> m_peer;
    int m_lines = 0;
    bool m_isAsking = false; ///< The client has been asked who it is.
    bool m_isAccepted = false;
};

} // namespace dozely
