// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <QByteArray>

#include <sys/types.h>

/// The accepting side of D-Bus's handshake (D-Bus Specification, "Authentication Protocol"), with EXTERNAL as
/// its only mechanism: the peer is whom the kernel says it is, and may at most confirm that.
///
/// It reads not one byte beyond the handshake, so that whoever reads next stands at the head of a message.
class DOZELYKIT_AUTOTEST_EXPORT SaslServer
{
public:
    /// A handshake of more than that is none.
    static constexpr qsizetype maximumLine = 512;
    static constexpr int maximumLines = 32;

    /// `peer` is the user id of the other side, `guid` what we call ourselves (32 hexadecimal digits).
    SaslServer(uid_t peer, QByteArray guid) : m_peer(peer), m_guid(std::move(guid)) {}

    enum class Result { NeedsMore, Done, Failed };
    /// Reads and answers what is there; does not wait.
    Result advance(int descriptor);

private:
    Result answer(const QByteArray &line, QByteArray *reply);
    bool isPeer(const QByteArray &identity) const;

    uid_t m_peer;
    QByteArray m_guid;
    QByteArray m_line; ///< What has come of the present one.
    int m_lines = 0;
    bool m_begun = false;          ///< The byte 0 before the first line has come.
    bool m_awaitsIdentity = false; ///< We have asked for it ("DATA").
    bool m_accepted = false;
};
