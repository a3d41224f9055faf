// SPDX-License-Identifier: MIT
#include "plugin/WDPlugIn.h"

#include "communication/WDCommunicationCenter.h"
#include "core/ZDRLog.h"
#include "platform/InterfaceFileLoader.h"
#include "platform/Platform.h"
#include "plugin/ScheduleEvent_p.h"

WDUserAgentControllerPlugInProtocol::~WDUserAgentControllerPlugInProtocol() = default;

WDUserAgentPlugIn::WDUserAgentPlugIn() = default;

WDUserAgentPlugIn::~WDUserAgentPlugIn() = default;

void WDUserAgentPlugIn::loadNib()
{
    const auto own = bundle();
    const QString name = own ? own->objectForInfoDictionaryKey("WDUserAgentNib").toString() : QString();
    const auto loader = Platform::current().interfaceFileLoader;
    if (!name.isEmpty() && loader)
        loader->loadNibNamed(name, *own, this);
}

void WDUserAgentPlugIn::actInDaemonNow()
{
    if (!calendarDate().isValid()) {
        ZDRLog("actInDaemonNow impossible");
        return;
    }
    WDCommunicationCenter::sharedInstance()->postNotificationToDaemon(ScheduleEvent::make(
        "DaemonMustActEvent", ScheduleEvent::toDaemon, *this, ScheduleEvent::Parameters::EmptyWhenMissing));
}

void WDUserAgentPlugIn::cancelEvent()
{
    if (!calendarDate().isValid()) {
        ZDRLog("cancelEvent impossible");
        return;
    }
    WDCommunicationCenter::sharedInstance()->postNotificationToDaemon(ScheduleEvent::make(
        "DaemonMustRemoveEvent", ScheduleEvent::toDaemon, *this, ScheduleEvent::Parameters::LeftOut));
}

void WDUserAgentPlugIn::actInUserAgent() {}

void WDUserAgentPlugIn::stopAction() {}
