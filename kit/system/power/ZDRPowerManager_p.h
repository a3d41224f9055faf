// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/SystemPower.h"

#include <QVariantList>

/// The fields of ZDRPowerManager. Made, they listen to the machine's power; destroyed, no longer.
struct ZDRPowerManagerFields {
    ZDRPowerManagerFields(std::shared_ptr<SystemPower> power, SystemPower::Listener listener)
        : root_port(std::move(power)), notifier(root_port->listen(std::move(listener)))
    {
    }

    std::shared_ptr<SystemPower> root_port; // what allows changes
    std::unique_ptr<SystemPower::Listening> notifier;
    std::shared_ptr<QVariantList> _events = std::make_shared<QVariantList>();
};
