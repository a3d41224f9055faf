// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/ClockDoubt.h"
#include "hosts/common/orders/OrderRefusal.h"
#include "hosts/daemon/Announcer.h"
#include "hosts/daemon/AnticipationPlan.h"
#include "hosts/daemon/HandOvers.h"
#include "hosts/daemon/OccurrencePerformer.h"
#include "hosts/daemon/OccurrenceWishes.h"
#include "hosts/daemon/OrderRate.h"
#include "hosts/daemon/OwnWakes.h"
#include "hosts/daemon/PowerPlanner.h"
#include "hosts/daemon/RestAlert.h"
#include "hosts/daemon/ReturnToRest.h"
#include "hosts/daemon/ScheduleKeeper.h"
#include "hosts/daemon/StoreWatcher.h"
#include "hosts/daemon/WakeTrial.h"
#include "hosts/daemon/ZoneWatch.h"

#include <QObject>

#include <memory>

namespace dozely
{
class AbsoluteTimer;
} // namespace dozely

class PinnedConsoleUser;
struct ReceivedOrder;

/// The daemon's work: waits for the next occurrence, has it announced, performs what is due, reads the
/// schedules again when they change, and obeys orders about schedules. Acts from the event loop: what is due
/// is decided upon in one turn, and each occurrence started in one of its own.
class DaemonController : public QObject
{
    Q_OBJECT
public:
    /// Loads schedules and record, and begins. `clock` must outlive the object.
    DaemonController(dozely::Clock &clock, std::shared_ptr<PinnedConsoleUser> console,
                     const OccurrenceDatabase::Limits &limits = {});
    ~DaemonController() override;

    /// False when the machine refused the timer without which nothing comes due.
    bool canWait() const;

    /// What the plug-ins of the schedules have answered.
    PlugInAnswers &plugIns() { return m_answers; }

    /// @name What others are asked to do, or tell, through this
    /// @{
    ScheduleKeeper &keeper() { return m_keeper; }

    /// The unit of the service manager in which the action of an occurrence runs; empty where it has none.
    QString unitOf(const OccurrenceRecord::Key &key) const
    {
        return m_performances.unitOf(DaemonActions::nameOf(key));
    }
    PinnedConsoleUser &console() { return *m_console; }
    const OccurrenceWishes &wishes() const { return m_wishes; }
    /// @}

    /// Wishes of a user of whom it is known that he may have them: that a schedule's action is performed now,
    /// that an occurrence is left out or takes place later, as OccurrenceWishes has it. What is not refused
    /// is on disk. An error is a clause. BLOCKING: for the disk.
    /// @{
    dozely::Result<void> runNow(const QString &identifier, quint32 user);
    dozely::Result<QDateTime> skip(const QString &identifier, const std::optional<QDateTime> &date,
                                   quint32 user);
    dozely::Result<QDateTime> postpone(const QString &identifier, const std::optional<QDateTime> &date,
                                       std::chrono::seconds delay, quint32 user);
    /// @}

    /// Tries whether the machine's clock wakes it, at the wish of a user of whom it is known that he may: by
    /// reading its alarm back, and with a duration that is not 0 by having the machine sleep for that time.
    /// `done` may be called before this returns; an error is a clause.
    void testWaking(std::chrono::seconds duration, quint32 user, const WakeTrial::Done &done);

    /// Reads the schedules again, which happens by itself when their file changes. BLOCKING: for the disk.
    void rereadStore();

Q_SIGNALS:
    /// An occurrence was announced to somebody.
    void announced(const Occurrence &occurrence);

    /// An agent has started.
    void agentCame();

private:
    void waitForNext();
    QList<Occurrence> dueNow() const;
    void performDue();
    std::optional<QDateTime> nextAnnouncement();
    void announceNext();
    void watchConsole();
    void lookAtClock();
    void removeOverAfter(std::chrono::hours delay);

    bool meansRest(const ReceivedOrder &order) const;
    bool isBusyUntil(const QDateTime &date) const;

    void daemonMustAct(const ReceivedOrder &order);
    void daemonMustRemove(const ReceivedOrder &order);
    void daemonMustNoteOutcome(const ReceivedOrder &order);
    void daemonMustRunNow(const ReceivedOrder &order);
    void obeyWish(const ReceivedOrder &order, void (OccurrenceWishes::*wish)(const ReceivedOrder &));
    OrderPermissions::UserId consoleUser() const;
    void takeRate(const ReceivedOrder &order);
    dozely::Result<void> takeRateOf(quint32 user);
    void zoneHasChanged();
    void daemonMustAnticipateAgain(const ReceivedOrder &order);
    [[noreturn]] void refuse(const ReceivedOrder &order, OrderRefusal::Kind kind, const QString &why) const;
    QList<Occurrence> removableOccurrences(const ReceivedOrder &order) const;
    std::optional<Occurrence> heldOccurrence(const ReceivedOrder &order) const;

    dozely::Clock &m_clock;
    Performances m_performances;
    PlugInAnswers m_answers;
    ScheduleKeeper m_keeper;
    std::shared_ptr<PinnedConsoleUser> m_console;
    HandOvers m_handOvers;
    OccurrencePerformer m_performer;
    Announcer m_announcer;
    AnticipationPlan m_anticipation;
    OccurrenceWishes m_wishes;
    dozely::ClockDoubt m_clockDoubt;
    PowerPlanner m_power;
    OwnWakes m_wakes; // behind what plans them
    RestAlert m_restAlert;
    ReturnToRest m_rest;
    WakeTrial m_wakeTrial;
    OrderRate m_rate;
    StoreWatcher m_watcher;
    ZoneWatch m_zoneWatch;
    std::unique_ptr<dozely::AbsoluteTimer> m_timer;
    bool m_isWatchingConsole = false;
    bool m_isAsking = false; // what the plug-in wants of which an occurrence is to be announced
    bool m_isWatchingClock = false;
};
