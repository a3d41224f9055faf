// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QString>

/// Texts and paths. A null QString is "no text".
namespace zandorSoftwaresExtensions
{
/// Replaces a leading "~" by the real home directory and a slash; the rest follows as it is. Any other path,
/// and every path when there is no home directory, is returned as it is.
DOZELYKIT_EXPORT QString stringByExpandingTildeInPath(const QString &path);

/// The final target, absolute, when `path` itself is a symbolic link; the path as it is when it is none, or
/// when the chain dangles or loops.
DOZELYKIT_EXPORT QString resolveAlias(const QString &path);

/// The path with each leading part that is an alias replaced by its target.
DOZELYKIT_EXPORT QString resolveContainedAliases(const QString &path);

/// True when `part`, which must not be empty, occurs in `text`.
DOZELYKIT_EXPORT bool contains(const QString &text, const QString &part);
DOZELYKIT_EXPORT bool containsInsensitive(const QString &text, const QString &part);

/// `length` letters from "a" to "y", from the operating system's cryptographic source; empty for 0 or less.
DOZELYKIT_EXPORT QString randomStringWithLength(qint32 length);

/// Text encodings by the platform's numbers.
enum NSStringEncoding : quint64 {
    NSASCIIStringEncoding = 1,
    NSUTF8StringEncoding = 4,
    NSISOLatin1StringEncoding = 5,
    NSISOLatin2StringEncoding = 9,
    NSUTF16StringEncoding = 10,
    NSWindowsCP1252StringEncoding = 12,
    NSMacOSRomanStringEncoding = 30,
    NSUTF16BigEndianStringEncoding = 0x90000100,
    NSUTF16LittleEndianStringEncoding = 0x94000100,
    NSUTF32StringEncoding = 0x8c000100,
};

/// `data` decoded; null when it does not decode or the encoding is not known.
DOZELYKIT_EXPORT QString stringWithData(const QByteArray &data, quint64 encoding);
} // namespace zandorSoftwaresExtensions

/// The home directory of the real user id in the user database, whatever the environment says; "" when the
/// database has no entry. Blocks while the database is asked.
DOZELYKIT_EXPORT QString RealHomeDirectory();
