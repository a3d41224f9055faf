// SPDX-License-Identifier: MIT
#include "hosts/daemon/ScheduleDates.h"

using namespace dozely;

ScheduleDates::ScheduleDates(const Schedule &schedule, const ZoneClock &clock, const OccurrenceRecord &record)
    : m_identifier(schedule.identifier), m_record(record)
{
    auto series = schedule.recurrence ? OccurrenceSeries::of(*schedule.recurrence, clock)
                                      : Result<OccurrenceSeries>(Error{"it takes place once"});
    if (series)
        m_series = *std::move(series);
}

bool ScheduleDates::isKnown(const QDateTime &date) const
{
    return m_record.find(m_identifier, date).has_value();
}

std::optional<QDateTime> ScheduleDates::openAfter(const QDateTime &date) const
{
    return currentAfter(date, date).date;
}

ScheduleDates::Current ScheduleDates::currentAfter(const QDateTime &settled, const QDateTime &now) const
{
    Current current{m_series ? m_series->after(settled) : std::nullopt, settled};
    while (current.date && isKnown(*current.date)) {
        if (*current.date <= now)
            current.settled = *current.date;
        current.date = m_series->after(*current.date);
    }
    return current;
}

OccurrenceSeries::Run ScheduleDates::openBetween(const QDateTime &settled, const QDateTime &upTo) const
{
    const auto first = openAfter(settled);
    if (!first || *first > upTo)
        return {};
    auto last = m_series->upTo(upTo);
    while (last && *last > *first && isKnown(*last))
        last = m_series->upTo(last->addMSecs(-1));
    OccurrenceSeries::Run run = m_series->between(first->addMSecs(-1), last.value_or(*first));
    // By hand it is performed at dates that the rule does not give.
    for (const QDateTime &known : m_record.datesBetween(m_identifier, *first, run.last))
        run.count -= gives(known) ? 1 : 0;
    return run;
}

std::optional<QDateTime> ScheduleDates::upTo(const QDateTime &date) const
{
    return m_series ? m_series->upTo(date) : std::nullopt;
}

bool ScheduleDates::gives(const QDateTime &date) const
{
    return m_series && m_series->after(date.addMSecs(-1)) == date;
}
