// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QVariant>

struct sd_bus_message;

namespace dozely
{

/// Between QVariant and the values of a D-Bus message, for the machine's bus and for streams of our own.
///
/// bool is `b`, double `d`, text `s`, QByteArray `ay`, QVariantMap a dictionary with text keys, QVariantList
/// any other array or structure. A variant of the wire is the value that it holds; a QVariant that holds a
/// QVariant is written as one. The rules say what is more than that.
///
/// Any thread that the message's bus belongs to; nothing blocks.
namespace BusCodec
{
/// Which types there are beside those.
enum class Types {
    /// Whatever a service may send or want: integers of each width, `o` and `g` as text, `h` as
    /// BusDescriptor, arrays and structures of anything.
    Any,
    /// Those that docs/wire-protocol.md lists alone: integers of 32 and 64 bits (narrower ones become int or
    /// uint), `o` as ObjectPath, `(xis)` as QDateTime, `av`, `a{sv}`, and those that are read, too. What
    /// D-Bus cannot carry is written as a block (CborBlock_p.h).
    Ours,
};

/// What one side of a connection sends and takes.
struct Rules {
    Types types;
    /// The most that all values of a message may take. A writer counts no less than the message grows by, a
    /// reader no more than it holds: who reads it looks at the size of the whole.
    qsizetype budget;
    /// Containers within containers, variants among them: both sides are recursive.
    int depth;
};

/// The budget is D-Bus's own largest message; the depth is what a bus lets pass whatever the containers are.
inline constexpr Rules machineBus{Types::Any, 128 << 20, 32};
/// The depth is the library's own; a list or dictionary with the variants in it takes two.
inline constexpr Rules ownStream{Types::Ours, CborBlock::maximumSize, 2 * CborBlock::maximumDepth};

/// Name of the Error when a message breaks its budget; other Errors have none.
inline constexpr char tooLarge[] = "TooLarge";

/// Appends `values`, typed by `signature` (one complete type each), to a message that is being made, which is
/// of no use after a failure: a value does not fit its type, breaks a limit, or is of no type that travels.
Result<void> append(sd_bus_message *message, const QByteArray &signature, const QVariantList &values,
                    const Rules &rules);

/// The same with the type for each that its value has. An NSNotification is three values where the types are
/// ours.
Result<void> append(sd_bus_message *message, const QVariantList &values, const Rules &rules);

/// All values of a message that came. Fails for a damaged one and for what breaks the rules.
Result<QVariantList> read(sd_bus_message *message, const Rules &rules);
} // namespace BusCodec

} // namespace dozely
