// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ProgramEnvironment.h"

#include "DozelyKit/core/foundation/StringExtensions.h"

#include <QFile>
#include <QFileInfo>

namespace dozely
{

namespace
{
constexpr char sessionPath[] = "/usr/local/bin:/usr/bin:/bin";
constexpr char daemonPath[] = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin";

/// "/" for a user without one.
QString homeFolder()
{
    const QString home = RealHomeDirectory();
    return home.startsWith('/') ? home : QString("/");
}

QByteArrayList basicVariables(const QByteArray &path)
{
    const QByteArray language = qgetenv("LANG");
    return {"PATH=" + path, "HOME=" + QFile::encodeName(homeFolder()),
            "LANG=" + (language.isEmpty() ? QByteArray("C.UTF-8") : language)};
}
} // namespace

ProgramEnvironment ProgramEnvironment::ofDaemon()
{
    return {basicVariables(daemonPath), "/"};
}

ProgramEnvironment ProgramEnvironment::ofSession()
{
    const QString home = homeFolder();
    ProgramEnvironment environment{basicVariables(sessionPath), QFileInfo(home).isDir() ? home : "/"};
    for (const char *name : {"XDG_RUNTIME_DIR", "DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"}) {
        if (qEnvironmentVariableIsSet(name))
            environment.variables += QByteArray(name) + '=' + qgetenv(name);
    }
    return environment;
}

} // namespace dozely
