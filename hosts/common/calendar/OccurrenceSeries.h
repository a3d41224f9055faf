// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/Recurrence.h"

#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/core/foundation/ZoneClock.h"

#include <QDateTime>
#include <QTimeZone>

#include <memory>
#include <optional>

/// The instants at which something that recurs comes due, in one time zone: the rule and the extra dates,
/// without the excluded ones, each instant once, in whole seconds and in the years 1 to 9999.
/// docs/file-formats.md tells the rules of it.
///
/// Cheap to make and to move; make one when you need it and keep none. A copy shares, what was found of the
/// zone included: one thread asks. It keeps the zone as it was given: after a change of the system's zone
/// data make another.
///
/// Nobody is kept busy, whatever the rule says: each question looks at no more than a fixed number of days
/// and times, some milliseconds' worth, and gives up after that: then there is no such occurrence.
class OccurrenceSeries
{
public:
    /// The occurrences of a recurrence whose wall times are those of `zone`. An error says, as a clause for a
    /// person, why there is no sense in the rule ("the rule has no FREQ"): it is
    /// malformed, has parts that RFC 5545 forbids together or that are not supported (RSCALE, SKIP), gives
    /// nothing within 100 years from its start, or cannot be counted to its end (an enormous COUNT).
    static dozely::Result<OccurrenceSeries> of(const Recurrence &recurrence, const QTimeZone &zone);

    /// The same in the zone of a clock, with which it shares what was found of the zone: for who makes many.
    static dozely::Result<OccurrenceSeries> of(const Recurrence &recurrence, const dozely::ZoneClock &clock);

    /// The earliest occurrence of all; nothing when every one is excluded. All dates returned here are UTC.
    std::optional<QDateTime> first() const;

    /// The earliest occurrence later than `date`; nothing when there is none.
    std::optional<QDateTime> after(const QDateTime &date) const;

    /// The latest occurrence at or before `date`; nothing when there is none.
    std::optional<QDateTime> upTo(const QDateTime &date) const;

    /// A run of occurrences that follow one another.
    struct Run {
        QDateTime first,
            last;         ///< Invalid when count is 0; exact unless the search for the last was given up.
        qint64 count = 0; ///< How many there are, or, when they are too many to count, at least so many.
        bool isCountExact = true;

        bool operator==(const Run &) const = default;
    };

    /// The occurrences later than `after`, up to `upTo` and including it.
    Run between(const QDateTime &after, const QDateTime &upTo) const;

private:
    struct Content;
    explicit OccurrenceSeries(std::shared_ptr<const Content> content) : m_content(std::move(content)) {}

    std::shared_ptr<const Content> m_content;
};
