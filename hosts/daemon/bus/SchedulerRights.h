// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"
#include "hosts/daemon/bus/BusCaller.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// The rules of who may what by the bus: what polkit is to be asked for. It asks nobody.
namespace SchedulerRights
{
/// Whether a schedule is a user's own in every respect: it belongs to him, acts in the session, which is his
/// alone then, and its bundle lies in the system's folder of plug-ins or in that of his home. BLOCKING: may
/// look at a bundle of the system's.
bool isOwn(const Schedule &schedule, quint32 user);

/// Where a schedule acts as far as may be found out before anybody has decided about it: nothing is read but
/// what root has put there. "session", "daemon", or null.
QString placeOf(const Schedule &schedule);

/// What a caller needs to make of one schedule another: absent `before` adds, absent `after` removes, and
/// both being the same is any other wish about it. Empty when he may without being asked.
QList<QByteArray> needed(const BusCaller &caller, const std::optional<Schedule> &before,
                         const std::optional<Schedule> &after);
} // namespace SchedulerRights
