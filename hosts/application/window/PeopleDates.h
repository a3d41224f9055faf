// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

/// Dates as people say them, in their language and for the clock on their wall.
namespace PeopleDates
{
/// "today 22:00", "tomorrow 06:55", "Thursday 06:55" within six days, else "14 Mar 06:55", with the year
/// where it is another one; empty for no date. `now` says what is today.
QString of(const QDateTime &date, const QDateTime &now);
} // namespace PeopleDates
