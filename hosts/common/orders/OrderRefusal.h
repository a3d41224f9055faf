// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSException.h"

#include <optional>

/// What the receiver of an order raises when it does not obey: the sender's post raises it again, by name and
/// reason.
class OrderRefusal : public NSException
{
public:
    enum class Kind {
        NotPermitted, ///< The sender may not give this order.
        Impossible,   ///< It cannot be obeyed, or not now.
    };

    /// `why` goes on after "refused: ", in the words of the log.
    OrderRefusal(Kind kind, const QString &why);

    /// The kind of refusal that a post raised; absent when it is none.
    static std::optional<Kind> kindOf(const NSException &exception);
};
