// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/LoopSignal.h"
#include "DozelyKit/system/power/SystemPower.h"

#include <QVariantList>

/// The fields of ZDRPowerManager. Made, they listen to the machine's power; destroyed, no longer.
struct ZDRPowerManagerFields {
    ZDRPowerManagerFields(std::shared_ptr<dozely::SystemPower> power, dozely::SystemPower::Listener listener)
        : root_port(std::move(power)), notifier(root_port->listen(std::move(listener)))
    {
    }

    std::shared_ptr<dozely::SystemPower> root_port; // what allows changes
    std::unique_ptr<dozely::SystemPower::Listening> notifier;
    std::unique_ptr<dozely::LoopSignal> termination; // hears the signal that ends the process
    std::shared_ptr<QVariantList> _events = std::make_shared<QVariantList>();
};
