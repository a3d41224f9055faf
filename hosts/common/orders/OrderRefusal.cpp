// SPDX-License-Identifier: MIT
#include "hosts/common/orders/OrderRefusal.h"

namespace
{
// On the wire between hosts.
const QString notPermitted = "DozelyOrderNotPermittedException";
const QString impossible = "DozelyOrderRefusedException";
} // namespace

OrderRefusal::OrderRefusal(Kind kind, const QString &why)
    : NSException(kind == Kind::NotPermitted ? notPermitted : impossible, why)
{
}

std::optional<OrderRefusal::Kind> OrderRefusal::kindOf(const NSException &exception)
{
    if (exception.name() == notPermitted)
        return Kind::NotPermitted;
    if (exception.name() == impossible)
        return Kind::Impossible;
    return {};
}
