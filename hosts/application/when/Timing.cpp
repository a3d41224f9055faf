// SPDX-License-Identifier: MIT
#include "hosts/application/when/Timing.h"

#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/application/when/TimingRules.h"

using namespace dozely;

namespace
{
/// Fills in what a rule says, where the kinds that go without it show all of it.
bool takeRule(Timing &timing, const Recurrence &recurrence)
{
    const auto rule = RecurrenceRule::parse(recurrence.rule);
    if (!rule)
        return false;
    const auto pattern = TimingRules::patternOf(*rule, recurrence.localStart.day);
    const auto ending = TimingRules::endingOf(*rule);
    const auto times = TimingRules::timesOf(*rule, recurrence.localStart.time);
    if (!pattern || !ending || !times)
        return false;
    timing.pattern = *pattern;
    timing.ending = *ending;
    timing.times = *times;
    return true;
}
} // namespace

Timing Timing::of(const QDateTime &date, const QString &timeZone, const std::optional<Recurrence> &recurrence)
{
    Timing timing;
    timing.timeZone = timeZone;
    if (!recurrence) {
        const WallTime wallTime = WallTime::of(date.toTimeZone(zoneOf(timeZone)));
        timing.begin = wallTime.day;
        timing.times = {wallTime.time};
        return timing;
    }
    timing.begin = recurrence->localStart.day;
    timing.excludedDates = recurrence->excludedDates;
    timing.extraDates = recurrence->extraDates;
    if (!takeRule(timing, *recurrence)) {
        timing.pattern.kind = Kind::Expert;
        timing.pattern.rule = recurrence->rule;
        timing.times = {recurrence->localStart.time};
    }
    return timing;
}

bool Timing::isOfDays(Kind kind)
{
    return kind != Kind::Once && kind != Kind::Distance && kind != Kind::Expert;
}

QTimeZone Timing::zoneOf(const QString &timeZone)
{
    return timeZone.isEmpty() ? machineTimeZone() : QTimeZone(timeZone.toUtf8());
}
