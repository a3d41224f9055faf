// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <sys/types.h>

/// An X server without a screen of its own (Xvfb) for the life of the object; DISPLAY names it.
class VirtualDisplay
{
public:
    VirtualDisplay() = default;
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay &) = delete;
    VirtualDisplay &operator=(const VirtualDisplay &) = delete;

    /// Starts the server with a screen of that size and waits until it can be used. Needs no application
    /// object.
    bool start(const char *screen = "1280x800x24");

    QByteArray name() const { return m_name; }

private:
    pid_t m_process = -1;
    QByteArray m_name;
};
