// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

#include <QByteArray>
#include <QList>

/// Schedules in one block of memory, for the moment between parsing a store and keeping what it says.
///
/// What a parser leaves behind lies scattered between its own freed nodes, and the daemon, which mostly
/// sleeps, would hold on to several times the memory that it needs for days. Frozen, given back and thawed,
/// the schedules lie close together, and equal texts of theirs share their memory.
namespace CompactSchedules
{
QByteArray freeze(const QList<Schedule> &schedules);

/// The schedules that were frozen.
QList<Schedule> thaw(const QByteArray &frozen);
} // namespace CompactSchedules
