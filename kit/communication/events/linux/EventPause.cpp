// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEPause_p.h"
#include "DozelyKit/communication/remoting/linux/StreamLoop_p.h"

namespace dozely
{

void pauseServingStreams(std::chrono::milliseconds duration)
{
    const auto end = StreamLoop::Moment::clock::now() + duration;
    StreamLoop::ofThisThread().waitUntil([] { return false; }, [end] { return end; });
}

} // namespace dozely
