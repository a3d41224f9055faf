// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/ZDRPowerManager.h"

#include <QVariantList>

struct ZDRPowerManager::Private {
    quint32 root_port = 0; // consent goes there
    quint32 notifier = 0;  // the registration, given back at the end
    std::shared_ptr<QVariantList> _events;
};

/// What tests need of the shared instance: its fields, and to see it go.
class ZDRPowerManagerAccess
{
public:
    static ZDRPowerManager::Private &fields(ZDRPowerManager &manager) { return *manager.d; }
    /// Lets go of the shared instance; the next use makes another one.
    DOZELYKIT_AUTOTEST_EXPORT static void releaseSharedInstance();
};
