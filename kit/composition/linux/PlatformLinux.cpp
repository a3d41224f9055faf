// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Platform.h"

#include "DozelyKit/communication/events/linux/EventProcesses_p.h"
#include "DozelyKit/core/broadcast/linux/DistributedSignals_p.h"
#include "DozelyKit/core/foundation/linux/LinuxClock_p.h"
#include "DozelyKit/system/alerts/linux/BusUserNotificationPresenter_p.h"
#include "DozelyKit/system/machine/linux/LinuxMachineIdentity_p.h"
#include "DozelyKit/system/machine/linux/LinuxProcessTable_p.h"
#include "DozelyKit/system/machine/linux/LogindConsoleUser_p.h"
#include "DozelyKit/system/network/linux/AvahiNetServices_p.h"
#include "DozelyKit/system/network/linux/LinuxPrimaryInterface_p.h"
#include "DozelyKit/system/network/linux/RouteReachability_p.h"
#include "DozelyKit/system/power/linux/LogindPower_p.h"
#include "DozelyKit/system/power/linux/RtcPowerEventScheduler_p.h"
#include "DozelyKit/system/power/linux/UinputKeyDriver_p.h"

#if DOZELY_UPDATE_CHECK
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"
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
