// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArrayList>
#include <QString>

namespace dozely
{

/// What surrounds a ChildProgram that a plug-in or a script starts: no more than this of what surrounds the
/// host.
struct DOZELYKIT_EXPORT ProgramEnvironment {
    QByteArrayList variables; ///< Entries NAME=VALUE.
    QString workingFolder;

    /// In the daemon: PATH, HOME and LANG; the folder is "/".
    static ProgramEnvironment ofDaemon();

    /// In the user's session: PATH, HOME, LANG and, where the host has them, XDG_RUNTIME_DIR, DISPLAY,
    /// WAYLAND_DISPLAY and DBUS_SESSION_BUS_ADDRESS; the folder is the user's home, or "/" where that does
    /// not exist.
    static ProgramEnvironment ofSession();
};

} // namespace dozely
