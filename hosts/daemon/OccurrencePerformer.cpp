// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrencePerformer.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/orders/OrderPermissions.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ScheduleKeeper.h"

#include <QScopeGuard>

#include <algorithm>
#include <iterator>

using namespace dozely;

namespace
{
/// Code that runs here comes from folders that nobody but the system's owner can write.
QList<PlugInLoader::Source> trustedSources()
{
    const auto owner = RootFolder::owner();
    return owner ? QList<PlugInLoader::Source>{{QString(), {*owner}}} : QList<PlugInLoader::Source>();
}

QString labelOf(const Occurrence &occurrence)
{
    return QString("Schedule \"%1\"").arg(logLabel(occurrence.schedule.name));
}

/// The user in whose session alone a schedule may act; absent for one of root's, which acts for whoever is
/// there.
std::optional<quint32> onlyUserOf(const Schedule &schedule)
{
    const bool isRoots = !schedule.owner || OrderPermissions::isSystem(schedule.owner, RootFolder::owner());
    return isRoots ? std::nullopt : schedule.owner;
}

QString couldNotBeReached(quint32 userId)
{
    return QString("the agent of user %1 could not be reached").arg(userId);
}
} // namespace

OccurrencePerformer::OccurrencePerformer(ScheduleKeeper &keeper, Performances &performances,
                                         std::shared_ptr<PinnedConsoleUser> console, Clock &clock)
    : m_keeper(keeper),
      m_console(std::move(console)),
      m_clock(clock),
      m_loader(InfoKey::daemonModule, trustedSources(), [] { return std::make_unique<WDDaemonPlugIn>(); }),
      m_actions(keeper, performances),
      m_waits(clock, keeper.scheduler())
{
}

void OccurrencePerformer::decide(const QList<Occurrence> &due)
{
    std::vector<Ready> ready;
    std::vector<Ready> forSessions;
    for (const Occurrence &occurrence : due) {
        if (occurrence.mayHaveRun) {
            m_keeper.note(occurrence, OccurrenceState::Skipped);
            ZDRLog("%@ was skipped: it may have run before the record was lost", labelOf(occurrence));
        } else if (const auto possible = examine(occurrence, Place::AsConfigured, true)) {
            (possible->isForSession ? forSessions : ready).push_back({occurrence, possible->plugIn, {}});
        }
    }
    if (ready.empty()) {
        for (Ready &one : forSessions) {
            one.user = reachableUser(one.occurrence, *one.plugIn);
            if (one.user)
                ready.push_back(std::move(one));
        }
    }
    begin(std::move(ready));
}

void OccurrencePerformer::performHandedBack(const Occurrence &occurrence)
{
    if (const auto possible = examine(occurrence, Place::Daemon, false)) {
        m_keeper.noteBegun({{occurrence, ActingPlace::Daemon}});
        actInDaemon({occurrence, possible->plugIn, {}});
    }
}

void OccurrencePerformer::begin(std::vector<Ready> &&ready)
{
    QList<ScheduleKeeper::Beginning> beginnings;
    for (const Ready &one : ready) {
        m_waits.end(one.occurrence);
        beginnings += {one.occurrence, one.user ? ActingPlace::Session : ActingPlace::Daemon};
    }
    if (!beginnings.isEmpty())
        m_keeper.noteBegun(beginnings);
    // What is due by its date goes before what somebody asked for.
    const bool goesAhead = !ready.empty() && !ready.front().occurrence.isAskedFor;
    const auto place = goesAhead
                           ? std::find_if(m_ready.begin(), m_ready.end(),
                                          [](const Ready &other) { return other.occurrence.isAskedFor; })
                           : m_ready.end();
    m_ready.insert(place, std::make_move_iterator(ready.begin()), std::make_move_iterator(ready.end()));
}

void OccurrencePerformer::startNext()
{
    const Ready next = std::move(m_ready.front());
    m_ready.pop_front();
    if (next.user)
        actInUserAgent(next);
    else
        actInDaemon(next);
}

/// The others of that user were not sent; they wait like any whose agent cannot be reached.
void OccurrencePerformer::takeBackThoseFor(quint32 userId)
{
    std::erase_if(m_ready, [&](const Ready &ready) {
        if (ready.user == userId)
            m_keeper.takeBack(ready.occurrence);
        return ready.user == userId;
    });
}

void OccurrencePerformer::takeBack()
{
    for (const Ready &ready : m_ready)
        m_keeper.takeBack(ready.occurrence);
    m_ready.clear();
}

