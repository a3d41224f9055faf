// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionInhibitor.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/power/SystemPower.h"

using namespace dozely;

namespace
{
bool inhibitsSleep(const QVariantMap &bundleInfo)
{
    const QVariant value = bundleInfo.value(InfoKey::inhibitsSleep);
    if (!value.isValid())
        return true;
    return value.typeId() == QMetaType::Bool ? value.toBool() : longIntegerValue(value) != 0;
}
} // namespace

std::shared_ptr<const void> ActionInhibitor::hold(const QVariantMap &bundleInfo)
{
    if (!inhibitsSleep(bundleInfo))
        return nullptr;
    std::shared_ptr<SystemPower::Inhibition> inhibition = m_inhibition.lock();
    if (!inhibition) {
        inhibition = Port<SystemPower>::current()->inhibitSleep(m_reason);
        m_inhibition = inhibition;
    }
    return inhibition;
}
