// SPDX-License-Identifier: MIT
#include "hosts/daemon/DaemonController.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/OrderReceiver.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/PinnedConsoleUser.h"

#include <QScopeGuard>

using namespace dozely;

namespace
{
/// Begun together at most. A daemon that is killed has lost what had begun, so not all that may ever be due.
constexpr qsizetype mostInATurn = 1000;

/// A clock that is doubted is looked at so often.
constexpr std::chrono::seconds clockLooks(1);

/// A clock that is wrong when the machine starts has as a rule been set right by the first removal.
/// @{
constexpr std::chrono::hours firstRemoval(1);
constexpr std::chrono::hours betweenRemovals(24);
/// @}
} // namespace

DaemonController::DaemonController(Clock &clock, std::shared_ptr<PinnedConsoleUser> console,
                                   const OccurrenceDatabase::Limits &limits)
    : m_clock(clock),
      m_performances(PerformerStart::ofThisMachine(Performances::programNamed("dozely-performer"),
                                                   ServiceManager::Whose::Machine),
                     DaemonActions::folder(), clock, DaemonActions::spareFolder()),
      m_answers(Performances::programNamed("dozely-performer"), clock),
      m_keeper(clock, limits,
               [this](const OccurrenceRecord::Key &key) {
                   return m_performances.isThere(DaemonActions::nameOf(key));
               }),
      m_console(std::move(console)),
      m_handOvers(clock, m_keeper.scheduler()),
      m_performer(m_keeper, m_performances, m_answers, m_console, clock),
      m_announcer(m_keeper.scheduler(), m_performances, m_answers, m_console),
      m_anticipation(clock, m_keeper.scheduler()),
      m_wishes(m_keeper, m_anticipation, clock, [this] { return consoleUser(); }),
      m_clockDoubt(clock),
      m_power(m_keeper.scheduler(), clock, m_answers),
      m_wakes(clock),
      m_restAlert(m_keeper.scheduler(), m_console),
      m_rest(clock, {.wokenFor = [this](const QDateTime &moment) { return m_wakes.wokenFor(moment); },
                     .isBusy = [this](const QDateTime &until) { return isBusyUntil(until); },
                     .alert = [this](AfterAction step,
                                     const QDateTime &date) { return m_restAlert.show(step, date); }}),
      m_wakeTrial(clock, [this](const QDateTime &until) { return isBusyUntil(until); }),
      m_watcher(ScheduleStore::path(), RootFolder::path(), clock),
      m_zoneWatch(clock),
      m_timer(clock.makeAbsoluteTimer())
{
    const auto receive = [this](const QString &name, const QString &sender,
                                void (DaemonController::*handler)(const ReceivedOrder &)) {
        OrderReceiver::receive(name, sender, this,
                               [this, handler](const ReceivedOrder &order) { (this->*handler)(order); });
    };
    receive(OrderName::daemonMustAct, OrderSender::daemon, &DaemonController::daemonMustAct);
    receive(OrderName::daemonMustRemove, OrderSender::daemon, &DaemonController::daemonMustRemove);
    receive(OrderName::daemonMustNoteOutcome, OrderSender::daemon, &DaemonController::daemonMustNoteOutcome);
    OrderReceiver::receiveBeforeAnswer(OrderName::daemonMustRunNow, OrderSender::admin, this,
                                       [this](const ReceivedOrder &order) { daemonMustRunNow(order); });
    for (const QString sender : {OrderSender::admin, OrderSender::daemon}) {
        OrderReceiver::receiveBeforeAnswer(
            OrderName::daemonMustSkip, sender, this,
            [this](const ReceivedOrder &order) { obeyWish(order, &OccurrenceWishes::skip); });
        OrderReceiver::receiveBeforeAnswer(
            OrderName::daemonMustPostpone, sender, this,
            [this](const ReceivedOrder &order) { obeyWish(order, &OccurrenceWishes::postpone); });
    }
    receive(OrderName::daemonMustAnticipateAgain, OrderSender::userAgent,
            &DaemonController::daemonMustAnticipateAgain);
    connect(m_timer.get(), &AbsoluteTimer::due, this, &DaemonController::performDue);
    connect(m_timer.get(), &AbsoluteTimer::clockChanged, this, &DaemonController::waitForNext);
    connect(m_timer.get(), &AbsoluteTimer::clockChanged, &m_power, &PowerPlanner::renew);
    connect(&m_power, &PowerPlanner::systemWoke, this, &DaemonController::waitForNext);
    connect(&m_performer.waits(), &AgentWaits::tryAgain, this, &DaemonController::waitForNext);
    connect(&m_performer, &OccurrencePerformer::tryAgain, this, [this] {
        m_isAsking = false;
        waitForNext();
    });
    connect(&m_announcer, &Announcer::failed, this, [this](const Occurrence &occurrence, quint32 userId) {
        m_anticipation.noteFailed(occurrence, userId);
        waitForNext();
    });
    connect(&m_keeper, &ScheduleKeeper::ended, &m_rest, &ReturnToRest::noteEnd);
    connect(&m_keeper, &ScheduleKeeper::storeMayBeReadable, this, &DaemonController::rereadStore);
    connect(&m_watcher, &StoreWatcher::changed, this, &DaemonController::rereadStore);
    connect(&m_zoneWatch, &ZoneWatch::changed, this, &DaemonController::zoneHasChanged);
    removeOverAfter(firstRemoval);
    rereadStore();
    m_performer.takeUp();
}

