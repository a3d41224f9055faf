// SPDX-License-Identifier: MIT
#include "hosts/daemon/DaemonController.h"

#include "core/ZDRLog.h"
#include "hosts/common/EventReceiver.h"
#include "hosts/common/LogLabel.h"
#include "hosts/common/ScheduleStore.h"
#include "platform/Clock.h"
#include "platform/RootFolder.h"

namespace
{
const QString sentToDaemon = "com.dozely.Daemon";
const QString sentByAdmin = "com.dozely.Admin";

QString senderLabel(const ReceivedEvent &event)
{
    return event.peer ? QString("user %1").arg(*event.peer) : QString("an unknown user");
}
} // namespace

DaemonController::DaemonController(Clock &clock, std::shared_ptr<PinnedConsoleUser> console)
    : m_keeper(clock),
      m_performer(m_keeper, std::move(console)),
      m_watcher(ScheduleStore::path(), RootFolder::path(), clock),
      m_timer(clock.makeAbsoluteTimer())
{
    const auto receive = [this](const char *name, const QString &sender,
                                void (DaemonController::*handler)(const ReceivedEvent &)) {
        EventReceiver::receive(name, sender, this,
                               [this, handler](const ReceivedEvent &event) { (this->*handler)(event); });
    };
    receive("DaemonMustActEvent", sentToDaemon, &DaemonController::daemonMustAct);
    receive("DaemonMustRemoveEvent", sentToDaemon, &DaemonController::daemonMustRemove);
    receive("DaemonMustRunNowEvent", sentByAdmin, &DaemonController::daemonMustRunNow);
    connect(m_timer.get(), &AbsoluteTimer::due, this, &DaemonController::performDue);
    connect(m_timer.get(), &AbsoluteTimer::clockChanged, this, &DaemonController::waitForNext);
    connect(&m_watcher, &StoreWatcher::changed, this, &DaemonController::rereadStore);
    rereadStore();
}

DaemonController::~DaemonController()
{
    m_keeper.flush();
}

void DaemonController::rereadStore()
{
    m_keeper.readStore();
    waitForNext();
}

void DaemonController::waitForNext()
{
    if (const auto next = m_keeper.scheduler().nextDate())
        m_timer->start(*next); // a date that is past comes due at once
    else
        m_timer->stop();
}

void DaemonController::performDue()
{
    const QList<Occurrence> due = m_keeper.scheduler().due();
    if (!due.isEmpty())
        m_performer.performDue(due.first());
    // Others that are due have their own turns, so that requests and signals are served in between.
    waitForNext();
}

std::optional<Occurrence> DaemonController::heldOccurrence(const ReceivedEvent &event) const
{
    const QVariant date = event.userInfo.value("Schedule Date");
    if (!event.peer || date.typeId() != QMetaType::QDateTime)
        return {};
    return m_keeper.scheduler().heldByAgent(
        *event.peer, event.userInfo.value("Schedule Bundle Path").toString(), date.toDateTime(),
        event.userInfo.value("Schedule Parameters").toMap());
}

void DaemonController::daemonMustAct(const ReceivedEvent &event)
{
    if (const auto occurrence = heldOccurrence(event))
        m_performer.performHandedBack(*occurrence);
    else
        ZDRLog("DaemonMustActEvent from %@ refused: that user's agent has no such occurrence",
               senderLabel(event));
}

void DaemonController::daemonMustRemove(const ReceivedEvent &event)
{
    const auto occurrence = heldOccurrence(event);
    if (!occurrence) {
        ZDRLog("DaemonMustRemoveEvent from %@ refused: that user's agent has no such occurrence",
               senderLabel(event));
        return;
    }
    m_keeper.note(*occurrence, OccurrenceState::Removed);
    ZDRLog("Schedule \"%@\": the occurrence was removed by %@", logLabel(occurrence->schedule.name),
           senderLabel(event));
}

void DaemonController::daemonMustRunNow(const ReceivedEvent &event)
{
    const QString identifier = event.userInfo.value("Schedule Identifier").toString();
    const auto schedule = m_keeper.scheduler().schedule(identifier);
    if (!schedule) {
        ZDRLog("DaemonMustRunNowEvent from %@ refused: there is no schedule %@", senderLabel(event),
               logLabel(identifier));
        return;
    }
    if (!EventPermissions::mayRunNow(event.peer, RootFolder::owner(), schedule->owner)) {
        ZDRLog("DaemonMustRunNowEvent from %@ refused: schedule %@ belongs to another user",
               senderLabel(event), logLabel(identifier));
        return;
    }
    m_performer.performNow(m_keeper.scheduler().makeOccurrenceNow(*schedule));
}
