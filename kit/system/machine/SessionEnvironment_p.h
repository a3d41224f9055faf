// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QString>

/// What surrounds a program that a script starts: no more than this of what surrounds the host.
namespace SessionEnvironment
{
/// PATH, HOME and LANG, and what leads to the user's session where the host has it: XDG_RUNTIME_DIR, DISPLAY,
/// WAYLAND_DISPLAY and DBUS_SESSION_BUS_ADDRESS.
QByteArrayList variables();

/// The user's home, "/" for a user without one.
QString workingFolder();
} // namespace SessionEnvironment
