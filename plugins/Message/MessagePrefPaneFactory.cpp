// SPDX-License-Identifier: MIT
#include "plugins/Message/MessagePrefPaneFactory.h"

#include "plugins/Message/MessagePrefPanePlugIn.h"

std::unique_ptr<WDPlugIn> MessagePrefPaneFactory::make()
{
    return std::make_unique<MessagePrefPanePlugIn>();
}
