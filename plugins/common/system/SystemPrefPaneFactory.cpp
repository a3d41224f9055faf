// SPDX-License-Identifier: MIT
#include "plugins/common/system/SystemPrefPaneFactory.h"

#include "plugins/common/system/SystemPrefPanePlugIn.h"

std::unique_ptr<WDPlugIn> SystemPrefPaneFactory::make()
{
    return std::make_unique<SystemPrefPanePlugIn>();
}
