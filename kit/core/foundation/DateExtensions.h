// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QDateTime>
#include <QString>
#include <QTimeZone>

namespace zandorSoftwaresExtensions
{
/// The day of `date`, in its own time zone, at `hour`:`mins`:00. Values beyond a day or an hour roll over. A
/// wall time that a clock change skips moves forward by the gap; one that occurs twice is the first.
DOZELYKIT_EXPORT QDateTime dateFromHour(qint32 hour, qint32 mins, const QDateTime &date);

/// Hour (0 to 23) and minute (0 to 59) of the date in the local time zone.
DOZELYKIT_EXPORT qint32 hour(const QDateTime &date);
DOZELYKIT_EXPORT qint32 minute(const QDateTime &date);
} // namespace zandorSoftwaresExtensions

namespace dozely
{
/// Whether `name` is that of a time zone: one of the IANA database, older names such as "US/Pacific" and
/// those without a place such as "Etc/UTC" included. Qt's own question knows neither, and its constructor
/// takes POSIX rules such as "CET-1" and paths for names.
DOZELYKIT_EXPORT bool isTimeZoneName(const QString &name);

/// The moment `date` as the calendar shows it in the zone of that name; in UTC when the name is empty.
DOZELYKIT_EXPORT QDateTime calendarDate(const QDateTime &date, const QString &timeZone);

/// The moment at which clocks in `zone` show `time` on `day`, by the rule of dateFromHour: it moves forward
/// by the gap when it is skipped, and is the first when it occurs twice.
DOZELYKIT_EXPORT QDateTime dateAtWallTime(QDate day, QTime time, const QTimeZone &zone);
} // namespace dozely
