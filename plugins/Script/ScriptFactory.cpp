// SPDX-License-Identifier: MIT
#include "plugins/Script/ScriptFactory.h"

#include "plugins/Script/ScriptUserAgentPlugIn.h"

std::unique_ptr<WDPlugIn> ScriptFactory::make()
{
    return std::make_unique<ScriptUserAgentPlugIn>();
}
