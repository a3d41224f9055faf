// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/Result.h"

namespace dozely
{

/// A pipe whose ends no other program gets: they are closed in a process that becomes one.
struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;

    /// Makes one; the error, named after the system call, when there is no descriptor left.
    DOZELYKIT_EXPORT static Result<Pipe> make();
};

} // namespace dozely
