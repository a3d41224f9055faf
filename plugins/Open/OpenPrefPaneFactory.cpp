// SPDX-License-Identifier: MIT
#include "plugins/Open/OpenPrefPaneFactory.h"

#include "plugins/Open/OpenPrefPanePlugIn.h"

std::unique_ptr<WDPlugIn> OpenPrefPaneFactory::make()
{
    return std::make_unique<OpenPrefPanePlugIn>();
}
