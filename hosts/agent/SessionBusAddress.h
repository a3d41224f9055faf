// SPDX-License-Identifier: MIT
#pragma once

/// Where the session's message bus is.
namespace SessionBusAddress
{
/// Puts the usual address (systemd's user bus, below XDG_RUNTIME_DIR) into the environment where that names
/// none. Qt's libraries would otherwise have dbus-launch start a bus of its own for the display, which takes
/// up to three seconds and finds nobody there. Before other threads are started.
void nameTheUsualOne();
} // namespace SessionBusAddress
