// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/MachineIdentity.h"

namespace dozely
{

/// The version that os-release tells (below the root folder), and the names that the host name service keeps.
class DOZELYKIT_AUTOTEST_EXPORT LinuxMachineIdentity : public MachineIdentity
{
public:
    QString systemVersion() override;
    QString computerName() override;
};

} // namespace dozely