DaemonController::~DaemonController()
{
    m_performer.takeBack();
    m_keeper.flush();
}

bool DaemonController::canWait() const
{
    return m_timer->isWorking();
}

void DaemonController::rereadStore()
{
    m_keeper.scheduler().lateness().beginWait();
    const auto done = qScopeGuard([this] { m_keeper.scheduler().lateness().endWait(); });
    lookAtClock(); // what is long ago is forgotten
    m_keeper.readStore();
    m_answers.keepOnly(m_keeper.scheduler().schedules());
    m_anticipation.forgetGone();
    waitForNext();
}

void DaemonController::waitForNext()
{
    lookAtClock();
    for (const auto &alert : m_anticipation.takeNeedless()) {
        for (const quint32 user : alert.told)
            AgentPosts::withdraw(alert.bundlePath, alert.date, user);
    }
    m_performer.prepareSoonDue();
    auto next = m_performer.hasMore() ? m_clock.currentDate() : m_keeper.scheduler().nextDate();
    const auto announcement = nextAnnouncement();
    if (announcement && (!next || *announcement < *next))
        next = announcement;
    const auto preparation = m_performer.nextPreparation();
    if (preparation && (!next || *preparation < *next))
        next = preparation;
    if (next)
        m_timer->start(*next); // a date that is past comes due at once
    else
        m_timer->stop();
    m_power.updateSoon();
    watchConsole();
}

/// Wall times mean other instants now, and so does what the machine's own clock shows.
void DaemonController::zoneHasChanged()
{
    readZonesAgain();
    m_keeper.scheduler().readZonesAgain();
    m_keeper.flush();
    m_power.renew();
    waitForNext();
}

/// What a doubted clock makes late waits until it can be believed.
void DaemonController::lookAtClock()
{
    const bool wasHeldUp = m_clockDoubt.until().isValid();
    m_clockDoubt.look();
    const QDateTime until = m_clockDoubt.until();
    m_keeper.scheduler().setDoubted(until);
    if (until.isValid() && !wasHeldUp) {
        ZDRLog("The clock was set ahead by %lld s: what that makes late waits until the clock is sure",
               static_cast<qlonglong>(m_clockDoubt.step().count()));
    } else if (!until.isValid() && wasHeldUp) {
        const ClockDoubt::Excuse excuse = m_clockDoubt.excuse();
        m_keeper.scheduler().lateness().excuse(excuse.until, excuse.duration);
    }
    if (!m_clockDoubt.isDoubted() || m_isWatchingClock)
        return;
    m_isWatchingClock = true;
    m_clock.callAfter(clockLooks, this, [this, until] {
        m_isWatchingClock = false;
        lookAtClock();
        if (m_clockDoubt.until() != until || !m_clockDoubt.isDoubted())
            waitForNext();
    });
}

