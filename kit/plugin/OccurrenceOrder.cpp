// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/OccurrenceOrder_p.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/plugin/WDPlugIn.h"

NSNotification OccurrenceOrder::make(const QString &name, const char16_t *sender, const WDPlugIn &plugIn,
                                     Parameters parameters)
{
    QVariantMap userInfo;
    if (parameters != Parameters::LeftOut) {
        const auto stored = plugIn.parameters();
        if (!stored && parameters == Parameters::Required)
            throw NSException(NSInvalidArgumentException, name + " needs the parameters of its plug-in.");
        userInfo["Schedule Parameters"] = stored ? *stored : QVariantMap();
    }
    userInfo["Schedule Date"] = plugIn.calendarDate();
    const auto bundle = plugIn.bundle();
    if (!bundle)
        throw NSException(NSInvalidArgumentException, name + " needs the bundle of its plug-in.");
    userInfo["Schedule Bundle Path"] = bundle->bundlePath();
    return NSNotification(name, QString::fromUtf16(sender), userInfo);
}
