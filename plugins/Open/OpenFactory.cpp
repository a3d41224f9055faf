// SPDX-License-Identifier: MIT
#include "plugins/Open/OpenFactory.h"

#include "plugins/Open/OpenUserAgentPlugIn.h"

std::unique_ptr<WDPlugIn> OpenFactory::make()
{
    return std::make_unique<OpenUserAgentPlugIn>();
}
