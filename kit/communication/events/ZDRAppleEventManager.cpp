// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/ZDRAppleEventManager.h"

#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ZDRAppleEventManager_p.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <QCoreApplication>
#include <QMetaMethod>
#include <QThread>

#include <mutex>

using namespace dozely;

namespace
{
constexpr qint32 waitingMode = kAEWaitReply | kAECanInteract | kAECanSwitchLayer; // 99
constexpr qint32 postingMode = kAENoReply | kAECanInteract | kAECanSwitchLayer;   // 97

// The shared manager. One that sharedInstance makes belongs to the class and is never destroyed; one that
// init makes belongs to the caller.
struct Shared {
    std::recursive_mutex creation;
    std::weak_ptr<ZDRAppleEventManager> manager;
    std::shared_ptr<ZDRAppleEventManager> owned;
};

Shared &shared()
{
    static auto &state = *new Shared;
    return state;
}

QMetaMethod operationOf(const QByteArray &selector)
{
    const QMetaObject &number = AddressNumber::staticMetaObject;
    for (int i = number.methodOffset(); i < number.methodCount(); ++i) {
        if (number.method(i).name() == selector)
            return number.method(i);
    }
    return {};
}
} // namespace

// ---- the number

AddressNumber::~AddressNumber() = default;

bool AddressNumber::respondsToSelector(const QByteArray &selector) const
{
    return operationOf(selector).isValid();
}

void AddressNumber::performSelector(const QByteArray &selector)
{
    operationOf(selector).invoke(this, Qt::DirectConnection);
}

// ---- the shared manager

ZDRAppleEventManager::ZDRAppleEventManager() : d(std::make_unique<ZDRAppleEventManagerPrivate>())
{
    if (const auto *application = QCoreApplication::instance())
        moveToThread(application->thread());
}

ZDRAppleEventManager::~ZDRAppleEventManager() = default;

std::shared_ptr<ZDRAppleEventManager> ZDRAppleEventManager::sharedInstance()
{
    const std::lock_guard guard(shared().creation);
    if (auto existing = shared().manager.lock())
        return existing;
    shared().owned = init();
    return shared().owned;
}

std::shared_ptr<ZDRAppleEventManager> ZDRAppleEventManager::init()
{
    const std::lock_guard guard(shared().creation);
    if (!shared().manager.expired())
        return nullptr;
    std::shared_ptr<ZDRAppleEventManager> manager(new ZDRAppleEventManager);
    shared().manager = manager;
    return manager;
}

// ---- handlers

void ZDRAppleEventManager::setObserverForEventClass(const void *observer, const QByteArray &selector,
                                                    AEEventClass eventClass, AEEventID eventID)
{
    const auto address = static_cast<quint64>(reinterpret_cast<quintptr>(observer));
    d->appleEventClasses[NSFileTypeForHFSTypeCode(eventClass)][NSFileTypeForHFSTypeCode(eventID)].insert(
        address, selector);
    NSAppleEventManager::sharedAppleEventManager().setEventHandlerForEventClass(
        this, "dispatchAppleEventWithReply", eventClass, eventID);
}

QVariantMap ZDRAppleEventManager::appleEventClasses() const
{
    QVariantMap classes;
    for (auto ids = d->appleEventClasses.cbegin(); ids != d->appleEventClasses.cend(); ++ids) {
        QVariantMap copy;
        for (auto pair = ids->cbegin(); pair != ids->cend(); ++pair) {
            QVariantMap handlers;
            for (auto handler = pair->cbegin(); handler != pair->cend(); ++handler)
                handlers.insert(QString::number(handler.key()), QString::fromUtf8(handler.value()));
            copy.insert(pair.key(), handlers);
        }
        classes.insert(ids.key(), copy);
    }
    return classes;
}

// ---- sending

std::shared_ptr<ZDRAppleEvent>
ZDRAppleEventManager::sendAppleEvent(const std::shared_ptr<ZDRAppleEvent> &event, bool waitForReply)
{
    return sendAppleEvent(event, kAEDefaultTimeout, waitForReply);
}

std::shared_ptr<ZDRAppleEvent>
ZDRAppleEventManager::sendAppleEvent(const std::shared_ptr<ZDRAppleEvent> &event, qint64 timeout,
                                     bool waitForReply)
{
    auto reply = ZDRAppleEvent::appleEvent();
    const OSStatus status = AESend(event ? event->carbonEvent() : nullptr, reply->carbonEvent(),
                                   waitForReply ? waitingMode : postingMode, kAENormalPriority, timeout);
    if (status != noErr) {
        ZDRLog("Could not send AppleEvent %@: %d (%d)",
               NSFileTypeForHFSTypeCode(event ? event->eventID() : 0), status, waitForReply ? 1 : 0);
        return nullptr;
    }
    return reply;
}

// ---- dispatch

void ZDRAppleEventManager::dispatchAppleEventWithReply(const std::shared_ptr<NSAppleEventDescriptor> &event,
                                                       const std::shared_ptr<NSAppleEventDescriptor> &reply)
{
    dispatchZDRAppleEventWithZDRReply(ZDRAppleEvent::appleEventWithAppleEventDescriptor(event),
                                      ZDRAppleEvent::appleEventWithAppleEventDescriptor(reply));
}

void ZDRAppleEventManager::dispatchZDRAppleEventWithZDRReply(const std::shared_ptr<ZDRAppleEvent> &event,
                                                             const std::shared_ptr<ZDRAppleEvent> &)
{
    const auto ids = d->appleEventClasses.constFind(NSFileTypeForHFSTypeCode(event->eventClass()));
    if (ids == d->appleEventClasses.cend()) {
        ZDRLog("No matching IDs");
        return;
    }
    const auto handlers = ids->value(NSFileTypeForHFSTypeCode(event->eventID()));
    if (handlers.isEmpty()) {
        ZDRLog("No matching Observers");
        return;
    }
    // To the number that keeps the address, never to the handler at that address: it may be long gone.
    for (auto handler = handlers.cbegin(); handler != handlers.cend(); ++handler) {
        const auto number = d->makeNumber(handler.key());
        if (number->respondsToSelector(handler.value()))
            number->performSelector(handler.value());
    }
}