/// A clock that is doubted removes nothing: it is asked again an hour later.
void DaemonController::removeOverAfter(std::chrono::hours delay)
{
    m_clock.callAfter(delay, this, [this] {
        lookAtClock();
        const bool isSure = !m_clockDoubt.isDoubted();
        if (isSure)
            m_keeper.removeOver();
        removeOverAfter(isSure ? betweenRemovals : firstRemoval);
    });
}

/// When something is to be announced; absent while a doubted clock may have brought that about.
std::optional<QDateTime> DaemonController::nextAnnouncement()
{
    const bool isBroughtByClock = m_clockDoubt.step() > ClockDoubt::largestStep;
    return m_isAsking || isBroughtByClock ? std::nullopt : m_anticipation.nextDate();
}

/// For as long as something is announced, somebody may switch in who has not been told.
void DaemonController::watchConsole()
{
    const auto delay = m_anticipation.nextLookAtConsole();
    if (m_isWatchingConsole || !delay)
        return;
    m_isWatchingConsole = true;
    m_clock.callAfter(*delay, this, [this] {
        m_isWatchingConsole = false;
        m_keeper.scheduler().lateness().beginWait();
        const auto user = m_console->current();
        m_keeper.scheduler().lateness().endWait();
        m_anticipation.noteConsole(user ? OrderPermissions::UserId(user->userId) : std::nullopt);
        waitForNext();
    });
}

/// What has begun is started first, unless it was asked for and something has come due by its date.
QList<Occurrence> DaemonController::dueNow() const
{
    if (m_performer.hasMore() && !m_performer.isNextAskedFor())
        return {};
    const QList<Occurrence> due = m_keeper.scheduler().due(mostInATurn);
    const bool isAskedFor = !due.isEmpty() && due.first().isAskedFor;
    return m_performer.hasMore() && isAskedFor ? QList<Occurrence>() : due;
}

void DaemonController::performDue()
{
    lookAtClock();
    m_keeper.scheduler().lateness().beginWait();
    const auto done = qScopeGuard([this] { m_keeper.scheduler().lateness().endWait(); });
    const QList<Occurrence> due = dueNow();
    m_performer.decide(due);
    // Each is started in a turn of its own, so that requests and signals are served in between.
    if (m_performer.hasMore())
        m_performer.startNext();
    else if (due.isEmpty() && nextAnnouncement())
        announceNext(); // may have to wait for an agent that does not answer, hence not before what is due
    waitForNext();
}

void DaemonController::announceNext()
{
    const auto occurrence = m_anticipation.next();
    if (!occurrence)
        return;
    const Announcer::Announcement announcement = m_announcer.announce(*occurrence);
    m_isAsking = !announcement.isKnown;
    if (m_isAsking)
        return;
    if (!announcement.isWanted)
        m_anticipation.noteUnwanted(*occurrence);
    else if (announcement.told) {
        m_anticipation.noteTold(*occurrence, *announcement.told);
        Q_EMIT announced(*occurrence);
    } else
        m_anticipation.noteFailed(*occurrence, announcement.there);
}

/// Whether an action goes on here, or is due up to that date.
bool DaemonController::isBusyUntil(const QDateTime &date) const
{
    const auto next = m_keeper.scheduler().nextDate();
    return m_performer.hasMore() || !m_keeper.scheduler().record().begunInDaemon().isEmpty() ||
           (next && *next <= date);
}
