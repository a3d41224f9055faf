// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/common/schedules/Schedule.h"

#include <QHash>
#include <QSet>

#include <queue>
#include <vector>

/// An occurrence that is to come.
struct UpcomingOccurrence {
    qsizetype schedule = 0; ///< Its place among the schedules.
    QDateTime date;         ///< By which it is told, UTC.
    QDateTime moment;       ///< When it takes place, UTC: another one than `date` when it was postponed.

    bool isPostponed() const { return moment != date; }
};

/// What comes of a number of schedules, one after the other in the order of the moments. The next one costs a
/// search among the schedules, not a look at each. THREADING: one thread.
class UpcomingOccurrences
{
public:
    /// What comes after `from` of those schedules that are enabled, as far as the record, `known`, does not
    /// say otherwise.
    UpcomingOccurrences(QList<Schedule> schedules, const QDateTime &from,
                        const QList<RecordedOccurrence> &known);

    /// What comes of one schedule from now on, enabled or not, whatever the record says.
    static UpcomingOccurrences ofOne(Schedule schedule);

    /// The next one; nothing when there is none any more.
    std::optional<UpcomingOccurrence> next();

    /// A sentence for each schedule whose rule makes no sense.
    QStringList faults() const { return m_faults; }

private:
    struct IsLater {
        bool operator()(const UpcomingOccurrence &a, const UpcomingOccurrence &b) const;
    };
    void takeKnown(const QList<RecordedOccurrence> &known);
    void add(qsizetype schedule, const std::optional<QDateTime> &date);
    void goOn(const UpcomingOccurrence &occurrence);

    QList<Schedule> m_schedules;
    std::vector<std::optional<OccurrenceSeries>> m_series; // by place; absent for what takes place once
    std::priority_queue<UpcomingOccurrence, std::vector<UpcomingOccurrence>, IsLater> m_queue;
    QSet<std::pair<QString, qint64>> m_known; // by identifier and date: something became of it, or will
    QStringList m_faults;
};
