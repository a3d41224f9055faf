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

bool isYesOrNo(const QVariant &value)
{
    return value.typeId() == QMetaType::Bool || value.typeId() == QMetaType::LongLong ||
           value.typeId() == QMetaType::Int || value.typeId() == QMetaType::QString;
}
} // namespace

std::optional<QString> ActionPlace::reasonAgainst(bool actsInUserAgent, const QVariantMap &bundleInfo)
{
    const QVariant said = bundleInfo.value(InfoKey::actsInUserAgent);
    if (said.isValid() && !isYesOrNo(said))
        return QString("its \"%1\" is neither true nor false").arg(InfoKey::actsInUserAgent);
    const auto key = actsInUserAgent ? InfoKey::userAgentModule : InfoKey::daemonModule;
    if (bundleInfo.value(key).toString().isEmpty())
        return QString("it names no \"%1\"").arg(key);
    if (actsInUserAgent && isTrue(bundleInfo.value(InfoKey::actsInDaemonOnly)))
        return QString("it acts in the daemon alone");
    return {};
}

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
