// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionPlace.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"

using namespace dozely;

namespace
{
bool isTrue(const QVariant &value)
{
    return value.typeId() == QMetaType::Bool ? value.toBool() : longIntegerValue(value) == 1;
}
} // namespace

bool ActionPlace::isSaidBy(const QVariantMap &parameters)
{
    return parameters.contains(ParameterKey::actsInUserAgent);
}

bool ActionPlace::actsInUserAgent(const QVariantMap &parameters, const QVariantMap &bundleInfo)
{
    if (isSaidBy(parameters))
        return isTrue(parameters.value(ParameterKey::actsInUserAgent));
    if (bundleInfo.contains(InfoKey::actsInUserAgent))
        return isTrue(bundleInfo.value(InfoKey::actsInUserAgent));
    return bundleInfo.value(InfoKey::daemonModule).toString().isEmpty();
}
