// SPDX-License-Identifier: MIT
#include "hosts/performer/Channel.h"

#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "hosts/common/events/EventScriptFunction.h"

Channel::Channel()
{
    ZDRUnixSocketPort::workForAnother();
    EventScriptFunction::registerFunction();
    WDCommunicationCenter::sharedInstance()->setObserver(&m_rootObject);
}

Channel::~Channel()
{
    WDCommunicationCenter::sharedInstance()->setObserver(nullptr);
}
