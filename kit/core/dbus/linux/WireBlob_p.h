// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>

/// Dates as both forms on the wire carry them.
namespace WireBlob
{
struct Date {
    int64_t milliseconds = 0; ///< since 1970-01-01 00:00 UTC
    int64_t offset = 0;       ///< seconds east of UTC
    QByteArray zone;          ///< IANA name, or empty for a bare offset
};

Date dateParts(const QDateTime &date);

/// The date in its zone; in its offset when the zone is not known here. Not valid when neither is any.
QDateTime dateFromParts(const Date &parts);
} // namespace WireBlob
