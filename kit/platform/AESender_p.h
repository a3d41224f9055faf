// SPDX-License-Identifier: MIT
#pragma once

#include "platform/AEManager.h"

/// The sending end of Apple events. The main thread keeps its streams to other processes for half a minute
/// after each use, at most 16; other threads open one for each event.
namespace AESender
{
OSStatus send(const AppleEvent &event, AppleEvent *reply, qint16 priority, qint64 timeOutInTicks);

/// Closes the streams that are kept.
DOZELYKIT_AUTOTEST_EXPORT void forgetStreams();
} // namespace AESender
