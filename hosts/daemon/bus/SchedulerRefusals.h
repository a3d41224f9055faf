// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

/// What a call is refused with: the sentence, and the error's name on the bus.
namespace SchedulerRefusals
{
dozely::Error noSuchSchedule(const QString &identifier);

/// Of a wish that no schedule can be.
dozely::Error invalid(const QString &sentence);

/// A clause as an answer.
dozely::Error notPossible(const dozely::Error &error);
} // namespace SchedulerRefusals
