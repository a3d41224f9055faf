// SPDX-License-Identifier: MIT
#include "plugins/Script/ScriptPrefPaneFactory.h"

#include "plugins/Script/ScriptPrefPanePlugIn.h"

std::unique_ptr<WDPlugIn> ScriptPrefPaneFactory::make()
{
    return std::make_unique<ScriptPrefPanePlugIn>();
}
