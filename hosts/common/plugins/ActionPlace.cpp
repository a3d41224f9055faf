// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionPlace.h"

#include "DozelyKit/core/foundation/IntegerValue.h"

namespace
{
const QString parameterKey = "Acts In User Agent";
const QString bundleKey = "WDActsInUserAgent";

bool isTrue(const QVariant &value)
{
    return value.typeId() == QMetaType::Bool ? value.toBool() : integerValue(value) == 1;
}
} // namespace

bool ActionPlace::isSaidBy(const QVariantMap &parameters)
{
    return parameters.contains(parameterKey);
}

bool ActionPlace::actsInUserAgent(const QVariantMap &parameters, const QVariantMap &bundleInfo)
{
    if (isSaidBy(parameters))
        return isTrue(parameters.value(parameterKey));
    if (bundleInfo.contains(bundleKey))
        return isTrue(bundleInfo.value(bundleKey));
    return bundleInfo.value("WDDaemonModule").toString().isEmpty();
}
