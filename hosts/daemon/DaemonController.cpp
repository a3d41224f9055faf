// SPDX-License-Identifier: MIT
#include "hosts/daemon/DaemonController.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/core/log/AbuseLog.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/OrderReceiver.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/PinnedConsoleUser.h"

#include <QScopeGuard>

#include <algorithm>

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

/// Characters.
constexpr qsizetype longestFailure = 1000;

/// Why an action failed or was not performed, by what its agent says: one line.
QString failureIn(const ReceivedOrder &order)
{
    return logLabel(order.userInfo.value(OrderKey::failure).toString(), longestFailure).trimmed();
}

/// Absent for what no program ends with.
std::optional<qint64> exitStatusIn(const ReceivedOrder &order)
{
    bool isNumber = false;
    const qint64 status = order.userInfo.value(OrderKey::exitStatus).toLongLong(&isNumber);
    return isNumber && status >= 0 && status <= 255 ? std::optional(status) : std::nullopt;
}

/// No more of it than any action may leave; nothing for what is no output.
QByteArray outputIn(const ReceivedOrder &order)
{
    const QVariant value = order.userInfo.value(OrderKey::output);
    if (value.typeId() != QMetaType::QByteArray)
        return {};
    const QByteArray output = value.toByteArray();
    return output.last(std::min(output.size(), PerformanceOutcome::mostOutput));
}

QString senderLabel(const ReceivedOrder &order)
{
    return order.peer ? QString("user %1").arg(*order.peer) : QString("an unknown user");
}
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

std::optional<Occurrence> DaemonController::heldOccurrence(const ReceivedOrder &order) const
{
    const QVariant date = order.userInfo.value(OrderKey::date);
    if (!order.peer || date.typeId() != QMetaType::QDateTime)
        return {};
    return m_handOvers.heldByAgent(*order.peer, order.userInfo.value(OrderKey::bundlePath).toString(),
                                   date.toDateTime(), order.userInfo.value(OrderKey::parameters).toMap());
}

void DaemonController::daemonMustAct(const ReceivedOrder &order)
{
    if (const auto occurrence = heldOccurrence(order))
        m_performer.performHandedBack(*occurrence);
    else
        ZDRLog("%@ from %@ refused: that user's agent has no such occurrence", order.name,
               senderLabel(order));
}

/// What tells nothing new is no fault: an agent reports whenever its answer may have come too late.
void DaemonController::daemonMustNoteOutcome(const ReceivedOrder &order)
{
    const QVariant date = order.userInfo.value(OrderKey::date);
    const QString outcome = order.userInfo.value(OrderKey::outcome).toString();
    const bool isPerformed = outcome == OrderOutcome::performed;
    const bool hasFailed = outcome == OrderOutcome::failed;
    const bool isSkipped = outcome == OrderOutcome::skipped;
    if (!order.peer || date.typeId() != QMetaType::QDateTime ||
        (!isPerformed && !hasFailed && !isSkipped && outcome != OrderOutcome::notPerformed))
        return;
    const auto handedOver = [&](OccurrenceState state) {
        return m_handOvers.handedOver(*order.peer, order.userInfo.value(OrderKey::bundlePath).toString(),
                                      date.toDateTime(), order.userInfo.value(OrderKey::parameters).toMap(),
                                      state);
    };
    PerformanceOutcome told{hasFailed || isPerformed};
    told.output = outputIn(order);
    auto occurrence = handedOver(OccurrenceState::Unknown);
    if (!occurrence && (!isPerformed || !told.output.isEmpty()))
        occurrence = handedOver(OccurrenceState::Done);
    if (!occurrence)
        return;
    if (isSkipped)
        return m_performer.sessionOutcomes().noteOverlap(*occurrence);
    if (!isPerformed)
        told.failure = failureIn(order);
    if (const auto status = exitStatusIn(order); hasFailed || (isPerformed && status == 0))
        told.exitStatus = status;
    if (hasFailed && told.failure.isEmpty())
        told.failure = "its agent does not say why";
    m_performer.sessionOutcomes().note(*occurrence, *order.peer, told);
}

OrderPermissions::UserId DaemonController::consoleUser() const
{
    const auto user = m_console->current();
    return user ? OrderPermissions::UserId(user->userId) : std::nullopt;
}

QList<Occurrence> DaemonController::removableOccurrences(const ReceivedOrder &order) const
{
    const QVariant date = order.userInfo.value(OrderKey::date);
    if (date.typeId() != QMetaType::QDateTime)
        return {};
    QList<Occurrence> occurrences = m_anticipation.removable(
        order.peer, RootFolder::owner(), order.userInfo.value(OrderKey::bundlePath).toString(),
        date.toDateTime().toUTC(), [this] { return consoleUser(); });
    if (occurrences.isEmpty()) {
        if (const auto held = heldOccurrence(order))
            occurrences += *held;
    }
    return occurrences;
}

/// Whether it is about what is announced for the time after an action, which is no occurrence.
bool DaemonController::meansRest(const ReceivedOrder &order) const
{
    return m_rest.isMeant(order.peer, order.userInfo.value(OrderKey::bundlePath).toString(),
                          order.userInfo.value(OrderKey::date).toDateTime());
}

