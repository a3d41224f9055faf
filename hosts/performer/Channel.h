// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/program/HostRootObject.h"

/// Lets plug-ins in this process post as they could in the host that it works for. The host's socket folder
/// stays as it is: this process publishes nothing there, and leaves nothing.
class Channel
{
public:
    /// Before any plug-in is loaded.
    Channel();
    ~Channel();
    Channel(const Channel &) = delete;
    Channel &operator=(const Channel &) = delete;

private:
    HostRootObject m_rootObject;
};
