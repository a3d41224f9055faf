// SPDX-License-Identifier: MIT
#include "plugins/common/session/SessionAction.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"

using namespace dozely;

void SessionAction::actInUserAgent()
{
    if (m_isActing)
        return;
    m_isActing = true;
    m_failure.clear();
    begin();
}

void SessionAction::end()
{
    if (!std::exchange(m_isActing, false))
        return;
    Q_EMIT actionDidFinish();
}

void SessionAction::fail(const QString &why)
{
    const QString clause = logLabel(why, wholeText);
    if (m_failure.isEmpty())
        m_failure = clause;
    ZDRLog("%@: %@.", m_name, clause);
    end();
}

void SessionAction::userNotificationCenterDidActivateNotification(NSUserNotificationCenter *,
                                                                  const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
