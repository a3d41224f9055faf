// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace dozely
{

/// Port: dates at which the machine is to wake or to switch itself on.
///
/// The events are shared by all programs, told apart by their owner, and outlive restarts. The alarm of the
/// machine's clock holds the earliest one that matters. Results are 0 for success, else a code of the
/// platform's.
///
/// THREADING: one thread; keepArmed needs its event loop. BLOCKING: for the disk, and at most five seconds
/// for another program that changes the events.
class DOZELYKIT_EXPORT PowerEventScheduler
{
public:
    /// The types of events.
    /// @{
    static constexpr char wake[] = "wake";       ///< From sleep. No use to a machine that is off.
    static constexpr char powerOn[] = "poweron"; ///< From off.
    /// @}

    /// One scheduled event. Two that agree in everything are one.
    struct Event {
        QDateTime time; ///< UTC, whole seconds.
        QString owner;  ///< Who scheduled it, such as "com.dozely".
        QString type;
        bool operator==(const Event &) const = default;
    };

    /// What the machine is about to do; it decides which events matter.
    enum class Phase {
        Running,     ///< Events of both types: nobody knows what comes next.
        Sleeping,    ///< "wake" alone.
        PoweringOff, ///< "poweron" alone.
    };

    /// The clock that wakes the machine.
    struct Alarm {
        QString device;      ///< Such as "rtc0".
        QString clock;       ///< The name that its driver gives it, such as "rtc_cmos 00:05".
        QDateTime armedFor;  ///< When it will wake the machine; null while it is not armed.
        bool isOurs = false; ///< Whether it was armed for an event of ours.
    };

    /// Whether the machine has a power-management controller: what wakes it by a clock.
    struct Controller {
        bool isThere = false;
        qint32 failure = 0; ///< Why the machine could not be asked; 0 when it could.
    };

    virtual ~PowerEventScheduler() = default;

    /// Schedules an event. A fraction of a second is cut off. Fails for a date that has passed, an unknown
    /// type, an empty owner, and where the machine has no clock that could wake it or this process may not
    /// set it; nothing is then changed.
    virtual qint32 schedule(const QDateTime &time, const QString &owner, const QString &type) = 0;

    /// Takes back the event that agrees in everything; fails when there is none.
    virtual qint32 cancel(const QDateTime &time, const QString &owner, const QString &type) = 0;

    /// The events still to come, in the order in which they were scheduled. Any user may ask.
    virtual QList<Event> scheduledEvents() = 0;

    /// Sets the alarm anew for that phase, and drops events whose time has passed. An earlier alarm of
    /// somebody else's stays.
    virtual qint32 arm(Phase phase) = 0;

    /// From now on this process keeps the alarm right: now, before sleep and power-off (after all observers
    /// have run), at wake, when the calendar clock was set, and on the way to a date farther away than the
    /// clock's alarm reaches. For the daemon. Once is enough.
    virtual void keepArmed() = 0;

    /// The clock and its alarm at the moment; absent when the machine has none that could wake it. Any user
    /// may ask.
    virtual std::optional<Alarm> alarm() = 0;

    /// Looks for the controller. Any user may ask.
    virtual Controller controller() = 0;

    /// What the controller holds: under "AutoWake" the seconds until it wakes the machine, under "AutoPower"
    /// when it switches it on, in seconds since 1904 in local time; absent when it is not there or does not
    /// tell. Any user may ask.
    virtual std::optional<QVariantMap> controllerProperties() = 0;

    /// Sets the alarm to a date, reads it back, and sets it as it was. Empty when it read back what was set,
    /// else a sentence that says what went wrong.
    virtual QString testAlarm(const QDateTime &time) = 0;

    /// Sets the alarm to a date that is no event's: that of another program, whose place an event of ours
    /// had for a while. An earlier alarm stays, and nothing happens for a date that has passed.
    virtual qint32 putBackAlarm(const QDateTime &time) = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<PowerEventScheduler> &Port<PowerEventScheduler>::current();

} // namespace dozely
