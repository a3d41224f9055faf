// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace dozely
{

/// The properties of X11 windows by which window managers and compositors are told what Qt has no word for.
/// Only areUsed may be called where Qt does not run on X11.
namespace X11Windows
{
bool areUsed();

/// Whether somebody owns the compositor's selection of this screen. One round trip to the server.
bool haveCompositor();

/// Sends what waits to be sent to the server.
void flush();

/// "_NET_WM_DESKTOP" and "_NET_WM_STATE_STICKY": every desktop, or the one that the window manager chooses.
/// For a window that is not shown yet.
void setJoinsAllDesktops(QWindow *window, bool joins);

/// "_COMPTON_SHADOW", which the common stand-alone compositors read; others draw no shadow around frameless
/// windows.
void setHasShadow(QWindow *window, bool hasShadow);
} // namespace X11Windows

} // namespace dozely
