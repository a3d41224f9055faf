// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QSemaphore>

#include <chrono>

/// A lock that any thread may release, not only the one that took it, and that is not recursive.
class DOZELYKIT_EXPORT NSLock
{
public:
    /// Takes the lock, waiting at most `limit` by the port Clock; false when it stayed taken. Blocks.
    bool lockBeforeDate(std::chrono::milliseconds limit);

    /// Releases the lock; releasing one that is free changes nothing.
    void unlock();

private:
    QSemaphore m_free{1};
};
