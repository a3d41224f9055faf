// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

namespace dozely
{

/// What a process that mostly sleeps holds of the machine's memory while it does.
namespace IdleMemory
{
/// Gives back what is free of the heap. THREADING: any thread.
DOZELYKIT_EXPORT void giveHeapBack();

/// Gives back what is free of the heap, and the pages of programs, libraries and other files that were read
/// and not changed: those that are needed again are mapped again from the page cache, or read again from the
/// disk where the machine had no room for them meanwhile. Most of what a start touches nobody needs later,
/// and the kernel spares pages of code as long as somebody has them mapped.
///
/// What fails stays as it was. THREADING: any thread; others go on. BLOCKING: a millisecond or two.
DOZELYKIT_EXPORT void giveBack();
} // namespace IdleMemory

} // namespace dozely
