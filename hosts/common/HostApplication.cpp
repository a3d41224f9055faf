// SPDX-License-Identifier: MIT
#include "hosts/common/HostApplication.h"

#include "core/ZDRLog.h"
#include "hosts/common/GuardedPosting.h"
#include "platform/NSProcessInfo.h"

namespace
{
/// The plain poll loop needs no GLib thread context: less memory, fewer wake-ups. It must be chosen before
/// the application object is made.
int &withPlainLoop(int &argc, const char *processName)
{
    qputenv("QT_NO_GLIB", "1");
    NSProcessInfo::setProcessName(processName);
    return argc;
}
} // namespace

HostApplication::HostApplication(int &argc, char **argv, const char *processName)
    : QCoreApplication(withPlainLoop(argc, processName), argv)
{
    setApplicationName(processName);
    // Programs started by plug-ins choose for themselves.
    qunsetenv("QT_NO_GLIB");
}

bool HostApplication::notify(QObject *receiver, QEvent *event)
{
    bool handled = false;
    if (const auto thrown =
            GuardedPosting::guardPlugIn([&] { handled = QCoreApplication::notify(receiver, event); }))
        ZDRLog("Something raised in the event loop and was stopped: %@", *thrown);
    return handled;
}