void OccurrencePerformer::prepareSoonDue()
{
    const Scheduler &scheduler = m_keeper.scheduler();
    if (hasMore() || scheduler.isClockDoubted()) // those that have begun need what was prepared for them
        return;
    m_actions.callOffUnless([&](const Occurrence &occurrence) {
        const auto schedule = scheduler.schedule(occurrence.schedule.identifier);
        return schedule == occurrence.schedule && scheduler.isOpen(*schedule);
    });
    const QDateTime now = m_clock.currentDate();
    const QDateTime latest = now.addDuration(preparationTime);
    for (const Schedule &schedule : scheduler.schedules()) {
        if (schedule.date <= now || schedule.date > latest || !scheduler.isOpen(schedule))
            continue;
        const Occurrence occurrence{schedule, schedule.date};
        const auto bundle = m_actions.mayPrepare(occurrence) ? m_loader.bundle(schedule.fullBundlePath())
                                                             : Error{"there is no need"};
        if (bundle && !ActionPlace::actsInUserAgent(schedule.parameters, (*bundle)->infoDictionary()))
            m_actions.prepare(occurrence, (*bundle)->infoDictionary());
    }
}

std::optional<QDateTime> OccurrencePerformer::nextPreparation() const
{
    std::optional<QDateTime> next;
    const QDateTime earliest = m_clock.currentDate().addDuration(preparationTime);
    for (const Schedule &schedule : m_keeper.scheduler().schedules()) {
        if (schedule.date > earliest && (!next || schedule.date < *next) &&
            m_keeper.scheduler().isOpen(schedule))
            next = schedule.date;
    }
    return next ? std::optional(next->addDuration(-preparationTime)) : std::nullopt;
}

OccurrencePerformer::Announcement OccurrencePerformer::anticipate(const Occurrence &occurrence)
{
    const auto notAnnounced = [&](bool isWanted, const QString &why) {
        ZDRLog("%@ was not announced: %@", labelOf(occurrence), why);
        return Announcement{isWanted};
    };
    const auto made = makePlugIn(occurrence);
    if (!made)
        return notAnnounced(false, made.error().text);
    const auto &plugIn = *made;
    bool isWanted = false;
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        plugIn->setParameters(occurrence.schedule.parameters);
        plugIn->setCalendarDate(occurrence.calendarDate());
        isWanted = plugIn->timeBeforeSelfAnticipation() != -1;
    });
    if (thrown)
        return notAnnounced(false, *thrown);
    if (!isWanted)
        return {false};
    const auto user = m_console->pin();
    const auto release = qScopeGuard([this] { m_console->release(); });
    if (!user)
        return notAnnounced(true, "nobody is logged in");
    const bool isReceived = postToAgent(user->userId, [&] { return plugIn->anticipateInUserAgentNow(); });
    if (!isReceived) {
        (void)notAnnounced(true, couldNotBeReached(user->userId));
        return {true, {}, user->userId};
    }
    ZDRLog("%@ is announced by the agent of user %u", labelOf(occurrence), user->userId);
    return {true, user->userId, user->userId};
}

std::optional<OccurrencePerformer::Possible> OccurrencePerformer::examine(const Occurrence &occurrence,
                                                                          Place place, bool mayBeTooLate)
{
    // One that waited for its agent was in time when it began to; how long it may wait is known there.
    const bool hasWaited = m_waits.userOf(occurrence).has_value();
    const auto made = makePlugIn(occurrence);
    if (!made) {
        notPerformed(occurrence, made.error().text);
        return {};
    }
    const auto &plugIn = *made;
    const QVariantMap bundleInfo = plugIn->bundle()->infoDictionary();
    const bool isForSession = place == Place::AsConfigured &&
                              ActionPlace::actsInUserAgent(occurrence.schedule.parameters, bundleInfo);
    if (const auto why = ActionPlace::reasonAgainst(isForSession, bundleInfo)) {
        notPerformed(occurrence, QString("%1 cannot act in the %2: %3")
                                     .arg(logLabel(plugIn->bundle()->bundlePath()),
                                          QString(isForSession ? "session" : "daemon"), *why));
        return {};
    }
    bool isTooLate = false;
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        plugIn->setParameters(occurrence.schedule.parameters);
        plugIn->setCalendarDate(occurrence.calendarDate());
        isTooLate =
            mayBeTooLate && !hasWaited && m_keeper.scheduler().isTooLate(occurrence, plugIn->timeOut());
    });
    if (thrown) {
        notPerformed(occurrence, *thrown);
        return {};
    }
    if (isTooLate) {
        m_keeper.note(occurrence, OccurrenceState::Skipped);
        ZDRLog("%@ was skipped: it is %lld s late", labelOf(occurrence),
               static_cast<qlonglong>(m_keeper.scheduler().lateness(occurrence).count()));
        return {};
    }
    return Possible{plugIn, isForSession};
}

Result<std::shared_ptr<WDDaemonPlugIn>> OccurrencePerformer::makePlugIn(const Occurrence &occurrence)
{
    const auto bundle = m_loader.bundle(occurrence.schedule.fullBundlePath());
    if (!bundle)
        return bundle.error();
    const auto plugIn = m_loader.make(*bundle);
    if (!plugIn)
        return plugIn.error();
    if (auto daemonPlugIn = std::dynamic_pointer_cast<WDDaemonPlugIn>(*plugIn))
        return daemonPlugIn;
    return Error{
        QString("The module of %1 makes no plug-in for the daemon").arg(logLabel((*bundle)->bundlePath()))};
}

