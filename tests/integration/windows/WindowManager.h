// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

#include <memory>
#include <thread>

#include <sys/types.h>

/// A real window manager (openbox) with two desktops on the display that DISPLAY names, for the life of the
/// object.
class WindowManager
{
public:
    WindowManager() = default;
    ~WindowManager();
    WindowManager(const WindowManager &) = delete;
    WindowManager &operator=(const WindowManager &) = delete;

    /// Waits until it manages windows. Needs no application object.
    bool start();

private:
    class Probe;
    void startNudging(std::unique_ptr<Probe> probe);

    QTemporaryDir m_folder;
    pid_t m_process = -1;
    std::jthread m_nudging;
};
