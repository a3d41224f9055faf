// SPDX-License-Identifier: MIT
#include "communication/WDCommunicationCenter.h"
#include "core/ZDRLog.h"
#include "hosts/agent/UserAgentController.h"
#include "hosts/common/HostApplication.h"
#include "hosts/common/HostOptions.h"
#include "hosts/common/HostRootObject.h"
#include "hosts/common/TerminationWatcher.h"

int main(int argc, char **argv)
{
    HostApplication application(argc, argv, "Dozely Agent");
    HostOptions options("Performs actions in the session of the user who is logged in.");
    if (const auto status = options.parse(QCoreApplication::arguments()))
        return *status;

    // The library looks the alert's text up in the bundle of this name.
    if (const auto bundle = NSBundle::mainBundle())
        NSBundle::registerClass("WDUserAgentController", bundle);
    TerminationWatcher termination;
    QObject::connect(&termination, &TerminationWatcher::terminate, &application, &QCoreApplication::quit);

    ZDRLog("Dozely Agent started");
    HostRootObject rootObject;
    const auto center = WDCommunicationCenter::sharedInstance();
    center->setObserver(&rootObject);
    center->createServerConnection();

    int status = 0;
    {
        UserAgentController controller;
        status = QCoreApplication::exec();
    }
    // Closed while there is still an event loop to take leave of.
    center->setObserver(nullptr);
    center->setConnection(nullptr);
    center->setSocketPort(nullptr);
    ZDRLog("Dozely Agent ended");
    return status;
}
