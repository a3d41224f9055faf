// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/common/schedules/Schedule.h"

#include <QDateTime>
#include <QList>

#include <chrono>
#include <optional>

/// The daemon on the system bus (docs/bus.md), for who may not change the files. Operations raise AdminError:
/// what the daemon answers is a sentence for the person, who may be asked for a password meanwhile.
/// THREADING: the main thread. BLOCKING: until the daemon has answered.
namespace Door
{
/// Whether the daemon is there. Of a relocated system only where a bus of its own is named, too.
bool isThere();

/// Adds a schedule, as far as it can travel; the identifier that it has got.
QString add(const Schedule &schedule);

/// Makes of a schedule another one, unless somebody else has changed it meanwhile.
void change(const Schedule &before, const Schedule &after);

void remove(const QString &identifier);

/// Leaves out an occurrence, or has it take place later.
/// @{
void skip(const QString &identifier, const std::optional<QDateTime> &date);
void postpone(const QString &identifier, const std::optional<QDateTime> &date, std::chrono::seconds delay);
/// @}

/// What became of occurrences, newest first: of one schedule, or of the caller's own.
QList<RecordedOccurrence> history(const std::optional<QString> &identifier, qsizetype most);
} // namespace Door
