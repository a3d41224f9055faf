// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/OccurrenceOrder_p.h"
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"

using namespace dozely;

namespace
{
bool postToLoggedInUser(const NSNotification &order)
{
    const quint32 userId = zandorSoftwaresExtensions::loggedInUserID();
    return WDCommunicationCenter::sharedInstance()->postNotificationToAgentOfUser(order, userId);
}
} // namespace

WDDaemonPlugInProtocol::~WDDaemonPlugInProtocol() = default;

WDDaemonPlugIn::WDDaemonPlugIn() = default;

WDDaemonPlugIn::~WDDaemonPlugIn() = default;

// Exactly 1, while the configuration side takes any number but 0 for yes.
bool WDDaemonPlugIn::needsWakeUp() const
{
    return longIntegerParameter(ParameterKey::needsWakeUp) == 1;
}

bool WDDaemonPlugIn::needsStartup() const
{
    return longIntegerParameter(ParameterKey::needsStartup) == 1;
}

bool WDDaemonPlugIn::anticipateInUserAgentNow()
{
    if (calendarDate().isValid() &&
        postToLoggedInUser(OccurrenceOrder::make(OrderName::userAgentMustAnticipate, OrderSender::userAgent,
                                                 *this, OccurrenceOrder::Parameters::Required)))
        return true;
    ZDRLog("anticipateInUserAgentNow impossible");
    return false;
}

bool WDDaemonPlugIn::actInUserAgentNow()
{
    return calendarDate().isValid() &&
           postToLoggedInUser(OccurrenceOrder::make(OrderName::userAgentMustAct, OrderSender::userAgent,
                                                    *this, OccurrenceOrder::Parameters::EmptyWhenMissing));
}

void WDDaemonPlugIn::actInDaemon() {}

qint32 WDDaemonPlugIn::timeOut() const
{
    return -5;
}
