// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QtGlobal>

class QWindow;

namespace dozely
{

/// What it takes on X11 to be made the active window for something that a person did elsewhere.
namespace ActivationX11
{
/// Asks the window manager to make a window that is shown the active one, since a person acted at `time`, as
/// the server counts it. Window managers that keep windows from taking the keys believe that, not that a
/// window wants to be in front. Nothing happens where Qt does not run on X11.
/// THREADING: the main thread. BLOCKING: for some round trips to the X server.
DOZELYINTERFACE_EXPORT void activate(QWindow *window, quint32 time);
} // namespace ActivationX11

} // namespace dozely
