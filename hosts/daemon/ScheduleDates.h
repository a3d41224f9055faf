// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/schedules/Schedule.h"
#include "hosts/daemon/OccurrenceRecord.h"

#include <optional>

/// The occurrences of one schedule that repeats which the record does not know yet. Cheap to make and to be
/// thrown away; `record` must outlive the object.
class ScheduleDates
{
public:
    /// `clock` is that of the schedule's zone (Schedule::zone). A rule that there is no sense in has no
    /// occurrences.
    ScheduleDates(const Schedule &schedule, const dozely::ZoneClock &clock, const OccurrenceRecord &record);

    /// The earliest occurrence later than `date` that the record has no entry for; absent when there is none.
    std::optional<QDateTime> openAfter(const QDateTime &date) const;

    /// The same, and from `settled` on the latest date up to `now` up to which the record has an entry for
    /// every occurrence.
    struct Current {
        std::optional<QDateTime> date;
        QDateTime settled;
    };
    Current currentAfter(const QDateTime &settled, const QDateTime &now) const;

    /// The occurrences later than `settled`, up to `upTo`, that the record has no entry for. A count of 0
    /// when there is none.
    OccurrenceSeries::Run openBetween(const QDateTime &settled, const QDateTime &upTo) const;

    /// The latest occurrence up to `date`, whatever became of it; absent when there is none.
    std::optional<QDateTime> upTo(const QDateTime &date) const;

    /// Whether the rule gives that very date.
    bool gives(const QDateTime &date) const;

private:
    bool isKnown(const QDateTime &date) const;

    QString m_identifier;
    const OccurrenceRecord &m_record;
    std::optional<OccurrenceSeries> m_series;
};
