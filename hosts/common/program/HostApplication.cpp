// SPDX-License-Identifier: MIT
#include "hosts/common/program/HostApplication.h"

#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/machine/DescriptorLimit.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/common/orders/GuardedPosting.h"

using namespace dozely;

void HostApplication::begin(const char *processName)
{
    // The plain poll loop needs no GLib thread context: less memory, fewer wake-ups. It must be chosen before
    // the application object is made.
    qputenv("QT_NO_GLIB", "1");
    DescriptorLimit::raise(); // each stream of a stranger takes some, and files must still be opened
    NSProcessInfo::setProcessName(processName);
    setProblemReport([](const QString &sentence) { ZDRLog("%@", sentence); });
}

void HostApplication::finishBeginning()
{
    // Programs started by plug-ins choose for themselves.
    qunsetenv("QT_NO_GLIB");
}

HostApplication::HostApplication(int &argc, char **argv, const char *processName)
    : QCoreApplication((begin(processName), argc), argv)
{
    setApplicationName(processName);
    finishBeginning();
}

bool HostApplication::notify(QObject *receiver, QEvent *event)
{
    return stopExceptions([this, receiver, event] { return QCoreApplication::notify(receiver, event); });
}

bool HostApplication::stopExceptions(const std::function<bool()> &deliver)
{
    bool handled = false;
    if (const auto thrown = GuardedPosting::guardPlugIn([&] { handled = deliver(); }))
        ZDRLog("Something raised in the event loop and was stopped: %@", *thrown);
    return handled;
}

void HostApplication::quitAtPowerOff()
{
    NSNotificationCenter::defaultCenter().addObserver(this, "systemWillPowerOff",
                                                      ZDRPowerManagerSystemWillPowerOff);
}

void HostApplication::systemWillPowerOff(const NSNotification &)
{
    quit(); // the loop ends once the other observers have run, too
}
