// SPDX-License-Identifier: MIT
#include "hosts/agent/TestAlert.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"
#include "hosts/agent/AgentTexts.h"

#include <QTimeZone>

using namespace dozely;

TestAlert::TestAlert(Clock &clock) : m_clock(clock) {}

TestAlert::~TestAlert()
{
    withdraw();
}

void TestAlert::show()
{
    withdraw();
    m_alert = std::make_shared<NSUserNotification>();
    m_alert->setTitle(agentText("Test alert"));
    m_alert->setIdentifier("<test>");
    m_alert->setInformativeText(agentText("Test alert text"));
    m_alert->setActionButtonTitle(agentText("Test alert button"));
    const QDateTime end = m_clock.currentDate().addDuration(duration);
    m_alert->setUserInfo({{AlertKey::date, end.toTimeZone(QTimeZone::systemTimeZone())}});
    NSUserNotificationCenter::defaultUserNotificationCenter().deliverNotification(m_alert);
    m_time = std::make_unique<QObject>();
    m_clock.callAfter(duration, m_time.get(), [this] { withdraw(); });
}

void TestAlert::withdraw()
{
    m_time.reset();
    if (!m_alert)
        return;
    NSUserNotificationCenter::defaultUserNotificationCenter().removeDeliveredNotification(m_alert);
    m_alert.reset();
}
