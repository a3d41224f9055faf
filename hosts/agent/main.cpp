// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/IdleMemory.h"
#include "DozelyKit/core/foundation/LoopSignal.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "hosts/agent/AgentApplication.h"
#include "hosts/agent/AlertWindowPresenter.h"
#include "hosts/agent/QuietMoment.h"
#include "hosts/agent/SessionBusAddress.h"
#include "hosts/agent/StatusArea.h"
#include "hosts/agent/UserAgentController.h"
#include "hosts/common/events/EventScriptFunction.h"
#include "hosts/common/events/RequiredEvents.h"
#include "hosts/common/program/HostOptions.h"
#include "hosts/common/program/HostRootObject.h"

#include <QGuiApplication>

#include <csignal>
#include <optional>

using namespace dozely;

int main(int argc, char **argv)
{
    SessionBusAddress::nameTheUsualOne();
    const auto application = AgentApplication::make(argc, argv);
    HostOptions options("Performs actions in the session of the user who is logged in.");
    if (const auto status = options.parse(QCoreApplication::arguments()))
        return *status;

    // The library looks the alert's text up in the bundle of this name.
    if (const auto bundle = NSBundle::mainBundle())
        NSBundle::registerClass(userAgentControllerClass, bundle);
    const LoopSignal termination({SIGTERM, SIGINT}, [] { QCoreApplication::quit(); });

    ZDRLog("Dozely Agent started");
    QuietMoment quiet;
    std::shared_ptr<AlertWindowPresenter> windows;
    if (AgentApplication::hasDisplay()) {
        alertWindow() = windows = std::make_shared<AlertWindowPresenter>();
        windows->setPlaceFile(StoredAlertPlace::usualPath());
        // Alerts wait for minutes, the agent for days: what only their appearance took is given back.
        windows->setChanged([&] { quiet.wait(&IdleMemory::giveBack); });
        quiet.wait([] {
            AlertWindowPresenter::drawSample();
            IdleMemory::giveBack();
        });
    } else if (qobject_cast<QGuiApplication *>(application.get())) {
        ZDRLog("The display cannot be opened: alerts are shown by the notification server alone");
    }
    HostRootObject rootObject;
    const auto center = WDCommunicationCenter::sharedInstance();
    center->setObserver(&rootObject);
    center->createServerConnection();

    EventScriptFunction::registerFunction();
    RequiredEvents events;
    QObject::connect(&events, &RequiredEvents::quit, application.get(), &QCoreApplication::quit,
                     Qt::QueuedConnection);

    int exitStatus = 0;
    {
        UserAgentController controller;
        if (windows) {
            windows->setLater(
                {[&](const auto &alert) { return controller.mayBePutOff(alert); },
                 [&](const auto &alert, auto choice) { return controller.putOff(alert, choice); }});
            windows->setDetails([&](const auto &alert) { return controller.detailsOf(alert); });
        }
        std::optional<StatusArea> status;
        if (windows)
            status.emplace();
        UserAgentController::askForAnnouncements();
        exitStatus = QCoreApplication::exec();
        if (windows) {
            windows->setLater({});
            windows->setDetails({});
            windows->setChanged({});
        }
    }
    windows.reset();
    alertWindow().reset(); // no window outlives the application object
    // Closed while there is still an event loop to take leave of.
    center->setObserver(nullptr);
    center->setConnection(nullptr);
    center->setSocketPort(nullptr);
    ZDRLog("Dozely Agent ended");
    return exitStatus;
}
