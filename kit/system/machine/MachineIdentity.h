// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QString>

namespace dozely
{

/// Port: what the machine calls itself and the system that it runs.
class DOZELYKIT_EXPORT MachineIdentity
{
public:
    virtual ~MachineIdentity() = default;

    /// The version of the operating system; null when it tells none.
    virtual QString systemVersion() = 0;

    /// The name that a person gave the machine, else its host name. Blocks for at most two seconds.
    virtual QString computerName() = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<MachineIdentity> &Port<MachineIdentity>::current();

} // namespace dozely
