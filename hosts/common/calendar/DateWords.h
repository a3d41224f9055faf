// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include <chrono>

/// Dates and times as people say them, in English.
namespace DateWords
{
/// "22:00", with seconds where there are some.
QString of(QTime time);

/// "14 March 2026".
QString of(QDate day);

/// "Saturday 14 March 2026 at 22:00", in the date's own zone.
QString of(const QDateTime &date);

/// "3 s", "5 min", "2 h 5 min", "3 days 4 h": two units at most, what is smaller is cut off.
QString of(std::chrono::milliseconds duration);
} // namespace DateWords
