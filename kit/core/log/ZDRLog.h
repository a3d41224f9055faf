// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/StringFormat.h"

/// The shared log, "/var/log/dozely.log" below the root folder: one line a message, opened, appended to and
/// closed each time. Any thread may log; nothing is locked, lines interleave whole, and half a line that a
/// full disk left is closed first. In a message, control characters and separators of lines are blanks, but
/// for a line end at its own end. When the file does not open, the console log has the error and the line
/// itself; a line that could not be written whole is lost, and the console log says so.
/// @{

/// Appends the time stamp ("Mar 04 09:15:02", local time, English month), a blank and `string`, which brings
/// its own line end, to the file at `path`. Creates it when missing. A root process then makes the file
/// readable and writable for everybody, also after a failure. The path must not be a link and must be a
/// regular file.
DOZELYKIT_EXPORT void ZDRAppendStringToFile(const QString &string, const QString &path);

/// Write an already formatted message as that role: "(pid - parent pid - effective user id - Role): message".
DOZELYKIT_EXPORT void ZDRLogDaemon(const QString &message);
DOZELYKIT_EXPORT void ZDRLogUserAgent(const QString &message);
DOZELYKIT_EXPORT void ZDRLogPrefPane(const QString &message); ///< The role word is "App".
DOZELYKIT_EXPORT void ZDRLogAdmin(const QString &message);

/// Writes a message in the role of this process, told by its name; a process of another name writes its name.
DOZELYKIT_EXPORT void ZDRLogText(const QString &message);

/// The log function: a printf format with `%@` (stringWithFormat) and its arguments. Texts that come from
/// elsewhere are arguments, never the format.
template<class... Arguments>
void ZDRLog(const char *format, const Arguments &...arguments)
{
    ZDRLogText(dozely::stringWithFormat(QString::fromUtf8(format), {QVariant::fromValue(arguments)...}));
}
/// @}
