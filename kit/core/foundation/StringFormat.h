// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>
#include <QVariant>

namespace dozely
{

/// The text of a value as `%@` prints it: a string as it is, "(null)" for nothing, a number in decimal, a
/// date as "2026-03-14 06:55:00 +0100", a list or dictionary in the property list's text style, an object by
/// its `description` invokable.
DOZELYKIT_EXPORT QString descriptionOf(const QVariant &value);

/// printf with `%@` for objects. Knows the conversions d i u x X o c f g e s p @ % with flags, width,
/// precision and the length modifiers h hh l ll q z; integers are taken at the width that the modifier names,
/// without one at 32 bits. A conversion without an argument prints as if its argument were nothing ("(null)",
/// 0).
DOZELYKIT_EXPORT QString stringWithFormat(const QString &format, const QVariantList &arguments);

} // namespace dozely

/// Writes one line to the platform's console log, here the standard error stream. Any thread.
DOZELYKIT_EXPORT void NSLogText(const QString &message);

/// NSLog: stringWithFormat onto the console log.
template<class... Arguments>
void NSLog(const char *format, const Arguments &...arguments)
{
    NSLogText(dozely::stringWithFormat(QString::fromUtf8(format), {QVariant::fromValue(arguments)...}));
}
