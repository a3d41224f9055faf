// SPDX-License-Identifier: MIT
#pragma once

/// Where the program's windows are shown.
namespace WindowDisplay
{
/// Whether the environment names a display, or a platform of Qt's. Needs no application object.
bool isNamed();

/// Has Qt try Wayland, then X11, then nothing at all, unless the environment says otherwise; Qt ends a
/// process that finds none. Before the application object is made.
void choose();

/// Whether windows can be seen, or somebody has asked that they be not. Needs the application object.
bool isThere();
} // namespace WindowDisplay
