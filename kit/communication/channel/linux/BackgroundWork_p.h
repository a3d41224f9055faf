// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace dozely
{

/// Work whose size a stranger decides, done in a thread of its own, a millisecond in five and behind all
/// others: whatever its size, it keeps nobody waiting. A single call of the kernel may take long as well: the
/// removal of an emptied folder that held 200,000 files stood for 150 ms. Several pieces of work take turns.
/// Without work there is no thread.
///
/// THREADING: any thread may add. BLOCKING: never; but where no thread can be made, and in a process without
/// an event loop to come (no QCoreApplication), which may end at any time, the work is done at once.
namespace BackgroundWork
{
using Moment = std::chrono::steady_clock::time_point;

/// Does what can be done until the moment; true while something is left. Must not throw.
using Task = std::function<bool(Moment until)>;

void add(Task task);
} // namespace BackgroundWork

} // namespace dozely
