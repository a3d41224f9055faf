// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/WireMessage_p.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QVariant>

namespace dozely
{

/// Between QVariant and the values in a message of a stream. docs/wire-protocol.md has the table of types;
/// what D-Bus cannot carry is written as a block (CborBlock_p.h).
///
/// Any thread; nothing blocks.
namespace WireValues
{
/// The signature in which a value of that type travels; null for one that does not.
const char *typeOf(QMetaType type);

/// Puts the values into the message, whose signature and body they become. An NSNotification is three values.
/// Fails, with a message of no use, for a value of a type that does not travel, or when they are too many.
DOZELYKIT_AUTOTEST_EXPORT Result<void> write(const QVariantList &values, WireMessage *message);

/// The values of a message that came. Fails for a damaged one and for a type that is not in the table; the
/// error names that type.
DOZELYKIT_AUTOTEST_EXPORT Result<QVariantList> read(const WireMessage &message);
} // namespace WireValues

} // namespace dozely
