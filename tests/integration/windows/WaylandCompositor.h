// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

#include <sys/types.h>

/// A real Wayland compositor (weston) for this process alone, with a white desktop in a window at the origin
/// of the display that DISPLAY names: what is done there is done to the compositor, what it shows can be seen
/// there.
class WaylandCompositor
{
public:
    WaylandCompositor() = default;
    ~WaylandCompositor();
    WaylandCompositor(const WaylandCompositor &) = delete;
    WaylandCompositor &operator=(const WaylandCompositor &) = delete;

    /// Starts it with a desktop of that size in pixels. The first Wayland connection of this process is to
    /// it; it answers when it is ready. Needs no application object.
    bool start(int width, int height);

private:
    QTemporaryDir m_folder;
    pid_t m_process = -1;
};
