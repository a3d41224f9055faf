// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/schedules/Schedule.h"

#include <QDateTime>
#include <QList>
#include <QVariant>

/// The schedules that a file wants there to be.
namespace WantedSchedules
{
/// Those in a value that StructuredFile has read: a store ("Schedule Array", docs/file-formats.md), or, under
/// "schedules", the words of docs/admin-tool.md. What a schedule leaves open it takes from the one of the
/// same identifier or name among `present`, as long as that repeats alike: its identifier and the day from
/// which it counts. Otherwise the identifier comes from the name, the same everywhere, and the day is that of
/// `now`. The error names the schedule that is none.
dozely::Result<QList<Schedule>> in(const QVariant &file, const QList<Schedule> &present,
                                   const QDateTime &now);
} // namespace WantedSchedules
