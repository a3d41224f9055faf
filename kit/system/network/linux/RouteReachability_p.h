// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/Reachability.h"

namespace dozely
{

/// Reachability by the machine's own knowledge: the name's addresses as the resolver tells them, and the
/// kernel's routing table, which is asked where a packet would go without sending one.
///
/// A way over an interface that is up but has no link (an unplugged cable, a radio without network) is one
/// that is still to be set up. Linux has no notion of a way that a person must set up first: there is no way
/// until that is done.
class DOZELYKIT_AUTOTEST_EXPORT RouteReachability : public Reachability
{
public:
    std::optional<quint32> flagsOfHost(const QString &host) override;
};

} // namespace dozely
