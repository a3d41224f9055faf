// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSLock.h"

#include "DozelyKit/core/foundation/Clock.h"

#include <mutex>

using namespace dozely;

bool NSLock::lockBeforeDate(std::chrono::milliseconds limit)
{
    return Port<Clock>::current()->acquire(m_free, limit);
}

void NSLock::unlock()
{
    // Between the look and the release nobody but another unlock could make the lock free, so those take
    // turns.
    static std::mutex turn;
    const std::lock_guard guard(turn);
    if (m_free.available() == 0)
        m_free.release();
}
