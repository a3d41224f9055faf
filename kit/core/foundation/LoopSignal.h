// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QList>

#include <functional>
#include <memory>

namespace dozely
{

/// Turns signals of the operating system into calls from the event loop, for as long as it lives. What a
/// signal itself interrupts only writes a number to a descriptor: it takes no lock and cannot block.
///
/// Signals that arrive before the loop has come round are one call; after the last of them there is always at
/// least one. Until a loop runs, nothing happens at all. Of several objects for the same signal the latest
/// has it. THREADING: made and destroyed on the main thread; those for the same signal in the opposite order.
///
/// EXAMPLE
///     const LoopSignal ending({SIGTERM, SIGINT}, [] { QCoreApplication::quit(); });
class DOZELYKIT_EXPORT LoopSignal
{
public:
    /// What `handler` throws is logged. What cannot be set up leaves the signals as they were.
    LoopSignal(const QList<int> &signalNumbers, std::function<void()> handler);

    /// Gives the signals their former handlers back.
    ~LoopSignal();
    LoopSignal(const LoopSignal &) = delete;
    LoopSignal &operator=(const LoopSignal &) = delete;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace dozely
