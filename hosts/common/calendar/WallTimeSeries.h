// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/OccurrenceSeries.h"

/// The occurrences of something that recurs, by the wall times at which its rule has them: a time that a
/// change of clocks skips is told as the rule says it, not as it then is. Of a rule of hours and less, which
/// counts elapsed time, a wall time that occurs twice is told once.
///
/// A plain value, as cheap as OccurrenceSeries.
class WallTimeSeries
{
public:
    /// An error is that of OccurrenceSeries::of.
    static dozely::Result<WallTimeSeries> of(const Recurrence &recurrence, const QTimeZone &zone);

    /// The earliest that is not before a wall time; nothing when there is none.
    std::optional<WallTime> from(const WallTime &wallTime) const;

    /// The earliest whose moment is not before `date`; nothing when there is none.
    std::optional<WallTime> from(const QDateTime &date) const;

    /// The one after an occurrence of the series; nothing when there is none.
    std::optional<WallTime> after(const WallTime &occurrence) const;

    /// The moment at which clocks show it, UTC.
    QDateTime momentOf(const WallTime &wallTime) const;

private:
    WallTimeSeries(OccurrenceSeries series, const QTimeZone &zone, bool isElapsed)
        : m_series(std::move(series)), m_zone(zone), m_isElapsed(isElapsed)
    {
    }

    OccurrenceSeries m_series; // of days: in UTC, whose clocks are never changed
    QTimeZone m_zone;
    bool m_isElapsed;
};

/// What recurs from now on: the recurrence with its first occurrence at or after `notBefore` as its start, so
/// that nothing before it was missed. COUNT counts from there; extra and excluded dates before it are gone.
/// The days from which every INTERVAL-th is counted stay those of the given start. An error is that of
/// OccurrenceSeries::of, or says that nothing comes any more.
dozely::Result<Recurrence> begunAnew(const Recurrence &recurrence, const QTimeZone &zone,
                                     const QDateTime &notBefore);
