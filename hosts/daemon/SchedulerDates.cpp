// SPDX-License-Identifier: MIT
//
// Where a Scheduler has the dates of schedules that repeat from.
#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/daemon/Scheduler.h"

#include <algorithm>

using namespace dozely;

namespace
{
/// Later than any date that a schedule has.
const QDateTime endOfTime({9999, 12, 31}, {23, 59, 59}, Qt::UTC);
} // namespace

/// The clock of a schedule's zone, which takes a while to make.
const ZoneClock &Scheduler::clockOf(const Schedule &schedule) const
{
    auto zone = m_zones.find(schedule.timeZone);
    if (zone == m_zones.end())
        zone = m_zones.insert(schedule.timeZone, ZoneClock(schedule.zone()));
    return *zone;
}

ScheduleDates Scheduler::datesOf(const Schedule &schedule) const
{
    return ScheduleDates(schedule, clockOf(schedule), m_record);
}

/// Up to then nothing comes due of a schedule that repeats.
QDateTime Scheduler::settledOf(qint32 place) const
{
    const QDateTime beforeFirst = m_storedDates.value(place).addSecs(-1);
    const auto calendar = m_record.calendar(m_schedules.at(place).identifier);
    return calendar ? std::max(calendar->settled, beforeFirst) : beforeFirst;
}

bool Scheduler::gives(qint32 place, const QDateTime &date) const
{
    const Schedule &schedule = m_schedules.at(place);
    return schedule.recurrence && date > settledOf(place) && !m_record.find(schedule.identifier, date) &&
           datesOf(schedule).gives(date);
}

/// Whether the schedule's own occurrence is to come: nothing became of it yet and the schedule is enabled.
bool Scheduler::isToCome(qint32 place)
{
    const Schedule &schedule = m_schedules.at(place);
    auto calendar = m_record.calendar(schedule.identifier);
    if (!schedule.recurrence)
        return schedule.isEnabled && !m_record.find(schedule.identifier, schedule.date) &&
               (!calendar || schedule.date > calendar->settled);
    if (!calendar) {
        const QDateTime known = std::min(settledOf(place), m_clock.currentDate());
        calendar = {m_nothingKnownBefore.isValid() ? std::max(known, m_nothingKnownBefore) : known};
    }
    return roll(place, *calendar);
}

/// Gives a schedule that repeats the date of its current occurrence; false when it has none.
bool Scheduler::roll(qint32 place, CalendarEntry calendar)
{
    Schedule &schedule = m_schedules[place];
    const QDateTime now = m_clock.currentDate();
    m_resuming.remove(place);
    if (calendar.isPaused && schedule.isEnabled && isClockDoubted())
        m_resuming.insert(place);
    else if (calendar.isPaused && schedule.isEnabled)
        calendar = {std::max(calendar.settled, now)};
    else if (!schedule.isEnabled)
        calendar.isPaused = true;
    const ScheduleDates dates = datesOf(schedule);
    const QDateTime from = std::max(calendar.settled, m_storedDates.value(place).addSecs(-1));
    const auto [next, upTo] = dates.currentAfter(from, now);
    if (upTo > from)
        calendar.settled = upTo;
    m_record.setCalendar(schedule.identifier, calendar);
    schedule.date = next ? *next : dates.upTo(endOfTime).value_or(m_storedDates.value(place));
    return next && !calendar.isPaused;
}

void Scheduler::readZonesAgain()
{
    m_zones.clear();
    const QList<qint32> places = m_storedDates.keys();
    for (const qint32 place : places)
        changedAt(place);
}

bool Scheduler::isRunOf(const Occurrence &occurrence) const
{
    const auto place = placeOf(occurrence.schedule.identifier);
    return place && !occurrence.isAskedFor && !occurrence.postponedTo.isValid() &&
           m_schedules.at(*place).recurrence && m_isListed[static_cast<size_t>(*place)] &&
           m_schedules.at(*place).date == occurrence.date;
}

OccurrenceSeries::Run Scheduler::dueRun(const Occurrence &current) const
{
    return runUpTo(current, m_clock.currentDate());
}

OccurrenceSeries::Run Scheduler::runUpTo(const Occurrence &current, const QDateTime &date) const
{
    if (isRunOf(current)) {
        auto run = datesOf(current.schedule).openBetween(current.date.addMSecs(-1), date);
        if (run.count > 0)
            return run;
    }
    return {current.date, current.date, 1, true};
}

OccurrenceSeries::Run Scheduler::runBefore(const Occurrence &current, const QDateTime &date) const
{
    if (current.date >= date)
        return {};
    return datesOf(current.schedule).openBetween(current.date.addMSecs(-1), date.addMSecs(-1));
}
