// SPDX-License-Identifier: MIT
#include "hosts/common/record/UpcomingOccurrences.h"

#include "DozelyKit/core/foundation/Clock.h"

#include <tuple>

using namespace dozely;

UpcomingOccurrences::UpcomingOccurrences(QList<Schedule> schedules, const QDateTime &from,
                                         const QList<RecordedOccurrence> &known)
    : m_schedules(std::move(schedules)), m_series(static_cast<size_t>(m_schedules.size()))
{
    takeKnown(known);
    for (qsizetype i = 0; i < m_schedules.size(); ++i) {
        const Schedule &schedule = m_schedules.at(i);
        if (!schedule.isEnabled)
            continue;
        if (!schedule.recurrence) {
            if (schedule.date > from)
                add(i, schedule.date);
            continue;
        }
        auto series = OccurrenceSeries::of(*schedule.recurrence, schedule.zone());
        if (!series) {
            m_faults += QString("Nothing comes of \"%1\": %2.").arg(schedule.name, series.error().text);
            continue;
        }
        add(i, series->after(from));
        m_series.at(static_cast<size_t>(i)) = *std::move(series);
    }
}

UpcomingOccurrences UpcomingOccurrences::ofOne(Schedule schedule)
{
    schedule.isEnabled = true;
    // One that is due this second is still to come.
    return {{std::move(schedule)}, Port<Clock>::current()->currentDate().addSecs(-1), {}};
}

bool UpcomingOccurrences::IsLater::operator()(const UpcomingOccurrence &a, const UpcomingOccurrence &b) const
{
    return std::tie(a.moment, a.schedule, a.date) > std::tie(b.moment, b.schedule, b.date);
}

void UpcomingOccurrences::takeKnown(const QList<RecordedOccurrence> &known)
{
    QHash<QString, qsizetype> places;
    for (qsizetype i = 0; i < m_schedules.size(); ++i)
        places.insert(m_schedules.at(i).identifier, i);
    for (const RecordedOccurrence &occurrence : known) {
        m_known.insert({occurrence.identifier, occurrence.date.toMSecsSinceEpoch()});
        const qsizetype place = places.value(occurrence.identifier, -1);
        if (occurrence.postponedTo.isValid() && place >= 0 && m_schedules.at(place).isEnabled)
            m_queue.push({place, occurrence.date, occurrence.postponedTo});
    }
}

void UpcomingOccurrences::add(qsizetype schedule, const std::optional<QDateTime> &date)
{
    if (date)
        m_queue.push({schedule, *date, *date});
}

void UpcomingOccurrences::goOn(const UpcomingOccurrence &occurrence)
{
    const auto &series = m_series.at(static_cast<size_t>(occurrence.schedule));
    if (series)
        add(occurrence.schedule, series->after(occurrence.date));
}

std::optional<UpcomingOccurrence> UpcomingOccurrences::next()
{
    while (!m_queue.empty()) {
        const UpcomingOccurrence occurrence = m_queue.top();
        m_queue.pop();
        if (occurrence.isPostponed()) // the series goes on from its date, which was met before or is past
            return occurrence;
        goOn(occurrence);
        const QString &identifier = m_schedules.at(occurrence.schedule).identifier;
        if (!m_known.contains({identifier, occurrence.date.toMSecsSinceEpoch()}))
            return occurrence;
    }
    return {};
}
