// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/ZDRLog.h"
#include "DozelyKit/plugin/ScheduleEvent_p.h"
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"

namespace
{
bool postToLoggedInUser(const NSNotification &event)
{
    const quint32 userId = zandorSoftwaresExtensions::loggedInUserID();
    return WDCommunicationCenter::sharedInstance()->postNotificationToAgentOfUser(event, userId);
}
} // namespace

WDDaemonPlugInProtocol::~WDDaemonPlugInProtocol() = default;

WDDaemonPlugIn::WDDaemonPlugIn() = default;

WDDaemonPlugIn::~WDDaemonPlugIn() = default;

// Exactly 1, while the configuration side takes any number but 0 for yes.
bool WDDaemonPlugIn::needsWakeUp() const
{
    return integerParameter("Needs Wake Up") == 1;
}

bool WDDaemonPlugIn::needsStartup() const
{
    return integerParameter("Needs Startup") == 1;
}

bool WDDaemonPlugIn::anticipateInUserAgentNow()
{
    if (calendarDate().isValid() &&
        postToLoggedInUser(ScheduleEvent::make("UserAgentMustAnticipateEvent", ScheduleEvent::toUserAgent,
                                               *this, ScheduleEvent::Parameters::Required)))
        return true;
    ZDRLog("anticipateInUserAgentNow impossible");
    return false;
}

bool WDDaemonPlugIn::actInUserAgentNow()
{
    return calendarDate().isValid() &&
           postToLoggedInUser(ScheduleEvent::make("UserAgentMustActEvent", ScheduleEvent::toUserAgent, *this,
                                                  ScheduleEvent::Parameters::EmptyWhenMissing));
}

void WDDaemonPlugIn::actInDaemon() {}

qint32 WDDaemonPlugIn::timeOut() const
{
    return -5;
}
