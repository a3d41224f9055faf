// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

class NSNotification;

/// What the user may choose in an alert beside cancelling.
enum class Postponement {
    TenMinutes, ///< The action runs ten minutes from now; from its date where that is farther away.
    Hour,       ///< The same, an hour.
    SkipToday,  ///< Whatever the schedule has on that day does not run.
};

namespace Postponements
{
/// The order by which an agent asks the daemon for it: for the occurrence of that bundle and date.
NSNotification order(Postponement choice, const QString &bundlePath, const QDateTime &date,
                     const QDateTime &now);
} // namespace Postponements
