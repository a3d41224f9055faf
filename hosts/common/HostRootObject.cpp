// SPDX-License-Identifier: MIT
#include "hosts/common/HostRootObject.h"

QObject *HostRootObject::communicationCenter()
{
    return WDCommunicationCenter::sharedInstance().get();
}
