// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/SessionEnvironment_p.h"

#include "DozelyKit/core/foundation/StringExtensions.h"

#include <QFile>

QByteArrayList SessionEnvironment::variables()
{
    QByteArrayList entries{"PATH=/usr/local/bin:/usr/bin:/bin", "HOME=" + QFile::encodeName(workingFolder())};
    const QByteArray language = qgetenv("LANG");
    entries += "LANG=" + (language.isEmpty() ? QByteArray("C.UTF-8") : language);
    for (const char *name : {"XDG_RUNTIME_DIR", "DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"}) {
        if (qEnvironmentVariableIsSet(name))
            entries += QByteArray(name) + '=' + qgetenv(name);
    }
    return entries;
}

QString SessionEnvironment::workingFolder()
{
    const QString home = RealHomeDirectory();
    return home.startsWith('/') ? home : QString("/");
}
