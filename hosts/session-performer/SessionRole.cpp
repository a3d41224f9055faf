// SPDX-License-Identifier: MIT
#include "hosts/session-performer/SessionRole.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "hosts/agent/AgentApplication.h"
#include "hosts/agent/AlertWindowPresenter.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

using namespace dozely;

std::unique_ptr<ActingRole> ActingRole::ofThisProgram()
{
    return std::make_unique<SessionRole>();
}

void SessionRole::beginProcess(std::unique_ptr<QCoreApplication> &application, int &argc, char **argv)
{
    application.reset(); // there is one at a time
    application = AgentApplication::make(argc, argv);
    if (AgentApplication::hasDisplay()) {
        const auto windows = std::make_shared<AlertWindowPresenter>();
        windows->setPlaceFile(StoredAlertPlace::usualPath());
        alertWindow() = windows;
        application->installEventFilter(this);
    }
    // Plug-ins look the alert's text up in the agent's bundle.
    if (const auto agent = NSBundle::bundleWithPath(RootFolder::join(DOZELY_AGENT_BUNDLE)))
        NSBundle::registerClass(userAgentControllerClass, agent);
}

SessionRole::~SessionRole()
{
    alertWindow().reset(); // no window outlives the application object
}

QString SessionRole::moduleKey() const
{
    return InfoKey::userAgentModule;
}

QList<PlugInLoader::Source> SessionRole::trustedSources() const
{
    return PlugInLoader::sourcesOfTheSession();
}

bool SessionRole::canAct(const WDPlugIn &plugIn) const
{
    return dynamic_cast<const WDUserAgentPlugIn *>(&plugIn);
}

void SessionRole::act(WDPlugIn &plugIn)
{
    auto &acting = dynamic_cast<WDUserAgentPlugIn &>(plugIn);
    acting.loadNib(); // not earlier: it may show a window
    acting.actInUserAgent();
}

void SessionRole::stop(WDPlugIn &plugIn)
{
    dynamic_cast<WDUserAgentPlugIn &>(plugIn).stopAction();
}

bool SessionRole::goesOn() const
{
    if (!AgentApplication::hasDisplay())
        return false;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.cbegin(), windows.cend(), [](QWindow *window) { return window->isVisible(); });
}

bool SessionRole::eventFilter(QObject *receiver, QEvent *event)
{
    if (event->type() == QEvent::Hide && receiver->isWindowType())
        QMetaObject::invokeMethod(this, &ActingRole::mayBeOver, Qt::QueuedConnection);
    return false;
}