void OccurrencePerformer::actInUserAgent(const Ready &ready)
{
    const auto user = m_console->pin();
    const auto release = qScopeGuard([this] { m_console->release(); });
    if (!user || user->userId != *ready.user) {
        // The console has changed hands since it was decided upon.
        m_keeper.takeBack(ready.occurrence);
        takeBackThoseFor(*ready.user);
        return;
    }
    const auto start = m_clock.steadyTime();
    const bool isReceived = postToAgent(*ready.user, [&] { return ready.plugIn->actInUserAgentNow(); });
    if (!isReceived) {
        m_waits.noteFailure(*ready.user, m_clock.steadyTime() - start);
        takeBackThoseFor(*ready.user);
        // Once it was sent nobody knows how far it came, so it is not tried again.
        if (WDCommunicationCenter::lastPostOutcome() == WDCommunicationCenter::PostOutcome::NotSent)
            waitForAgent(ready);
        else
            noteUnknown(ready.occurrence, *ready.user);
        return;
    }
    m_waits.noteAnswer(*ready.user);
    m_keeper.note(ready.occurrence, OccurrenceState::Done, *ready.user);
    ZDRLog("%@ was handed to the agent of user %u", labelOf(ready.occurrence), *ready.user);
}

/// It is as if nothing had been begun.
void OccurrencePerformer::waitForAgent(const Ready &ready)
{
    qint32 timeOut = 0;
    const auto thrown = GuardedPosting::guardPlugIn([&] { timeOut = ready.plugIn->timeOut(); });
    m_keeper.takeBack(ready.occurrence);
    if (thrown || !m_waits.wait(ready.occurrence, *ready.user, timeOut))
        notPerformed(ready.occurrence, couldNotBeReached(*ready.user));
    else
        ZDRLog("%@ waits for the agent of user %u", labelOf(ready.occurrence), *ready.user);
}

/// The user at the console whose agent answers. Absent when the occurrence waits for one, or its
/// time is over. It is for its owner alone; one of root's is for whoever is there when it comes due, and does
/// not pass to somebody who logs in later.
std::optional<quint32> OccurrencePerformer::reachableUser(const Occurrence &occurrence,
                                                          const WDDaemonPlugIn &plugIn)
{
    const auto console = m_console->current();
    const auto waitedFor = m_waits.userOf(occurrence);
    if (!console && !waitedFor) {
        notPerformed(occurrence, "nobody is logged in");
        return {};
    }
    const auto owner = onlyUserOf(occurrence.schedule);
    const quint32 user = owner ? *owner : waitedFor ? *waitedFor : console->userId;
    const bool isThere = console && console->userId == user;
    if (isThere && m_waits.isReachable(user))
        return user;
    const bool isAnotherThere = console && !isThere;
    if (!m_waits.wait(occurrence, user, plugIn.timeOut()))
        notPerformed(occurrence, isAnotherThere ? QString("user %1 is not at the console").arg(user)
                                                : couldNotBeReached(user));
    else if (!waitedFor && isAnotherThere)
        ZDRLog("%@ waits for user %u, who is not at the console", labelOf(occurrence), user);
    else if (!waitedFor)
        ZDRLog("%@ waits for the agent of user %u", labelOf(occurrence), user);
    return {};
}

bool OccurrencePerformer::postToAgent(quint32 userId, const std::function<bool()> &post)
{
    m_keeper.scheduler().beginWait();
    const bool isReceived = GuardedPosting::guardAgentOfUser(userId, post);
    m_keeper.scheduler().endWait();
    return isReceived;
}

void OccurrencePerformer::actInDaemon(const Ready &ready)
{
    m_actions.perform(ready.occurrence, ready.plugIn->bundle()->infoDictionary());
}

/// An agent that was slow and has it all the same may hand it back, as any that it was handed.
void OccurrencePerformer::noteUnknown(const Occurrence &occurrence, quint32 userId)
{
    m_waits.end(occurrence);
    m_keeper.note(occurrence, OccurrenceState::Unknown, userId);
    ZDRLog(
        "%@ was sent to the agent of user %u, which did not answer: it is not known whether it was performed",
        labelOf(occurrence), userId);
}

void OccurrencePerformer::noteOutcome(const Occurrence &occurrence, quint32 userId, bool isPerformed)
{
    if (!isPerformed) {
        notPerformed(occurrence, QString("the agent of user %1 could not begin it").arg(userId));
        return;
    }
    m_keeper.note(occurrence, OccurrenceState::Done, userId);
    ZDRLog("%@ was performed all the same by the agent of user %u", labelOf(occurrence), userId);
}

void OccurrencePerformer::notPerformed(const Occurrence &occurrence, const QString &why)
{
    m_waits.end(occurrence);
    m_keeper.note(occurrence, OccurrenceState::NotPerformed);
    ZDRLog("%@ was not performed: %@", labelOf(occurrence), why);
}
