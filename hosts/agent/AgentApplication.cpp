// SPDX-License-Identifier: MIT
#include "hosts/agent/AgentApplication.h"

#include "hosts/common/program/HostApplication.h"

#include <QApplication>

#include <optional>

namespace
{
constexpr char processName[] = "Dozely Agent";

/// A variable of the environment that is another one as long as this lives.
class Meanwhile
{
public:
    Meanwhile(const char *name, const std::optional<QByteArray> &value) : m_name(name)
    {
        if (qEnvironmentVariableIsSet(name))
            m_former = qgetenv(name);
        set(value);
    }
    ~Meanwhile() { set(m_former); }
    Meanwhile(const Meanwhile &) = delete;
    Meanwhile &operator=(const Meanwhile &) = delete;

private:
    void set(const std::optional<QByteArray> &value) const
    {
        if (value)
            qputenv(m_name, *value);
        else
            qunsetenv(m_name);
    }

    const char *m_name;
    std::optional<QByteArray> m_former;
};

class WindowedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        return HostApplication::stopExceptions(
            [this, receiver, event] { return QApplication::notify(receiver, event); });
    }
};

bool isNamed(const char *display)
{
    return !qEnvironmentVariableIsEmpty(display);
}

/// The platforms to try, one after the other. The last one shows nothing but is always there: Qt ends a
/// process that finds none.
QByteArray platforms()
{
    QByteArrayList list;
    if (isNamed("QT_QPA_PLATFORM")) {
        list += qgetenv("QT_QPA_PLATFORM");
    } else {
        // X11 first, also where a Wayland compositor offers it: only there may an alert say where it stands.
        if (isNamed("DISPLAY"))
            list += "xcb";
        if (isNamed("WAYLAND_DISPLAY"))
            list += "wayland";
    }
    list += "offscreen";
    return list.join(';');
}
} // namespace

std::unique_ptr<QCoreApplication> AgentApplication::make(int &argc, char **argv)
{
    if (!isNamed("DISPLAY") && !isNamed("WAYLAND_DISPLAY"))
        return std::make_unique<HostApplication>(argc, argv, processName);
    const Meanwhile platform("QT_QPA_PLATFORM", platforms());
    // A session manager would start a second agent in the next session.
    const Meanwhile session("SESSION_MANAGER", std::nullopt);
    HostApplication::begin(processName);
    auto application = std::make_unique<WindowedApplication>(argc, argv);
    application->setApplicationName(processName);
    HostApplication::finishBeginning();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return application;
}

bool AgentApplication::hasDisplay()
{
    const bool hasWindows = qobject_cast<QApplication *>(QCoreApplication::instance());
    return hasWindows && QGuiApplication::platformName() != "offscreen" &&
           QGuiApplication::platformName() != "minimal";
}
