// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QDateTime>
#include <QVariant>

namespace dozely
{

/// A date as it travels, in D-Bus's own form and in a block.
struct WireDate {
    int64_t milliseconds = 0; ///< since 1970-01-01 00:00 UTC
    int64_t offset = 0;       ///< seconds east of UTC; what comes from elsewhere may be any number
    QByteArray zone;          ///< IANA name, or empty for a bare offset

    static WireDate of(const QDateTime &date);

    /// The date in its zone; in its offset when the zone is not known here. Not valid when neither is any.
    QDateTime date() const;
};

/// The one-block form of values (CBOR, RFC 8949), for what D-Bus's own types cannot carry:
/// docs/wire-protocol.md.
///
/// Any thread; nothing blocks.
namespace CborBlock
{
/// A block, and a message with everything in it, holds at most this many bytes of values: a peer must not
/// make us allocate more.
constexpr qsizetype maximumSize = 4 << 20;
/// Containers within containers; both coders are recursive.
constexpr int maximumDepth = 64;
/// Containers within containers that D-Bus itself is given; what nests deeper travels as a block.
constexpr int plainDepth = 20;
/// Marks [milliseconds, offset, zone] as a date; from the first-come range of the CBOR tag registry ("Doz").
constexpr quint64 dateTag = 0x446F7A00;

/// Whether D-Bus can carry the text as it is: it has no NUL, no noncharacter and no half of a surrogate pair.
bool isPlainText(const QString &text);

/// Whether the value has to travel as a block: it is nothing, nests too deep, or has a text not plain in it.
bool isNeededFor(const QVariant &value);

/// The block of a property-list value, of nothing or of an NSNotification. Fails for anything else, and for
/// what breaks a limit.
DOZELYKIT_AUTOTEST_EXPORT Result<QByteArray> encode(const QVariant &value);

/// The value of a block; fails for a damaged one.
DOZELYKIT_AUTOTEST_EXPORT Result<QVariant> decode(const QByteArray &block);
DOZELYKIT_AUTOTEST_EXPORT Result<NSNotification> decodeNotification(const QByteArray &block);
} // namespace CborBlock

} // namespace dozely
