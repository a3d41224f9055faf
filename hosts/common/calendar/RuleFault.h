// SPDX-License-Identifier: MIT
#pragma once

/// What may be wrong with a rule: the names of the errors that RecurrenceRule and what counts by it give, for
/// who says it in another language. Behind some, after a blank, stands what of the rule it is about: the part
/// ("BYDAY"), or of `value` the part with its value ("BYDAY=1M").
namespace RuleFault
{
inline constexpr char characters[] = "RuleFault.characters";
inline constexpr char emptyPart[] = "RuleFault.emptyPart";
inline constexpr char unknownPart[] = "RuleFault.unknownPart";
inline constexpr char twice[] = "RuleFault.twice";
inline constexpr char noValue[] = "RuleFault.noValue";
inline constexpr char value[] = "RuleFault.value";
inline constexpr char calendar[] = "RuleFault.calendar";
inline constexpr char noFrequency[] = "RuleFault.noFrequency";
inline constexpr char countAndUntil[] = "RuleFault.countAndUntil";
inline constexpr char numberedDays[] = "RuleFault.numberedDays";
inline constexpr char numberedDaysInWeeks[] = "RuleFault.numberedDaysInWeeks";
inline constexpr char monthDays[] = "RuleFault.monthDays";
inline constexpr char yearDays[] = "RuleFault.yearDays";
inline constexpr char weeks[] = "RuleFault.weeks";
inline constexpr char positions[] = "RuleFault.positions";
inline constexpr char noDate[] = "RuleFault.noDate";
inline constexpr char tooLargeCount[] = "RuleFault.tooLargeCount";
} // namespace RuleFault
