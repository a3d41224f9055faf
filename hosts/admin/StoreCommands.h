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

/// Who changed the store, and tells of it in the log.
enum class ChangedBy { ThisTool, TheDaemon };

/// Alters the schedules in the store: in the file, or, for who may not do that, by the daemon on the system
/// bus.
ChangedBy change(const std::function<void(QList<Schedule> &schedules)> &alteration);

/// Adds a schedule in the same way. It may get another identifier.
ChangedBy add(Schedule &schedule);

/// The schedule as `--json` shows it.
QVariantMap describe(const Schedule &schedule);
} // namespace StoreCommands
