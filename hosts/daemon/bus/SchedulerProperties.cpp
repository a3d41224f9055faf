// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerProperties.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/common/orders/Listeners.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/Scheduler.h"

using namespace dozely;

namespace
{
constexpr std::chrono::seconds consoleHolds(1);

QVariantMap wakeClock()
{
    const auto alarm = Port<PowerEventScheduler>::current()->alarm();
    if (!alarm)
        return {{"isSupported", false}};
    QVariantMap told{{"isSupported", true}, {"device", alarm->device}};
    if (alarm->armedFor.isValid())
        told.insert("alarm", ScheduleDictionary::textOf(alarm->armedFor));
    return told;
}
} // namespace

SchedulerProperties::SchedulerProperties(const Scheduler &scheduler, const SchedulerAnswers &answers,
                                         PinnedConsoleUser &console, const Clock &clock)
    : m_scheduler(scheduler), m_answers(answers), m_console(console), m_clock(clock)
{
}

QVariantMap SchedulerProperties::ofSchedules() const
{
    QVariantMap next;
    if (const auto moment = m_scheduler.nextAfter(m_clock.currentDate())) {
        const QList<Occurrence> pending = m_scheduler.pendingAt(*moment);
        if (!pending.isEmpty())
            next = m_answers.occurrence(pending.first());
    }
    return {{"Version", QString(DOZELY_VERSION)}, {"NextOccurrence", next}, {"WakeClock", wakeClock()}};
}

QVariantMap SchedulerProperties::ofConsole(bool isNews)
{
    const auto now = m_clock.steadyTime();
    if (!isNews && m_asked.count() >= 0 && now - m_asked < consoleHolds)
        return {};
    QVariantMap told;
    if (const auto user = m_console.current())
        told = {
            {"user", user->userId}, {"name", user->name}, {"isAlive", Listeners::isAgentThere(user->userId)}};
    m_asked = m_clock.steadyTime();
    return {{"AgentOfConsoleUser", told}};
}
