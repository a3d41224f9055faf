// SPDX-License-Identifier: MIT
#include "hosts/common/events/RequiredEvents.h"

#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/core/log/ZDRLog.h"

RequiredEvents::RequiredEvents()
{
    auto &manager = NSAppleEventManager::sharedAppleEventManager();
    manager.setEventHandlerForEventClass(this, "handleQuit", kCoreEventClass, kAEQuitApplication);
    manager.setEventHandlerForEventClass(this, "handleOpenApplication", kCoreEventClass, kAEOpenApplication);
}

RequiredEvents::~RequiredEvents() = default;

void RequiredEvents::handleQuit(const std::shared_ptr<NSAppleEventDescriptor> &event,
                                const std::shared_ptr<NSAppleEventDescriptor> &)
{
    const auto sender = event->attributeDescriptorForKeyword(keySenderPIDAttr);
    ZDRLog("Process %d asks this one to quit", sender ? sender->int32Value() : 0);
    Q_EMIT quit();
}

void RequiredEvents::handleOpenApplication(const std::shared_ptr<NSAppleEventDescriptor> &,
                                           const std::shared_ptr<NSAppleEventDescriptor> &)
{
    Q_EMIT opened();
}
