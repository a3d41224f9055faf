// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

class QWindow;

namespace dozely
{

/// What it takes on X11 to be seen above a window that fills the screen.
namespace FullScreenX11
{
/// Tells the window manager that the window, which has just been shown (Qt forgets it before), goes with the
/// active window when that fills the screen: then it stays above it, also with a window manager that keeps an
/// active window of that kind above all others. Nothing happens otherwise, nor where Qt does not run on X11.
/// THREADING: the main thread. BLOCKING: for some round trips to the X server.
DOZELYINTERFACE_EXPORT void stayAbove(QWindow *window);
} // namespace FullScreenX11

} // namespace dozely
