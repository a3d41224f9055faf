// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandPrefPaneFactory.h"

#include "plugins/Command/CommandPrefPanePlugIn.h"

std::unique_ptr<WDPlugIn> CommandPrefPaneFactory::make()
{
    return std::make_unique<CommandPrefPanePlugIn>();
}
