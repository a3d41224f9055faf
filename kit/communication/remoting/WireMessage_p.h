// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QVariant>

#include <optional>

namespace dozely
{

/// A message of a stream as bytes: the format of D-Bus (D-Bus Specification, "Message Protocol"), taken apart
/// and put together where it lies. docs/decisions/own-message-format.md says why no library does it.
///
/// Any thread; nothing blocks.
struct DOZELYKIT_AUTOTEST_EXPORT WireMessage {
    enum class Type : quint8 { Call = 1, Return = 2, Error = 3, Signal = 4 };

    /// What every message begins with; it tells the size of the rest.
    static constexpr qsizetype headSize = 16;

    Type type = Type::Call;
    bool expectsReply = true;
    quint32 serial = 0;
    quint32 replySerial = 0; ///< Of the call that this answers; 0 in a call.
    QByteArray path;
    QByteArray interface; ///< Empty when the message names none; so are the others.
    QByteArray member;
    QByteArray errorName;
    QByteArray signature; ///< Of the values in the body.
    QByteArray body;
    bool isLittleEndian = true; ///< The order of the bytes in `body`.

    /// The size of the message whose first headSize bytes these are; absent when they begin none.
    static std::optional<quint64> sizeOf(QByteArrayView head);

    /// Whether the message whose first headSize bytes these are is a call.
    static bool isCall(QByteArrayView head) { return head[1] == static_cast<char>(Type::Call); }

    /// A whole message; absent for a damaged one. What is in the body is not looked at.
    static std::optional<WireMessage> parse(const QByteArray &message);

    /// Appends the message, to be sent. Little-endian, whatever `isLittleEndian` says.
    void appendTo(QByteArray *bytes) const;
    QByteArray bytes() const
    {
        QByteArray result;
        appendTo(&result);
        return result;
    }
    /// Whether its names and its path are ones, and it has those that its type needs. Who gets a message of
    /// which that is not true closes the stream.
    bool isSound() const;
};

} // namespace dozely
