// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <cerrno>
#include <csignal>

/// Sends a signal to one process, or with 0 asks whether it is there; false with `errno` when it did not get
/// it. So it is for 0 and below, too, which kill() takes for groups of processes, the test's own among them:
/// 0 is what QProcess has for a process that has ended, and what a text becomes that is no number.
inline bool signalProcess(qint64 process, int number)
{
    if (process <= 0) {
        errno = ESRCH;
        return false;
    }
    return ::kill(static_cast<pid_t>(process), number) == 0;
}
