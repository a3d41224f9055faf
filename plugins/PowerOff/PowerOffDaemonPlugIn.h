// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

/// What switches the machine off.
class PowerOffDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    /// Asks for the end and returns; the machine is off once everybody has consented.
    void actInDaemon() override;
};
