// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/schedules/Schedule.h"

#include <QDateTime>
#include <QVariantMap>

/// How a schedule is to repeat, as somebody wishes it.
namespace WishedRecurrence
{
/// Gives a schedule what the dictionary "repeats" of docs/bus.md says, an empty one being once. What repeats
/// begins anew at `notBefore`, so nothing that is past was missed; one that is what it was stays as it is.
/// The error is a sentence, and the schedule then in no state at all.
dozely::Result<void> apply(const QVariantMap &repeats, const QDateTime &notBefore, Schedule &schedule);

/// Begins anew what repeats already: its clocks or its first day are others now. As above.
dozely::Result<void> beginAnew(const QDateTime &notBefore, Schedule &schedule);
} // namespace WishedRecurrence
