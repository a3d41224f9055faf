// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "AvahiNetServices_p.h"
#include "BusUserNotificationPresenter_p.h"
#include "DistributedSignals_p.h"
#include "EventProcesses_p.h"
#include "LinuxClock_p.h"
#include "LinuxMachineIdentity_p.h"
#include "LinuxPrimaryInterface_p.h"
#include "LinuxProcessTable_p.h"
#include "LinuxServiceRegistry_p.h"
#include "LogindConsoleUser_p.h"
#include "LogindPower_p.h"
#include "RouteReachability_p.h"
#include "RtcPowerEventScheduler_p.h"
#include "UinputKeyDriver_p.h"

#if DOZELY_UPDATE_CHECK
#include "CurlHttpClient_p.h"
#endif

Platform::Platform()
    : aeProcesses(std::make_shared<EventProcesses>()),
      clock(std::make_shared<LinuxClock>()),
      consoleUser(std::make_shared<LogindConsoleUser>()),
      distributedNotifications(std::make_shared<DistributedSignals>()),
      keyEventDriver(std::make_shared<UinputKeyDriver>()),
      machineIdentity(std::make_shared<LinuxMachineIdentity>()),
      netServices(std::make_shared<AvahiNetServices>()),
      primaryInterface(std::make_shared<LinuxPrimaryInterface>()),
      processTable(std::make_shared<LinuxProcessTable>()),
      reachability(std::make_shared<RouteReachability>()),
      serviceRegistry(std::make_shared<LinuxServiceRegistry>()),
      userNotificationPresenter(std::make_shared<BusUserNotificationPresenter>())
{
    const auto scheduler = std::make_shared<RtcPowerEventScheduler>();
    powerEventScheduler = scheduler;
    systemPower = std::make_shared<LogindPower>(
        [scheduler](quint32 messageType) { scheduler->powerChanges(messageType); });
#if DOZELY_UPDATE_CHECK
    httpClient = std::make_shared<CurlHttpClient>();
#endif
}

Platform &Platform::current()
{
    // Never destroyed: whatever runs while the process ends may still log, and the log asks the clock.
    static auto *const platform = new Platform;
    return *platform;
}
