// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <functional>
#include <memory>

namespace dozely
{

/// Tells a process that something in the socket folder has changed, its own socket file perhaps, at most ten
/// times a second. Without a word of the kernel, tells nothing.
///
/// In a root process named "dozelyd" it also keeps the folder: makes it again when it is gone, and clears
/// away what was moved aside in it and what is no socket under the name of a listener.
///
/// THREADING: the main thread, with an event loop, from which `changed` is called. BLOCKING: for a few system
/// calls for each name that changed; a folder with more names is looked through a slice at a time.
class DOZELYKIT_AUTOTEST_EXPORT SocketFolderWatch
{
public:
    static std::unique_ptr<SocketFolderWatch> make(std::function<void()> changed);
    virtual ~SocketFolderWatch() = default;

    /// Makes sure that what now is the socket folder is watched.
    virtual void renew() = 0;
};

} // namespace dozely
