// SPDX-License-Identifier: MIT
#include "plugins/Message/MessageFactory.h"

#include "plugins/Message/MessageUserAgentPlugIn.h"

std::unique_ptr<WDPlugIn> MessageFactory::make()
{
    return std::make_unique<MessageUserAgentPlugIn>();
}
