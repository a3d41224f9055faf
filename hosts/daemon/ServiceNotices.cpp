// SPDX-License-Identifier: MIT
#include "hosts/daemon/ServiceNotices.h"

#include "DozelyKit/core/foundation/Clock.h"

#include <cstdint>
#include <systemd/sd-daemon.h>

using namespace dozely;

namespace
{
std::chrono::milliseconds pauseOfWatchdog()
{
    std::uint64_t microseconds = 0;
    if (::sd_watchdog_enabled(0, &microseconds) <= 0)
        return {};
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::microseconds(microseconds)) / 2;
}
} // namespace

ServiceNotices::ServiceNotices(Clock &clock) : m_clock(clock), m_pause(pauseOfWatchdog()) {}

ServiceNotices::~ServiceNotices()
{
    ::sd_notify(0, "STOPPING=1");
}

void ServiceNotices::ready()
{
    ::sd_notify(0, "READY=1");
    if (m_pause.count() > 0)
        feedWatchdog();
}

void ServiceNotices::reload(const std::function<void()> &work)
{
    const auto now = std::chrono::duration_cast<std::chrono::microseconds>(m_clock.steadyTime());
    ::sd_notifyf(0, "RELOADING=1\nMONOTONIC_USEC=%lld", static_cast<long long>(now.count()));
    work();
    ::sd_notify(0, "READY=1");
}

void ServiceNotices::feedWatchdog()
{
    ::sd_notify(0, "WATCHDOG=1");
    m_clock.callAfter(m_pause, this, [this] { feedWatchdog(); });
}
