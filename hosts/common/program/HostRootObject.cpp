// SPDX-License-Identifier: MIT
#include "hosts/common/program/HostRootObject.h"

QObject *HostRootObject::communicationCenter()
{
    return WDCommunicationCenter::sharedInstance().get();
}
