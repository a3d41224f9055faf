// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/ScheduleStore.h"

#include <QList>

#include <functional>

class AdminOptions;

/// The commands that read and change the schedule store. All raise AdminError when they fail. A store that is
/// damaged, and entries that are, are never overwritten. THREADING: the main thread. BLOCKING: at most 5 s
/// for the store's lock.
namespace StoreCommands
{
void remove(const AdminOptions &options);
void enable(const AdminOptions &options);
void disable(const AdminOptions &options);

/// What the store holds.
ScheduleStore::Content read();

/// The one schedule that an identifier or a name selects.
Schedule find(const QString &identifierOrName);

/// Alters the schedules in the store.
void change(const std::function<void(QList<Schedule> &schedules)> &alteration);

/// The schedule as `--json` shows it.
QVariantMap describe(const Schedule &schedule);
} // namespace StoreCommands
