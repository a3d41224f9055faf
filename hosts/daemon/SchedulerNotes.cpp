// SPDX-License-Identifier: MIT
//
// What a Scheduler remembers of what becomes of occurrences.
#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/daemon/Scheduler.h"

#include <algorithm>

using namespace dozely;

namespace
{
/// An action that is asked for is dated with one of so many seconds from now on, unless the rule of the
/// schedule gives each of them.
constexpr int secondsTried = 60;
} // namespace

Occurrence Scheduler::makeOccurrenceNow(const Schedule &schedule) const
{
    const auto place = placeOf(schedule.identifier);
    const QList<Occurrence> toCome = place ? pendingOf(*place) : QList<Occurrence>();
    const auto isTaken = [&](const QDateTime &date) {
        return date == schedule.date || m_record.find(schedule.identifier, date) ||
               std::any_of(toCome.cbegin(), toCome.cend(),
                           [&](const Occurrence &other) { return other.moment() == date; });
    };
    QDateTime date = QDateTime::fromSecsSinceEpoch(m_clock.currentDate().toSecsSinceEpoch(), Qt::UTC);
    if (schedule.recurrence) {
        const ScheduleDates dates = datesOf(schedule);
        QDateTime free = date;
        for (int i = 0; i < secondsTried && (isTaken(free) || dates.gives(free)); ++i)
            free = free.addSecs(1);
        // No rule gives a half second.
        date = isTaken(free) || dates.gives(free) ? date.addMSecs(500) : free;
    }
    while (isTaken(date))
        date = date.addSecs(1);
    return {schedule, date, false, true};
}

void Scheduler::noteAsked(const Occurrence &occurrence, quint32 userId)
{
    set(occurrence, {OccurrenceState::Asked, {}, {}, userId});
}

void Scheduler::noteBegun(const Occurrence &occurrence, ActingPlace place)
{
    auto entry = m_record.find(occurrence.schedule.identifier, occurrence.date).value_or(OccurrenceEntry());
    entry.state = OccurrenceState::Begun;
    entry.handedTo.reset();
    entry.handedOver = {};
    entry.exitStatus.reset();
    entry.ended = {};
    entry.begun = m_clock.currentDate();
    entry.lateness = occurrence.moment().msecsTo(entry.begun);
    entry.place = place;
    set(occurrence, entry);
}

void Scheduler::takeBack(const Occurrence &occurrence)
{
    const QString &identifier = occurrence.schedule.identifier;
    const auto entry = m_record.find(identifier, occurrence.date);
    if (entry && entry->askedBy)
        return noteAsked(occurrence, *entry->askedBy);
    if (entry && entry->postponedTo.isValid())
        return notePostponed(occurrence, entry->postponedTo);
    auto calendar = m_record.calendar(identifier);
    if (calendar && calendar->settled > occurrence.date) // what came after it is settled: it stands alone
        return notePostponed(occurrence, occurrence.date);
    if (calendar && calendar->settled == occurrence.date) {
        calendar->settled = occurrence.date.addSecs(-1);
        m_record.setCalendar(identifier, *calendar);
    }
    m_record.remove(identifier, occurrence.date);
    changed(identifier);
}

void Scheduler::notePostponed(const Occurrence &occurrence, const QDateTime &to)
{
    OccurrenceEntry entry;
    entry.state = OccurrenceState::Postponed;
    entry.postponedTo = to;
    set(occurrence, entry);
}

void Scheduler::restore(const Occurrence &occurrence, const std::optional<OccurrenceEntry> &former,
                        const std::optional<CalendarEntry> &calendar)
{
    const QString &identifier = occurrence.schedule.identifier;
    if (calendar)
        m_record.setCalendar(identifier, *calendar);
    if (former)
        return set(occurrence, *former);
    m_record.remove(identifier, occurrence.date);
    changed(identifier);
}

/// The dates up to then are no longer to come, whether the record knows each or not.
void Scheduler::settle(const QString &identifier, const QDateTime &upTo)
{
    auto calendar = m_record.calendar(identifier);
    if (!calendar || calendar->settled >= upTo)
        return;
    calendar->settled = upTo;
    m_record.setCalendar(identifier, *calendar);
}

void Scheduler::noteRun(const Schedule &schedule, const OccurrenceSeries::Run &run, OccurrenceState state)
{
    const QDateTime now = m_clock.currentDate();
    Occurrence last{schedule, run.last};
    const auto former = m_record.find(schedule.identifier, run.last);
    if (former)
        last.postponedTo = former->postponedTo;
    if (run.count == 1 && run.isCountExact)
        return note(last, state == OccurrenceState::Missed ? OccurrenceState::Skipped : state);
    OccurrenceEntry entry;
    entry.state = state;
    entry.lateness = run.last.msecsTo(now);
    entry.run = {run.first, run.count, run.isCountExact};
    settle(schedule.identifier, run.last);
    set(last, entry);
}

void Scheduler::set(const Occurrence &occurrence, const OccurrenceEntry &entry)
{
    m_record.set(occurrence.schedule.identifier, occurrence.date, entry);
    changed(occurrence.schedule.identifier);
}

void Scheduler::noteEnd(const Occurrence &occurrence, const PerformanceOutcome &outcome,
                        std::optional<quint32> handedTo)
{
    const bool isPerformed = outcome.isPerformed();
    const bool isKnown = outcome.isSuccess() || outcome.ended.isValid();
    note(occurrence,
         !isPerformed          ? OccurrenceState::NotPerformed
         : !isKnown            ? OccurrenceState::Interrupted
         : outcome.isSuccess() ? OccurrenceState::Done
                               : OccurrenceState::Failed,
         handedTo);
    auto entry = *m_record.find(occurrence.schedule.identifier, occurrence.date);
    if (isPerformed)
        entry.exitStatus = outcome.exitStatus;
    entry.ended = outcome.ended;
    entry.failure = isPerformed ? outcome.failure : outcome.reason(); // there is no status that says it
    set(occurrence, entry);
}

void Scheduler::note(const Occurrence &occurrence, OccurrenceState state, std::optional<quint32> handedTo)
{
    const QDateTime now = m_clock.currentDate();
    auto entry = m_record.find(occurrence.schedule.identifier, occurrence.date).value_or(OccurrenceEntry());
    entry.state = state;
    entry.handedTo = handedTo;
    entry.handedOver = handedTo ? now : QDateTime();
    if (state == OccurrenceState::Skipped)
        entry.lateness = occurrence.moment().msecsTo(now);
    set(occurrence, entry);
}
