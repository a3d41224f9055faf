// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QString>

#include <bitset>
#include <optional>
#include <vector>

/// The value of an RRULE of RFC 5545, taken apart. A list of the rule is a set here, a bit for each number;
/// it is empty when the rule does not have that part. What counts from the end (BYMONTHDAY=-1) has a set of
/// its own.
struct RecurrenceRule {
    enum class Frequency { Secondly, Minutely, Hourly, Daily, Weekly, Monthly, Yearly };
    enum class UntilForm { Moment, WallTime };

    struct Until {
        UntilForm form;
        qint64
            seconds; ///< Since 1970, inclusive. Of a wall time: as if it were UTC; of a day: its last second.
    };
    struct OrdinalWeekday {
        int ordinal; ///< -53 to 53, never 0.
        int weekday; ///< 0 is Monday.
    };

    Frequency frequency = Frequency::Daily;
    qint64 interval = 1;
    std::optional<qint64> count;
    std::optional<Until> until;
    std::bitset<60> seconds; ///< A leap second, 60, is 59 here, as RFC 5545 has it for clocks that know none.
    std::bitset<60> minutes;
    std::bitset<24> hours;
    std::bitset<7> weekdays; ///< BYDAY without ordinals; bit 0 is Monday.
    std::vector<OrdinalWeekday> ordinalWeekdays;
    std::bitset<32> monthDays, monthDaysFromEnd;
    std::bitset<367> yearDays, yearDaysFromEnd;
    std::bitset<54> weeks, weeksFromEnd;
    std::bitset<13> months;
    std::vector<int> positions; ///< BYSETPOS.
    int weekStart = 0;          ///< 0 is Monday.

    /// Strict: an error is a clause that says what is wrong with the rule by itself.
    static dozely::Result<RecurrenceRule> parse(const QString &text);

    bool hasWeekday() const { return weekdays.any() || !ordinalWeekdays.empty(); }
    bool hasMonthDay() const { return monthDays.any() || monthDaysFromEnd.any(); }
    bool hasYearDay() const { return yearDays.any() || yearDaysFromEnd.any(); }
    bool hasWeek() const { return weeks.any() || weeksFromEnd.any(); }
    /// Whether it is anything but the length of a step that says when something recurs.
    bool hasParts() const
    {
        return seconds.any() || minutes.any() || hours.any() || hasWeekday() || hasMonthDay() ||
               hasYearDay() || hasWeek() || months.any();
    }
};
