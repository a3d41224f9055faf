// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <memory>

class AEProcesses;
class Clock;
class ConsoleUser;
class DistributedNotifications;
class HttpClient;
class InterfaceFileLoader;
class KeyEventDriver;
class MachineIdentity;
class NetServices;
class PowerEventScheduler;
class PrimaryInterface;
class ProcessTable;
class Reachability;
class SystemPower;
class UserNotificationPresenter;

/// The ports of this process: what the kit asks of the machine, each behind an abstract class.
///
/// Made on first use with the ports of the host platform. A test replaces members before the code under test
/// runs; no member but alertWindow, interfaceFileLoader and httpClient is ever null.
///
/// THREADING: replacing a member is for the head of main and for tests.
class DOZELYKIT_EXPORT Platform
{
public:
    static Platform &current();

    std::shared_ptr<AEProcesses> aeProcesses;
    std::shared_ptr<UserNotificationPresenter> alertWindow; ///< A window of our own, beside notifications.
    std::shared_ptr<Clock> clock;
    std::shared_ptr<ConsoleUser> consoleUser;
    std::shared_ptr<DistributedNotifications> distributedNotifications;
    std::shared_ptr<HttpClient> httpClient; ///< Null in a build without the update check.
    std::shared_ptr<InterfaceFileLoader> interfaceFileLoader;
    std::shared_ptr<KeyEventDriver> keyEventDriver;
    std::shared_ptr<MachineIdentity> machineIdentity;
    std::shared_ptr<NetServices> netServices;
    std::shared_ptr<PowerEventScheduler> powerEventScheduler;
    std::shared_ptr<PrimaryInterface> primaryInterface;
    std::shared_ptr<ProcessTable> processTable;
    std::shared_ptr<Reachability> reachability;
    std::shared_ptr<SystemPower> systemPower;
    std::shared_ptr<UserNotificationPresenter> userNotificationPresenter; ///< The desktop's notifications.

private:
    Platform(); // in platform/linux
};
