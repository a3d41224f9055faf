// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

#include <QStringList>

class AdminOptions;

/// The options that describe a schedule, for `add` and for `change`. All raise AdminError when they are
/// wrong.
namespace ScheduleOptions
{
/// A name that a schedule may have: the text itself.
QString name(const QString &text);

/// Whether one of those is there that say what is to be done.
bool nameAction(const AdminOptions &options);

/// Has a schedule do what the options name; what they do not name stays. With one that could come to nothing
/// `--anyway` is needed.
void applyAction(const AdminOptions &options, Schedule &schedule);

/// Whether one of those is there that say when.
bool nameTime(const AdminOptions &options);

/// Has a schedule take place when the options say; what they do not name stays. One that is given no time at
/// all is refused. Returns sentences for the person.
QStringList applyTime(const AdminOptions &options, Schedule &schedule);

/// Gives it all the rest.
void applyRest(const AdminOptions &options, Schedule &schedule);
} // namespace ScheduleOptions
