// SPDX-License-Identifier: MIT
#include "plugins/common/system/BlockerNotice.h"

#include "DozelyKit/core/foundation/StringFormat.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/WDPlugIn.h"
#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"

using namespace dozely;

void BlockerNotice::show(WDUserAgentPlugIn &plugIn)
{
    withdraw();
    const QStringList blockers = Port<SystemPower>::current()->blockers(m_change);
    const auto bundle = plugIn.bundle();
    if (blockers.isEmpty() || !bundle)
        return;
    m_notice = std::make_shared<NSUserNotification>();
    m_notice->setTitle(plugIn.pluginName());
    m_notice->setIdentifier(plugIn.userNotification()->identifier() + "|<forbidden>");
    // The names are strangers' texts: one line, and not the whole screen.
    m_notice->setInformativeText(
        stringWithFormat(bundle->localizedStringForKey("Forbidden by %@"), {logLabel(blockers.join("; "))}));
    NSUserNotificationCenter::defaultUserNotificationCenter().deliverNotification(m_notice);
}

void BlockerNotice::withdraw()
{
    if (!m_notice)
        return;
    NSUserNotificationCenter::defaultUserNotificationCenter().removeDeliveredNotification(m_notice);
    m_notice.reset();
}
