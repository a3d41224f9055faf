// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Pipe.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

dozely::Result<dozely::Pipe> dozely::Pipe::make()
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return Error{qt_error_string(errno), "pipe2"};
    return Pipe{Descriptor(ends[0]), Descriptor(ends[1])};
}
