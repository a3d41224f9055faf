// SPDX-License-Identifier: MIT
#include "hosts/agent/FailureNotices.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/StringFormat.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"

using namespace dozely;

namespace
{
/// In the agent's bundle: the text of the notice; "%@" stands for the reason.
constexpr char message[] = "Failure message %@";
} // namespace

void FailureNotices::show(const QString &schedule, const QString &reason)
{
    const auto bundle = NSBundle::bundleForClassNamed(userAgentControllerClass);
    auto &notice = m_notices[schedule];
    if (!notice)
        notice = std::make_shared<NSUserNotification>();
    notice->setTitle(logLabel(schedule));
    notice->setIdentifier(schedule + "|<failure>");
    // Strangers' texts: one line, and not the whole screen.
    const QString format = bundle ? bundle->localizedStringForKey(message) : QString("%@");
    notice->setInformativeText(stringWithFormat(format, {logLabel(reason)}));
    NSUserNotificationCenter::defaultUserNotificationCenter().deliverNotification(notice);
}
