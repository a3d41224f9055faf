// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/LoopSignal.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/machine/ConsoleUser.h"
#include "DozelyKit/system/machine/ProcessPriority.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/common/events/EventScriptFunction.h"
#include "hosts/common/program/HostApplication.h"
#include "hosts/common/program/HostOptions.h"
#include "hosts/common/program/HostRootObject.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/InstanceLock.h"
#include "hosts/daemon/JournalStory.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ServiceNotices.h"
#include "hosts/daemon/bus/SchedulerBus.h"

#include <csignal>
#include <cstdio>
#include <functional>
#include <sys/stat.h>

using namespace dozely;

int main(int argc, char **argv)
{
    ::umask(022);
    HostApplication application(argc, argv, "dozelyd");
    HostOptions options("Keeps the schedules and performs them when they come due.");
    const QCommandLineOption keep(
        "keep", "Remember the latest <NUMBER> occurrences of each schedule, 100 unless told.", "NUMBER",
        "100");
    options.parser().addOption(keep);
    if (const auto status = options.parse(QCoreApplication::arguments()))
        return *status;
    OccurrenceDatabase::Limits limits;
    bool isNumber = false;
    limits.ofASchedule = options.parser().value(keep).toUInt(&isNumber);
    if (!isNumber || limits.ofASchedule == 0) {
        std::fputs("dozelyd: --keep takes a number from 1 on\n", stderr);
        return HostOptions::badUsage;
    }

    // Before anything that the other one would notice.
    const auto instance = InstanceLock::take();
    if (!instance) {
        ZDRLog("dozelyd: %@", instance.error().text);
        if (instance.error().name == GuardedFile::busy) {
            std::fputs(qPrintable("dozelyd: " + instance.error().text + '\n'), stderr);
            return 1;
        }
        // A disk that takes no lock file is no reason to perform nothing.
    }

    if (Port<SystemPower>::current()->isGoingOff()) {
        // What began now would be cut short. Whoever started this does so again, should that be called off.
        ZDRLog("dozelyd does not begin: the machine goes off");
        return 0;
    }

    const auto console = std::make_shared<PinnedConsoleUser>(Port<ConsoleUser>::current());
    Port<ConsoleUser>::current() = console;
    const LoopSignal interruption({SIGINT}, [] { QCoreApplication::quit(); });
    // Who sends it may do so as soon as the log says something; what is read later needs no reading again.
    std::function<void()> readSchedulesAgain;
    const LoopSignal hangup({SIGHUP}, [&] {
        if (readSchedulesAgain)
            readSchedulesAgain();
    });
    ZDRPowerManager::sharedInstance(); // from here on SIGTERM is what a power-off is
    application.quitAtPowerOff();

    ProcessPriority::raiseTo(ProcessPriority::beforeUsers); // what is due is due, whatever users' programs do
    ZDRLog("dozelyd started");
    EventScriptFunction::registerFunction();
    Port<AEProcesses>::current()->prepare(); // the users' agents may not
    HostRootObject rootObject;
    const auto center = WDCommunicationCenter::sharedInstance();
    center->setObserver(&rootObject);
    center->createServerConnection();

    int status = 0;
    {
        Port<PowerEventScheduler>::current()->keepArmed();
        DaemonController controller(*Port<Clock>::current(), console, limits);
        const SchedulerBus bus(controller, Port<Clock>::current());
        const JournalStory story(controller, *Port<Clock>::current());
        ServiceNotices notices(*Port<Clock>::current()); // tells the end before it comes
        readSchedulesAgain = [&] {
            ZDRLog("dozelyd reads its schedules again");
            notices.reload([&] { controller.rereadStore(); });
        };
        if (controller.canWait()) {
            notices.ready();
            status = QCoreApplication::exec();
        } else {
            // Whoever started this starts it again; one that stayed would never perform anything.
            ZDRLog("dozelyd cannot wait for dates and ends: the machine has no timer for it");
            status = 1;
        }
        readSchedulesAgain = {};
    }
    // Closed while there is still an event loop to take leave of.
    center->setObserver(nullptr);
    center->setConnection(nullptr);
    center->setSocketPort(nullptr);
    ZDRLog("dozelyd ended");
    return status;
}
