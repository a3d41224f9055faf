// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/OccurrenceOrder_p.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/WDPlugIn.h"

namespace dozely
{

NSNotification OccurrenceOrder::make(QLatin1StringView name, QLatin1StringView sender, const WDPlugIn &plugIn,
                                     Parameters parameters)
{
    QVariantMap userInfo;
    if (parameters != Parameters::LeftOut) {
        const auto stored = plugIn.parameters();
        if (!stored && parameters == Parameters::Required)
            throw NSException(NSInvalidArgumentException, name + " needs the parameters of its plug-in.");
        userInfo[OrderKey::parameters] = stored ? *stored : QVariantMap();
    }
    userInfo[OrderKey::date] = plugIn.calendarDate();
    const auto bundle = plugIn.bundle();
    if (!bundle)
        throw NSException(NSInvalidArgumentException, name + " needs the bundle of its plug-in.");
    userInfo[OrderKey::bundlePath] = bundle->bundlePath();
    return NSNotification(name, QString(sender), userInfo);
}

} // namespace dozely
