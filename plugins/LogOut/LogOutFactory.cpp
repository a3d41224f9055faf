// SPDX-License-Identifier: MIT
#include "plugins/LogOut/LogOutFactory.h"

#include "plugins/LogOut/LogOutUserAgentPlugIn.h"

std::unique_ptr<WDPlugIn> LogOutFactory::make()
{
    return std::make_unique<LogOutUserAgentPlugIn>();
}
