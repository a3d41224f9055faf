// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEDesc.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QVariant>

/// Plain values as the parameters of Apple events, and back, for people and scripts.
///
/// Truth values, integers (of 64 bits where 32 do not hold them), fractions, texts (as Unicode), data, lists,
/// and dictionaries whose keys have four characters, as records. A date becomes ISO 8601 text.
namespace EventValue
{
/// An error for a value that has no such form.
dozely::Result<AEDesc> toDescriptor(const QVariant &value);

/// Texts of all kinds and codes become texts; what has no plain form becomes its bytes, nothing an invalid
/// value.
QVariant fromDescriptor(const AEDesc &descriptor);

/// The four characters of a code without quotes; those that do not print become "?".
QString textOfCode(OSType code);

/// The code that four printing characters stand for; an error, in which `what` names it, for anything else.
dozely::Result<OSType> codeOf(const QString &characters, const QString &what);
} // namespace EventValue
