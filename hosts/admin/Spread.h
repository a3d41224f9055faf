// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/schedules/Schedule.h"

#include <QByteArray>

#include <chrono>
#include <optional>

class AdminOptions;

/// Starts that are staggered over many machines: each begins later by a time of its own, which is the same
/// whenever it is asked for, so that fifty machines do not call one server in the same second.
namespace Spread
{
/// What `--spread` says; absent without it. Raises AdminError for what is no duration of a second to a day.
std::optional<std::chrono::seconds> read(const AdminOptions &options);

/// How much later this machine begins: 0 to less than `spread`, by its id (/etc/machine-id below the root
/// folder), from which nobody can tell that. An error says that it has none.
dozely::Result<std::chrono::seconds> ofThisMachine(std::chrono::seconds spread);

/// The same for a machine with that id.
std::chrono::seconds of(const QByteArray &machineId, std::chrono::seconds spread);

/// Has a schedule take place later by `delay`, of which no machine has as much as `spread`. An error where on
/// some machine it would be the next day, or where a rule's times cannot be moved together: all machines
/// then refuse it.
dozely::Result<void> apply(std::chrono::seconds delay, std::chrono::seconds spread, Schedule &schedule);
} // namespace Spread
