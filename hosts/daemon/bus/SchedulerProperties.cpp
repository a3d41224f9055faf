// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerProperties.h"

#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/Scheduler.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds consoleHolds(1);

/// Whether somebody listens at the socket of a user's agent. Waits for nobody.
bool isAgentAlive(quint32 user)
{
    const QByteArray path =
        QFile::encodeName(QString("%1/Dozely Agent.%2").arg(ZDRUnixSocketPort::socketFolder()).arg(user));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<size_t>(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    return socket.get() >= 0 &&
           ::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
}

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
        told = {{"user", user->userId}, {"name", user->name}, {"isAlive", isAgentAlive(user->userId)}};
    m_asked = m_clock.steadyTime();
    return {{"AgentOfConsoleUser", told}};
}
