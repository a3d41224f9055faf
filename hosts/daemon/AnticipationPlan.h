// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/orders/OrderPermissions.h"
#include "hosts/daemon/Scheduler.h"

#include <QMap>

#include <functional>
#include <tuple>

/// The rules of anticipation: which open occurrence is to be announced to the user before its date, when, and
/// whom a wish to drop one is obeyed from. Remembers who was told, for as long as the daemon lives; posts,
/// reads and writes nothing.
///
/// The lead time is what the plug-in classes' base answers for the schedule's parameters, so that no module
/// is loaded before there is something to announce. An occurrence whose lead time has begun already is to be
/// announced at once, one whose lead time is 0 or negative never: there is nothing before it to announce.
class AnticipationPlan
{
public:
    /// Both must outlive the object.
    AnticipationPlan(const dozely::Clock &clock, const Scheduler &scheduler);

    /// When the next announcement is to be made, which may be past; absent when none is to come.
    std::optional<QDateTime> nextDate() const;

    /// The occurrence to announce now, the one with the earliest date first.
    std::optional<Occurrence> next() const;

    /// The agent of `userId` has it.
    void noteTold(const Occurrence &occurrence, quint32 userId);

    /// Nobody could be told, with `console` there, which may be nobody. It is tried once more after a while,
    /// since an agent that lost its socket to a daemon that was started is back by then, and after that only
    /// when an agent asks for it.
    void noteFailed(const Occurrence &occurrence, OrderPermissions::UserId console = {});

    /// Its plug-in does not want it announced.
    void noteUnwanted(const Occurrence &occurrence);

    /// Who is at the console, which may be nobody. When somebody has come who was not told of what is being
    /// announced, it is to be announced again.
    void noteConsole(OrderPermissions::UserId user);

    /// After which time noteConsole wants to be told anew: between one second and half a minute, the more
    /// often the sooner an announced occurrence is due. Absent while nothing is announced.
    std::optional<std::chrono::milliseconds> nextLookAtConsole() const;

    /// An agent that started knows nothing of what was announced before: what is not due yet is to be
    /// announced again. An occurrence is announced a few times at most, whatever agents ask for.
    void announceAgain();

    /// The open occurrences of this bundle (full path) and date that are to be dropped when `peer` wishes so.
    ///
    /// The system and a schedule's owner are obeyed at any time, others only from the beginning of the lead
    /// time on: the users who were told, or, while nobody was, the one whom `consoleUser` names. Such an
    /// order does not tell several schedules of one bundle and date apart, and neither does the alert, which
    /// is one for all: it means all that are being announced, or, when none is, all.
    QList<Occurrence> removable(OrderPermissions::UserId peer, OrderPermissions::UserId rootOwner,
                                const QString &bundlePath, const QDateTime &date,
                                const std::function<OrderPermissions::UserId()> &consoleUser) const;

    /// Forgets who was told of occurrences that the schedules do not have any more.
    void forgetGone();

private:
    using Key = std::tuple<QString, QString, QDateTime>; // identifier, bundle, date: another bundle is news
    struct Attempts {
        int count = 0;
        QSet<quint32> told;
        QDateTime again; // when to try next; invalid: not of our own accord
    };
    static Key keyOf(const Schedule &schedule);
    static std::optional<qint64> leadTime(const Schedule &schedule);
    std::optional<QDateTime> momentOf(const Schedule &schedule) const;
    bool isBeingAnnounced(const Schedule &schedule) const;

    const dozely::Clock &m_clock;
    const Scheduler &m_scheduler;
    OrderPermissions::UserId m_console; // when it was last looked at
    QMap<Key, Attempts> m_attempts;
};
