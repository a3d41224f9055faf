// SPDX-License-Identifier: MIT
#include "hosts/common/events/RequiredEvents.h"

#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <algorithm>

namespace
{
/// What is no token is dropped: it goes into the environment, and to compositor and window manager.
QString tokenIn(const NSAppleEventDescriptor &event)
{
    constexpr qsizetype longest = 512;
    const auto parameter = event.paramDescriptorForKeyword(RequiredEvents::startToken);
    const QString token = parameter ? parameter->stringValue() : QString();
    const bool isToken = token.size() <= longest && std::all_of(token.begin(), token.end(), [](QChar each) {
                             return each > u' ' && each <= u'~';
                         });
    return isToken ? token : QString();
}
} // namespace

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

void RequiredEvents::handleOpenApplication(const std::shared_ptr<NSAppleEventDescriptor> &event,
                                           const std::shared_ptr<NSAppleEventDescriptor> &)
{
    Q_EMIT opened(tokenIn(*event));
}
