// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QTimer>

/// A plug-in for tests whose action is a window, which goes when there is a file of the name that its
/// parameters give.
class WindowUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    void actInUserAgent() override
    {
        ZDRLog("The platform is %@, the agent's bundle %@", QGuiApplication::platformName(),
               NSBundle::bundleForClassNamed("WDUserAgentController") ? QString("known") : QString("lost"));
        if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
            return;
        m_window = new QLabel("A window");
        m_window->show();
        ZDRLog("The window is shown");
        closeWhenTold();
    }

    void stopAction() override { ZDRLog("The window's action was told to stop"); }

private:
    void closeWhenTold()
    {
        if (!QFile::exists(parameters()->value("Close When").toString()))
            return QTimer::singleShot(5, this, &WindowUserAgentPlugIn::closeWhenTold);
        ZDRLog("The window goes");
        delete m_window;
    }

    QLabel *m_window = nullptr;
};

class WindowFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<WindowUserAgentPlugIn>(); }
    void terminateClass() override { ZDRLog("The window's process ends"); }
};

#include "WindowPlugIn.moc"
