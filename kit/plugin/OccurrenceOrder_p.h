// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/NSNotification.h"

class WDPlugIn;

namespace dozely
{

/// The notifications by which daemon and agent hand one occurrence of a schedule to each other.
namespace OccurrenceOrder
{
/// What an order says about the parameters of a plug-in that has none.
enum class Parameters { EmptyWhenMissing, Required, LeftOut };

/// The order `name` (OrderName) of `sender` (OrderSender) for the occurrence that `plugIn`
/// handles: its parameters, its date, the path of its bundle. The plug-in must have a date. Raises
/// NSException (NSInvalidArgumentException) when it has no bundle, or no parameters where they are required.
DOZELYKIT_AUTOTEST_EXPORT NSNotification make(QLatin1StringView name, QLatin1StringView sender,
                                              const WDPlugIn &plugIn, Parameters parameters);
} // namespace OccurrenceOrder

} // namespace dozely
