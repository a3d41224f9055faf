// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/schedules/Schedule.h"

#include <QDateTime>
#include <QVariantMap>

/// What somebody wishes a schedule to be: the dictionaries that Add and Change take (docs/bus.md). Strict: a
/// key that is not known, a value of another type, a text that is too long, a date that is none, and whatever
/// the store would not keep as it is, is refused with one sentence.
///
/// Whoever sent it may be anybody: nothing is looked up on the machine but zones.
namespace ScheduleWish
{
/// Limits name the attack: one user who fills the store that all share.
/// @{
constexpr qsizetype longestName = 500;        ///< Characters.
constexpr qsizetype largestEntry = 128 << 10; ///< Bytes of a schedule in the store.
/// @}

/// A new schedule. `now` is the current date: nothing takes place before it.
dozely::Result<Schedule> made(const QString &identifier, const QVariantMap &wish, const QDateTime &now);

/// The schedule with what the wish names; all else stays.
dozely::Result<Schedule> changed(const Schedule &schedule, const QVariantMap &wish, const QDateTime &now);

/// How many bytes of the store it takes; absent for one that the store cannot keep.
std::optional<qsizetype> sizeOf(const Schedule &schedule);
} // namespace ScheduleWish
