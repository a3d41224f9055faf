// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/FriendlyTerms.h"

#include <QDateTime>
#include <QStringList>
#include <QTimeZone>

/// Dates as people write them, read at a moment and by the clocks of a zone:
///
///     2026-03-14   2026-03-14 06:55   2026-03-14T06:55:30+01:00   06:55   7 pm   tomorrow 7:00   fri 22:00
///     next friday  22.12. 6:30        22 dec 2026, 6:30           12/22   now    +5m             in 2 hours
///
/// What leaves the day or the year open is the nearest that is yet to come, or that is past. What can be read
/// in two ways is not guessed at: the error says both. A plain value.
class DateTerms
{
public:
    /// Where a date that leaves something open is looked for. Its moment may be `now` itself.
    enum class Towards { ToCome, Past };

    DateTerms(const QDateTime &now, const QTimeZone &zone, Towards towards = Towards::ToCome);

    /// The wall time that a text says, a day alone without a time. A moment, such as "+5m", is rounded up to
    /// a whole second, and has an offset from UTC.
    dozely::Result<FriendlyTerms::Date> read(const QString &text) const;

    /// A moment at which clocks show something.
    struct Moment {
        QDateTime date; ///< UTC.
        bool isMoved;   ///< Clocks skip what was asked for; it is as much later.
    };

    /// The moment of a date with a time, as read() gave it for `text`. What clocks show twice is an error.
    dozely::Result<Moment> momentOf(const FriendlyTerms::Date &date, const QString &text) const;

private:
    QDateTime m_now;
    QTimeZone m_zone;
    Towards m_towards;
};