void DaemonController::daemonMustRemove(const ReceivedOrder &order)
{
    if (meansRest(order)) {
        m_rest.cancel(senderLabel(order));
        return;
    }
    const QList<Occurrence> occurrences = removableOccurrences(order);
    if (occurrences.isEmpty()) {
        ZDRLog("%@ from %@ refused: there is no such occurrence for that user to remove", order.name,
               senderLabel(order));
        return;
    }
    for (const Occurrence &occurrence : occurrences)
        m_keeper.note(occurrence, OccurrenceState::Removed);
    m_keeper.flush(); // what the log calls removed does not happen after a crash either
    for (const Occurrence &occurrence : occurrences) {
        ZDRLog("Schedule \"%@\": the occurrence was removed by %@", logLabel(occurrence.schedule.name),
               senderLabel(order));
    }
    waitForNext();
}

void DaemonController::daemonMustAnticipateAgain(const ReceivedOrder &order)
{
    // Every agent asks when it starts; there is something to announce at the console alone.
    Q_EMIT agentCame();
    const auto user = m_console->current();
    if (!order.peer || !user || *order.peer != user->userId)
        return;
    m_anticipation.announceAgain();
    waitForNext();
}

void DaemonController::refuse(const ReceivedOrder &order, OrderRefusal::Kind kind, const QString &why) const
{
    ZDRLog("%@ from %@ refused: %@", order.name, senderLabel(order), why);
    throw OrderRefusal(kind, why);
}

/// Refuses an order of nobody, and one too many.
void DaemonController::takeRate(const ReceivedOrder &order)
{
    using enum OrderRefusal::Kind;
    if (!order.peer)
        refuse(order, NotPermitted, "nobody knows who sent it");
    if (const auto taken = takeRateOf(*order.peer); !taken)
        throw OrderRefusal(Impossible, taken.error().text);
}

Result<void> DaemonController::takeRateOf(quint32 user)
{
    if (OrderPermissions::isSystem(user, RootFolder::owner()) || m_rate.take(user, m_clock.steadyTime()))
        return {};
    AbuseLog::note(user, "order to run something now refused: too many a minute");
    return Error{QString("a user may give %1 orders a minute").arg(OrderRate::mostAMinute)};
}

void DaemonController::obeyWish(const ReceivedOrder &order,
                                void (OccurrenceWishes::*wish)(const ReceivedOrder &))
{
    takeRate(order);
    if (meansRest(order)) {
        const qint64 delay = order.userInfo.value(OrderKey::delay).toLongLong();
        if (order.name == OrderName::daemonMustPostpone && delay > 0)
            m_rest.postpone(std::chrono::seconds(delay), senderLabel(order));
        else
            m_rest.cancel(senderLabel(order));
        return;
    }
    const QString identifier = order.userInfo.value(OrderKey::scheduleIdentifier).toString();
    if (!identifier.isEmpty() && !m_keeper.scheduler().placeOf(identifier))
        rereadStore(); // one that was added a moment ago
    try {
        (m_wishes.*wish)(order);
    } catch (const OrderRefusal &refusal) {
        ZDRLog("%@ from %@ refused: %@", order.name, senderLabel(order), refusal.reason());
        throw;
    }
    waitForNext();
}

/// What the sender is told is true: when this returns, the disk has it that the action is to be performed.
void DaemonController::daemonMustRunNow(const ReceivedOrder &order)
{
    using enum OrderRefusal::Kind;
    takeRate(order);
    const QString identifier = order.userInfo.value(OrderKey::scheduleIdentifier).toString();
    auto schedule = m_keeper.scheduler().schedule(identifier);
    if (!schedule) {
        rereadStore(); // one that was added a moment ago
        schedule = m_keeper.scheduler().schedule(identifier);
    }
    if (!schedule)
        refuse(order, Impossible, QString("there is no schedule %1").arg(logLabel(identifier)));
    if (!OrderPermissions::mayRunNow(order.peer, RootFolder::owner(), schedule->owner)) {
        refuse(order, NotPermitted, QString("schedule %1 belongs to another user").arg(logLabel(identifier)));
    }
    const auto noted = m_keeper.noteAsked(m_keeper.scheduler().makeOccurrenceNow(*schedule), *order.peer);
    if (!noted)
        refuse(order, Impossible, noted.error().text);
    waitForNext(); // performed from the event loop, the sender has its answer by then
}

Result<void> DaemonController::runNow(const QString &identifier, quint32 user)
{
    const auto schedule = m_keeper.scheduler().schedule(identifier);
    if (!schedule)
        return Error{QString("there is no schedule %1").arg(logLabel(identifier))};
    if (const auto taken = takeRateOf(user); !taken)
        return taken;
    auto noted = m_keeper.noteAsked(m_keeper.scheduler().makeOccurrenceNow(*schedule), user);
    if (noted)
        waitForNext();
    return noted;
}

Result<QDateTime> DaemonController::skip(const QString &identifier, const std::optional<QDateTime> &date,
                                         quint32 user)
{
    if (const auto taken = takeRateOf(user); !taken)
        return taken.error();
    auto skipped = m_wishes.skipOf(identifier, date, QString("user %1").arg(user));
    if (skipped)
        waitForNext();
    return skipped;
}

Result<QDateTime> DaemonController::postpone(const QString &identifier, const std::optional<QDateTime> &date,
                                             std::chrono::seconds delay, quint32 user)
{
    if (const auto taken = takeRateOf(user); !taken)
        return taken.error();
    auto postponed = m_wishes.postponeOf(identifier, date, delay, QString("user %1").arg(user));
    if (postponed)
        waitForNext();
    return postponed;
}

void DaemonController::testWaking(std::chrono::seconds duration, quint32 user, const WakeTrial::Done &done)
{
    if (const auto taken = takeRateOf(user); !taken)
        return done(taken.error());
    if (duration.count() == 0)
        return done(m_wakeTrial.tryAlarm());
    m_wakeTrial.sleep(duration, done);
}
