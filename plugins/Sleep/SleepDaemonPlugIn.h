// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

/// What puts the machine to sleep.
class SleepDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    /// Asks for sleep and returns; the machine sleeps once everybody has consented.
    void actInDaemon() override;
};
