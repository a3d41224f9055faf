// SPDX-License-Identifier: MIT
#pragma once

#include <QProcessEnvironment>
#include <QString>

/// What surrounds a program that is run: all that it gets from the host.
struct CommandEnvironment {
    QProcessEnvironment variables;
    QString workingDirectory;

    /// In the daemon: PATH, HOME and LANG; the working directory is "/".
    static CommandEnvironment ofDaemon();

    /// In the user's session: PATH, HOME, LANG and, where the agent has them, XDG_RUNTIME_DIR, DISPLAY,
    /// WAYLAND_DISPLAY and DBUS_SESSION_BUS_ADDRESS; the working directory is the user's home, or "/" where
    /// that does not exist.
    static CommandEnvironment ofSession();
};
