// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/PrimaryInterface.h"

namespace dozely
{

/// The default route of the kernel's main table, that of IPv4 before that of IPv6, the smallest metric first;
/// the first one that leads over Ethernet counts, so that a tunnel does not hide the controller below it. The
/// address is the one that the controller was made with where it tells that, else the one that it uses.
class DOZELYKIT_AUTOTEST_EXPORT LinuxPrimaryInterface : public PrimaryInterface
{
public:
    QList<QByteArray> hardwareAddresses() override;
};

} // namespace dozely
