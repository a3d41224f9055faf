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
} // namespace

OccurrencePerformer::OccurrencePerformer(ScheduleKeeper &keeper, std::shared_ptr<PinnedConsoleUser> console)
    : m_keeper(keeper),
      m_console(std::move(console)),
      m_loader(InfoKey::daemonModule, trustedSources(), [] { return std::make_unique<WDDaemonPlugIn>(); })
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

void OccurrencePerformer::performNow(const Occurrence &occurrence)
{
    perform(occurrence, Place::AsConfigured, false);
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
        return notAnnounced(true, QString("the agent of user %1 could not be reached").arg(user->userId));
    ZDRLog("%@ is announced by the agent of user %u", labelOf(occurrence), user->userId);
    return {true, user->userId};
}

void OccurrencePerformer::perform(const Occurrence &occurrence, Place place, bool mayBeTooLate)
{
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
        isTooLate = mayBeTooLate && m_keeper.scheduler().isTooLate(occurrence, plugIn->timeOut());
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
    const auto user = m_console->pin();
    const auto release = qScopeGuard([this] { m_console->release(); });
    if (!user) {
        notPerformed(occurrence, "nobody is logged in");
        return;
    }
    m_keeper.noteBegun(occurrence);
    const bool isReceived = postToAgent(user->userId, [&] { return plugIn.actInUserAgentNow(); });
    if (!isReceived) {
        notPerformed(occurrence, QString("the agent of user %1 could not be reached").arg(user->userId));
        return;
    }
    m_keeper.note(occurrence, OccurrenceState::Done, user->userId);
    ZDRLog("%@ was handed to the agent of user %u", labelOf(occurrence), user->userId);
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
    m_keeper.note(occurrence, OccurrenceState::NotPerformed);
    ZDRLog("%@ was not performed: %@", labelOf(occurrence), why);
}
