// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/orders/OrderPermissions.h"
#include "hosts/daemon/Scheduler.h"
#include "hosts/daemon/SchedulerObserver.h"

#include <QHash>
#include <QMap>

#include <functional>
#include <set>
#include <tuple>

/// The rules of anticipation: which open occurrence is to be announced to the user before its date, when, and
/// whom a wish to drop one is obeyed from. Remembers who was told, for as long as the daemon lives; posts,
/// reads and writes nothing.
///
/// The lead time is what the plug-in classes' base answers for the schedule's parameters, so that no module
/// is loaded before there is something to announce. An occurrence whose lead time has begun already is to be
/// announced at once, one whose lead time is 0 or negative never: there is nothing before it to announce.
///
/// What is to be announced is kept in the order of its dates and changed when the scheduler tells of a
/// change: no question costs a look at all schedules.
class AnticipationPlan final : private SchedulerObserver
{
public:
    /// Both must outlive the object.
    AnticipationPlan(const dozely::Clock &clock, Scheduler &scheduler);
    ~AnticipationPlan() override;
    AnticipationPlan(const AnticipationPlan &) = delete;
    AnticipationPlan &operator=(const AnticipationPlan &) = delete;

    /// When the next announcement is to be made, which may be past; absent when none is to come.
    std::optional<QDateTime> nextDate();

    /// The occurrence to announce now, the one with the earliest date first.
    std::optional<Occurrence> next();

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

    /// An alert that announces nothing any more, though its date is to come: what it announced was removed,
    /// postponed or disabled.
    struct Needless {
        QString bundlePath; ///< The full path.
        QDateTime date;     ///< UTC.
        QSet<quint32> told; ///< Whose agents show it.
    };

    /// The alerts that have become needless since the last call. What they announced is announced anew,
    /// should it come back.
    QList<Needless> takeNeedless();

    /// Who is at the console; asked only where that matters.
    using ConsoleUserNow = std::function<OrderPermissions::UserId()>;

    /// The open occurrences of this bundle (full path) and date that are to be dropped when `peer` wishes so.
    ///
    /// The system and a schedule's owner are obeyed at any time, others only from the beginning of the lead
    /// time on: the users who were told, or, while nobody was, the one whom `consoleUser` names. Such an
    /// order does not tell several schedules of one bundle and date apart, and neither does the alert, which
    /// is one for all: it means all that are being announced, or, when none is, all.
    QList<Occurrence> removable(OrderPermissions::UserId peer, OrderPermissions::UserId rootOwner,
                                const QString &bundlePath, const QDateTime &date,
                                const ConsoleUserNow &consoleUser) const;

    /// Whether `peer` is obeyed, by the same rule, about one occurrence.
    bool mayRemove(const Occurrence &occurrence, OrderPermissions::UserId peer,
                   OrderPermissions::UserId rootOwner, const ConsoleUserNow &consoleUser) const;

    /// Forgets who was told of occurrences that the schedules do not have any more.
    void forgetGone();

private:
    using Key = std::tuple<QString, QString, qint64>; // identifier, bundle, moment: another one is news
    struct Attempts {
        int count = 0;
        QSet<quint32> told;
        QDateTime again; // when to try next; invalid: not of our own accord
    };
    /// When to announce what has which moment, milliseconds since 1970, and the schedule's place.
    struct Announcement {
        qint64 when;
        qint64 date;
        qint32 place;

        bool operator<(const Announcement &other) const
        {
            return std::tie(when, date, place) < std::tie(other.when, other.date, other.place);
        }
    };
    struct EarlierDate {
        bool operator()(const Announcement &a, const Announcement &b) const
        {
            return std::tie(a.date, a.place, a.when) < std::tie(b.date, b.place, b.when);
        }
    };

    void schedulesReplaced() override;
    void scheduleChanged(qint32 place) override;
    static Key keyOf(const Occurrence &occurrence);
    static std::optional<qint64> leadTime(const Schedule &schedule);
    std::optional<QDateTime> momentOf(const Occurrence &occurrence, qint64 lead) const;
    void noteAttempt(const Occurrence &occurrence, const Attempts &attempts);
    void tryAgainNow(const std::function<bool(const Attempts &)> &isWanted);
    std::optional<Occurrence> occurrenceOf(const Key &key) const;
    void replan(qint32 place);
    void lookAtClock();
    bool isBeingAnnounced(const Occurrence &occurrence) const;
    bool isShown(const QMap<Key, Attempts>::const_iterator &attempts) const;
    bool isGone(const QMap<Key, Attempts>::const_iterator &attempts) const;

    const dozely::Clock &m_clock;
    Scheduler &m_scheduler;
    OrderPermissions::UserId m_console; // when it was last looked at
    QMap<Key, Attempts> m_attempts;
    QHash<qint32, qint64> m_leads; // in seconds, by place, of what is to be announced at all
    QHash<qint32, QList<Announcement>> m_planned;
    std::set<Announcement> m_coming;
    std::set<Announcement, EarlierDate> m_present; // the moment has come, the date has not
    QSet<qint32> m_passed;                         // places of those whose date has come, too
    qint64 m_now = 0;                              // when the clock was last looked at
};
