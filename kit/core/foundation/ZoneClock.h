// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QDateTime>
#include <QTimeZone>

#include <limits>
#include <memory>
#include <vector>

namespace dozely
{

/// What the clocks of one time zone show, and when: the one place that goes from wall times to moments.
/// Moments are milliseconds since 1970 in UTC; wall times are milliseconds too, written as if they were UTC.
///
/// Between two changes of the clocks the zone is asked once: the stretches of constant offset that were asked
/// for are kept, so that neighbouring dates cost next to nothing. Copies share them, so that many who need a
/// clock of the same zone ask the zone no more often than one. For one thread at a time, a clock with its
/// copies, since asking changes what is kept. A clock of an invalid zone shows UTC.
class DOZELYKIT_EXPORT ZoneClock
{
public:
    explicit ZoneClock(const QTimeZone &zone);

    /// The clock of the zone that `date` itself is in.
    static ZoneClock of(const QDateTime &date);

    /// Whether it is that of a zone which there is.
    bool hasZone() const { return m_zone.isValid(); }

    /// A time in which the clocks are never changed.
    struct Stretch {
        qint64 begin;        ///< Its first moment: that of the change before it. The first stretch has none.
        qint64 end;          ///< The moment of the change after it. The last stretch has none.
        qint64 offset;       ///< How far the clocks are ahead of UTC, in milliseconds.
        qint64 offsetBefore; ///< How far they were before `begin`; in the first stretch the same.

        /// How far the clocks were moved forward at `begin`: below 0 when they were moved back.
        qint64 gap() const { return offset - offsetBefore; }
        bool holds(qint64 moment) const { return begin <= moment && moment < end; }
    };
    static constexpr qint64 noBegin = std::numeric_limits<qint64>::min();
    static constexpr qint64 noEnd = std::numeric_limits<qint64>::max();

    /// The stretch that holds a moment. It stays valid until the next question.
    const Stretch &stretchAt(qint64 moment) const;

    /// What clocks show at a moment.
    qint64 wallTimeAt(qint64 moment) const { return moment + stretchAt(moment).offset; }

    /// The moment at which clocks show a wall time: the first of one that they show twice; for one that they
    /// skip, as much later as they were moved forward.
    qint64 momentOf(qint64 wallTime) const;

private:
    explicit ZoneClock(qint64 fixedOffset);
    Stretch kept(qint64 moment) const;
    Stretch found(qint64 moment) const;

    QTimeZone m_zone;
    mutable Stretch m_last;
    std::shared_ptr<std::vector<Stretch>> m_kept; // in order; null for a fixed offset
};

/// Forgets what was read of the system's zone data, so that every zone made from now on is as the files now
/// have it. Zones made before stay as they were. Qt reads each file once and would never see an update. It
/// takes some tens of milliseconds. Any thread.
DOZELYKIT_EXPORT void readZonesAgain();

/// The machine's time zone, of the environment's TZ or of /etc/localtime, as that is now. Where
/// /etc/localtime is no link into the system's zone data but a file of its own, readZonesAgain() is needed
/// too, and the zone's id is no name.
DOZELYKIT_EXPORT QTimeZone machineTimeZone();

} // namespace dozely
