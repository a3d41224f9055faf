// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace dozely
{

/// Work whose size a stranger decides, done in the main thread's event loop, a millisecond in five: whatever
/// its size, it keeps nobody waiting. Several pieces of work take turns.
///
/// THREADING: any thread may add; all is done on the main thread. BLOCKING: never; but in a process without
/// an event loop to come (no QCoreApplication), the work is done at once.
namespace SlicedWork
{
using Moment = std::chrono::steady_clock::time_point;

/// Does what can be done until the moment; true while something is left.
using Task = std::function<bool(Moment until)>;

void add(Task task);
} // namespace SlicedWork

} // namespace dozely
