// SPDX-License-Identifier: MIT
#include "plugins/LockScreen/LockScreenFactory.h"

#include "plugins/LockScreen/LockScreenUserAgentPlugIn.h"

std::unique_ptr<WDPlugIn> LockScreenFactory::make()
{
    return std::make_unique<LockScreenUserAgentPlugIn>();
}
