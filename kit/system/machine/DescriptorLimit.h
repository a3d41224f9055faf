// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

namespace dozely
{

/// How many descriptors this process may have open.
namespace DescriptorLimit
{
/// Raises the limit as far as the machine lets this process. A limit that cannot be raised stays as it is.
/// Programs that are started with ChildProgram get the limit that was there before: one that uses select()
/// would write beyond its set with a larger one.
///
/// THREADING: any thread; the head of main is the place for it.
DOZELYKIT_EXPORT void raise();
} // namespace DescriptorLimit

} // namespace dozely
