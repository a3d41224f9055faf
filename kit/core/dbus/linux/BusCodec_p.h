// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QVariant>

struct sd_bus_message;

namespace dozely
{

/// Between QVariant and the values of a message of the machine's buses.
///
/// bool is `b`, double `d`, text `s`, QByteArray `ay`, QVariantMap a dictionary with text keys, QVariantList
/// any other array or structure. Integers have their width, `o` and `g` are text, `h` is a BusDescriptor. A
/// variant of the wire is the value that it holds; a QVariant that holds a QVariant is written as one, and a
/// BusVariant as one of the type that it names.
///
/// Any thread that the message's bus belongs to; nothing blocks.
namespace BusCodec
{
/// The most that all values of a message may take: D-Bus's own largest message. A writer counts no less than
/// the message grows by, a reader no more than it holds.
inline constexpr qsizetype budget = 128 << 20;
/// Containers within containers, variants among them, that a bus lets pass whatever they are: both sides are
/// recursive.
inline constexpr int maximumDepth = 32;

/// Appends `values`, typed by `signature` (one complete type each), to a message that is being made, which is
/// of no use after a failure: a value does not fit its type, breaks a limit, or is of no type that travels.
Result<void> append(sd_bus_message *message, const QByteArray &signature, const QVariantList &values);

/// All values of a message that came. Fails for a damaged one and for what breaks a limit; `most` as budget.
Result<QVariantList> read(sd_bus_message *message, qsizetype most = budget);
} // namespace BusCodec

} // namespace dozely
