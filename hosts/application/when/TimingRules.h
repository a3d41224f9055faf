// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/when/Timing.h"
#include "hosts/common/calendar/RecurrenceRule.h"
#include "hosts/common/calendar/RuleParts.h"

#include <optional>

/// Rules of RFC 5545 as what a person picks in a form, and back. What is read here is exactly what the rule
/// means, or nothing.
namespace TimingRules
{
/// On which days, or how far apart; never Once or Expert. What the rule leaves open is taken from the day of
/// its start.
std::optional<Timing::Pattern> patternOf(const RecurrenceRule &rule, const QDate &start);

/// At what times of day, in order. What the rule leaves open is taken from its start.
std::optional<QList<QTime>> timesOf(const RecurrenceRule &rule, const QTime &start);

std::optional<Timing::Ending> endingOf(const RecurrenceRule &rule);

/// Has the rule say this and no other pattern; neither Once nor Expert. Of a rule with another frequency
/// nothing stays.
void write(const Timing::Pattern &pattern, RuleParts &parts);

/// Has the rule end so.
void write(const Timing::Ending &ending, RuleParts &parts);
} // namespace TimingRules
