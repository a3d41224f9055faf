// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/Recurrence.h"

#include <QString>

/// A rule as people say it, in English.
namespace RuleWords
{
/// "every weekday at 22:00, until 31 December 2026, except on 25 December 2026". A rule that people have no
/// words for is told as it is: "by the rule FREQ=...".
QString of(const Recurrence &recurrence);
} // namespace RuleWords
