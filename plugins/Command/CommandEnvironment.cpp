// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandEnvironment.h"

#include "DozelyKit/core/foundation/StringExtensions.h"

#include <QFileInfo>

namespace
{
const char *const sessionPath = "/usr/local/bin:/usr/bin:/bin";
const char *const daemonPath = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin";

QProcessEnvironment basicVariables(const char *path, const QString &home)
{
    QProcessEnvironment variables;
    variables.insert("PATH", path);
    variables.insert("LANG", qEnvironmentVariable("LANG", "C.UTF-8"));
    if (!home.isEmpty())
        variables.insert("HOME", home);
    return variables;
}
} // namespace

CommandEnvironment CommandEnvironment::ofDaemon()
{
    return {basicVariables(daemonPath, RealHomeDirectory()), "/"};
}

CommandEnvironment CommandEnvironment::ofSession()
{
    const QString home = RealHomeDirectory();
    CommandEnvironment environment{basicVariables(sessionPath, home), QFileInfo(home).isDir() ? home : "/"};
    for (const char *name : {"XDG_RUNTIME_DIR", "DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"}) {
        if (qEnvironmentVariableIsSet(name))
            environment.variables.insert(name, qEnvironmentVariable(name));
    }
    return environment;
}
