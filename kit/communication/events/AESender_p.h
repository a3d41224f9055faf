// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEManager.h"

#include <chrono>

namespace dozely
{

/// The sending end of Apple events. The main thread keeps its streams to other processes for half a minute
/// after each use, at most 16; other threads open one for each event.
namespace AESender
{
OSStatus send(const AppleEvent &event, AppleEvent *reply, qint16 priority, qint64 timeOutInTicks);

/// How long a time-out in ticks is, rounded up; a hundred years when there is none. Not for negative numbers
/// that mean nothing.
DOZELYKIT_AUTOTEST_EXPORT std::chrono::milliseconds limitOf(qint64 ticks);

/// Closes the streams that are kept.
DOZELYKIT_AUTOTEST_EXPORT void forgetStreams();
} // namespace AESender

} // namespace dozely
