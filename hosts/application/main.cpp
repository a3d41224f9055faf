// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/LoopSignal.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/application/actions/PlugInTrial.h"
#include "hosts/application/program/AlertRequest.h"
#include "hosts/application/program/LoginPreferences.h"
#include "hosts/application/program/SingleInstance.h"
#include "hosts/application/program/StartToken.h"
#include "hosts/application/program/Translations.h"
#include "hosts/application/program/WindowDisplay.h"
#include "hosts/application/program/WindowedApplication.h"
#include "hosts/application/window/MainWindow.h"
#include "hosts/common/events/RequiredEvents.h"
#include "hosts/common/program/HostApplication.h"
#include "hosts/common/program/HostOptions.h"
#include "hosts/common/program/HostRootObject.h"

#include <csignal>
#include <cstdio>

using namespace dozely;

namespace
{
constexpr char processName[] = "Dozely"; // by which others know the configuration application
constexpr char description[] = "Shows and changes schedules in a window.";
constexpr int failed = 1;

/// Reads the command line; the status to end with, unless the program shall go on.
std::optional<int> parse(HostOptions &options)
{
    options.parser().addOption({QString(PlugInTrial::option),
                                "Try the settings of the bundles named, as the window does, and end."});
    options.parser().addPositionalArgument("bundles", "With --try: paths of bundles.", "[BUNDLE...]");
    return options.parse(QCoreApplication::arguments());
}

int fail(const char *sentence)
{
    std::fprintf(stderr, "%s: %s\n", processName, sentence);
    return failed;
}

/// Help and version need no display.
int runWithoutDisplay()
{
    HostOptions options(description);
    if (const auto status = parse(options))
        return *status;
    return fail("there is no display to show a window on; dozely-admin needs none.");
}

/// The window and what makes this the configuration application of its user, until it is closed.
int runWindow(const QStringList &trialArguments)
{
    if (const auto made = LoginPreferences::makeIfMissing(); !made)
        ZDRLog("The login-window preferences were not made: %@", made.error().text);
    const auto client = SchedulerClient::onSystemBus();
    ActionSides sides({QCoreApplication::applicationFilePath(), trialArguments});
    MainWindow window(*client, sides, NSProcessInfo::effectiveUserID());
    AlertRequest alerts(NSProcessInfo::effectiveUserID());
    window.tests().setRequestAlert([&alerts](const auto &answer) { alerts.send(answer); });
    auto &application = static_cast<WindowedApplication &>(*QCoreApplication::instance());
    QObject::connect(&application, &WindowedApplication::raised, &sides, &ActionSides::noteRaised);
    // Not as a wish to quit, about which a person is asked: the session ends.
    const LoopSignal termination({SIGTERM, SIGINT}, [] { QCoreApplication::exit(0); });
    window.show();

    HostRootObject rootObject;
    const auto center = WDCommunicationCenter::sharedInstance();
    center->setObserver(&rootObject);
    center->createServerConnection();
    RequiredEvents events;
    QObject::connect(&events, &RequiredEvents::opened, &window, &MainWindow::raiseToUser,
                     Qt::QueuedConnection);
    QObject::connect(&events, &RequiredEvents::quit, &window, &QWidget::close, Qt::QueuedConnection);

    const int status = QCoreApplication::exec();
    // Closed while there is still an event loop to take leave of.
    center->setObserver(nullptr);
    center->setConnection(nullptr);
    center->setSocketPort(nullptr);
    return status;
}
} // namespace

int main(int argc, char **argv)
{
    if (!WindowDisplay::isNamed()) {
        const HostApplication application(argc, argv, processName);
        return runWithoutDisplay();
    }
    const QString startToken = StartToken::ofThisStart();
    WindowDisplay::choose();
    HostApplication::begin(processName);
    HostApplication::finishBeginning(); // before Qt: the desktop's own dialogs need its own event loop
    WindowedApplication application(argc, argv);
    QCoreApplication::setApplicationName(processName);
    QGuiApplication::setDesktopFileName("com.dozely.Dozely");
    if (!WindowDisplay::isThere())
        return runWithoutDisplay();
    HostOptions options(description);
    if (const auto status = parse(options))
        return *status;
    QStringList trialArguments;
    if (options.parser().isSet("root"))
        trialArguments += {"--root", options.parser().value("root")};
    if (options.parser().isSet(PlugInTrial::option))
        return PlugInTrial::run(options.parser().positionalArguments());
    // A program of the system's owner that comes to the channel clears the daemon's place there.
    if (NSProcessInfo::effectiveUserID() == 0 && RootFolder::path().isEmpty())
        return fail("it is for a person's session, not for root; dozely-admin does all of it as root.");
    const SingleInstance instance;
    if (instance.isSecond()) {
        if (SingleInstance::raiseFirst(startToken))
            return 0;
        return fail("it runs already but does not answer.");
    }
    ZDRLog("Dozely started");
    Translations::install(UserLanguages::current());
    const int status = runWindow(trialArguments + QStringList("--" + PlugInTrial::option));
    ZDRLog("Dozely ended");
    return status;
}
