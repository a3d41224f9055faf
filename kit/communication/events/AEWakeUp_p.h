// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

namespace dozely
{

/// Runs an action on the thread that made it, from its event loop or while the thread waits for a reply,
/// behind what other processes have sent so far. It counts as a request that is served, of which eight nest.
class AEWakeUp
{
public:
    virtual ~AEWakeUp() = default;

    /// The action runs once for any number of calls before it.
    virtual void wake() = 0;

    /// Null when the process has no descriptor left.
    static std::unique_ptr<AEWakeUp> make(std::function<void()> action);
};

} // namespace dozely
