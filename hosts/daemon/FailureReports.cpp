// SPDX-License-Identifier: MIT
#include "hosts/daemon/FailureReports.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/daemon/AgentWaits.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ScheduleKeeper.h"

#include <utility>

using namespace dozely;

FailureReports::FailureReports(ScheduleKeeper &keeper, AgentWaits &waits,
                               std::shared_ptr<PinnedConsoleUser> console, const Clock &clock)
    : m_keeper(keeper), m_waits(waits), m_console(std::move(console)), m_clock(clock)
{
}

/// In a turn of its own, so that what is due does not wait for an agent. Once: the disk has what became of
/// the occurrence before anybody is told, so it becomes nothing else, in no later daemon either.
void FailureReports::tellSoon(const Occurrence &occurrence, const QString &why)
{
    const QVariant wish = occurrence.schedule.parameters.value(ParameterKey::tellsFailure);
    const bool isWanted = wish.typeId() == QMetaType::Bool ? wish.toBool() : integerValue(wish) == 1;
    if (!isWanted)
        return;
    QMetaObject::invokeMethod(
        this, [this, name = occurrence.schedule.name, why] { tell(name, why); }, Qt::QueuedConnection);
}

/// An agent that does not answer is not waited for again and again.
void FailureReports::tell(const QString &schedule, const QString &why)
{
    m_keeper.flush();
    const auto user = m_console->current();
    if (!user || !m_waits.isReachable(user->userId))
        return;
    const auto start = m_clock.steadyTime();
    m_keeper.scheduler().lateness().beginWait();
    const bool isReceived = GuardedPosting::postToAgentOfUser(
        NSNotification(OrderName::userAgentMustTellFailure, QString(OrderSender::userAgent),
                       {{OrderKey::scheduleName, schedule}, {OrderKey::failure, logLabel(why)}}),
        user->userId);
    m_keeper.scheduler().lateness().endWait();
    if (isReceived)
        m_waits.noteAnswer(user->userId);
    else
        m_waits.noteFailure(user->userId, m_clock.steadyTime() - start);
}
