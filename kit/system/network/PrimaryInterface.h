// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QByteArray>
#include <QList>

namespace dozely
{

/// Port: the network interface over which this machine reaches the world.
class DOZELYKIT_EXPORT PrimaryInterface
{
public:
    virtual ~PrimaryInterface() = default;

    /// The hardware addresses of the Ethernet controllers behind the default route: one, or one for each path
    /// where the route has several; empty when there is none.
    virtual QList<QByteArray> hardwareAddresses() = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<PrimaryInterface> &Port<PrimaryInterface>::current();

} // namespace dozely
