// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrencePerformer.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ScheduleKeeper.h"

#include <QScopeGuard>

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

QString couldNotBeReached(quint32 userId)
{
    return QString("the agent of user %1 could not be reached").arg(userId);
}
} // namespace

OccurrencePerformer::OccurrencePerformer(ScheduleKeeper &keeper, std::shared_ptr<PinnedConsoleUser> console,
                                         Clock &clock)
    : m_keeper(keeper),
      m_console(std::move(console)),
      m_loader(InfoKey::daemonModule, trustedSources(), [] { return std::make_unique<WDDaemonPlugIn>(); }),
      m_waits(clock, keeper.scheduler())
{
}

void OccurrencePerformer::performDue(const Occurrence &occurrence)
{
    if (occurrence.mayHaveRun) {
        m_keeper.note(occurrence, OccurrenceState::Skipped);
        ZDRLog("%@ was skipped: it may have run before the record was lost", labelOf(occurrence));
        return;
    }
    perform(occurrence, Place::AsConfigured, true);
}

void OccurrencePerformer::performHandedBack(const Occurrence &occurrence)
{
    perform(occurrence, Place::Daemon, false);
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
    if (!isReceived)
        return notAnnounced(true, couldNotBeReached(user->userId));
    ZDRLog("%@ is announced by the agent of user %u", labelOf(occurrence), user->userId);
    return {true, user->userId};
}

void OccurrencePerformer::perform(const Occurrence &occurrence, Place place, bool mayBeTooLate)
{
    // One that waited for its agent was in time when it began to; how long it may wait is known there.
    const bool hasWaited = m_waits.userOf(occurrence).has_value();
    const auto made = makePlugIn(occurrence);
    if (!made) {
        notPerformed(occurrence, made.error().text);
        return;
    }
    const auto &plugIn = *made;
    bool isTooLate = false;
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        plugIn->setParameters(occurrence.schedule.parameters);
        plugIn->setCalendarDate(occurrence.calendarDate());
        isTooLate =
            mayBeTooLate && !hasWaited && m_keeper.scheduler().isTooLate(occurrence, plugIn->timeOut());
    });
    if (thrown) {
        notPerformed(occurrence, *thrown);
    } else if (isTooLate) {
        m_keeper.note(occurrence, OccurrenceState::Skipped);
        ZDRLog("%@ was skipped: it is %lld s late", labelOf(occurrence),
               static_cast<qlonglong>(m_keeper.scheduler().lateness(occurrence).count()));
    } else if (place == Place::AsConfigured &&
               ActionPlace::actsInUserAgent(occurrence.schedule.parameters,
                                            plugIn->bundle()->infoDictionary())) {
        actInUserAgent(occurrence, *plugIn);
    } else {
        actInDaemon(occurrence, plugIn);
    }
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

void OccurrencePerformer::actInUserAgent(const Occurrence &occurrence, WDDaemonPlugIn &plugIn)
{
    const auto release = qScopeGuard([this] { m_console->release(); });
    const auto user = reachableUser(occurrence, plugIn);
    if (!user)
        return;
    m_waits.end(occurrence);
    m_keeper.noteBegun(occurrence);
    // From here on nobody knows how far it came, so it is not tried again.
    const bool isReceived = postToAgent(*user, [&] { return plugIn.actInUserAgentNow(); });
    if (!isReceived) {
        notPerformed(occurrence, couldNotBeReached(*user));
        return;
    }
    m_keeper.note(occurrence, OccurrenceState::Done, *user);
    ZDRLog("%@ was handed to the agent of user %u", labelOf(occurrence), *user);
}

/// The user at the console, pinned, whose agent answers. Absent when the occurrence waits for one, or its
/// time is over. One that waits does so for whom it was due: it does not pass to somebody who logs in later.
std::optional<quint32> OccurrencePerformer::reachableUser(const Occurrence &occurrence,
                                                          const WDDaemonPlugIn &plugIn)
{
    const auto console = m_console->pin();
    const auto waitedFor = m_waits.userOf(occurrence);
    if (!console && !waitedFor) {
        notPerformed(occurrence, "nobody is logged in");
        return {};
    }
    const quint32 user = waitedFor ? *waitedFor : console->userId;
    if (console && console->userId == user && m_waits.isReachable(user))
        return user;
    if (!m_waits.wait(occurrence, user, plugIn.timeOut()))
        notPerformed(occurrence, couldNotBeReached(user));
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

void OccurrencePerformer::actInDaemon(const Occurrence &occurrence,
                                      const std::shared_ptr<WDDaemonPlugIn> &plugIn)
{
    m_keeper.noteBegun(occurrence);
    ZDRLog("%@ acts in the daemon", labelOf(occurrence));
    if (const auto thrown = GuardedPosting::guardPlugIn([&] { plugIn->actInDaemon(); })) {
        notPerformed(occurrence, *thrown);
        return;
    }
    m_running.keep(plugIn, [this, occurrence] { m_keeper.note(occurrence, OccurrenceState::Done); });
}

void OccurrencePerformer::notPerformed(const Occurrence &occurrence, const QString &why)
{
    m_waits.end(occurrence);
    m_keeper.note(occurrence, OccurrenceState::NotPerformed);
    ZDRLog("%@ was not performed: %@", labelOf(occurrence), why);
}
