// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace dozely
{

/// Waits so long. What comes in on the streams of this thread is served meanwhile, and nothing else is.
void pauseServingStreams(std::chrono::milliseconds duration);

} // namespace dozely
