// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

#include <QDateTime>
#include <QString>
#include <QVariantMap>

#include <optional>

/// Values as they travel on the system bus: what docs/bus.md says of dictionaries and dates.
namespace ScheduleDictionary
{
/// A schedule's dictionary, but for "actsIn", "next", "revision" and "mayChange", which its keeper knows.
QVariantMap of(const Schedule &schedule);

/// Parameters as they travel: a date within them is its text.
QVariantMap parameters(const QVariantMap &parameters);

/// "2026-03-14T05:55:00Z"; empty for an invalid date.
QString textOf(const QDateTime &date);

/// The reverse, strict: ISO 8601 with seconds and with "Z" or an offset. UTC, rounded up to a whole second.
/// Absent for anything else.
std::optional<QDateTime> dateOf(const QString &text);

/// Stands for the schedule as the store has it: another one with every change. Nobody can tell from it what
/// the schedule holds.
QString revisionOf(const Schedule &schedule);
} // namespace ScheduleDictionary
