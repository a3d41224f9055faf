// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/NSAppleEventManager.h"

#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/communication/events/AEReceiver_p.h"
#include "DozelyKit/communication/events/AESender_p.h"
#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/StringFormat.h"
#include "DozelyKit/core/log/LogLabel.h"

#include <QCoreApplication>
#include <QHash>
#include <QMetaMethod>
#include <QPointer>

#include <algorithm>
#include <utility>

using namespace dozely;

using Descriptor = std::shared_ptr<NSAppleEventDescriptor>;

namespace
{
constexpr std::chrono::milliseconds firstRetryDelay = std::chrono::seconds(1);
constexpr std::chrono::milliseconds longestRetryDelay = std::chrono::minutes(1);

/// The invokable that takes an event and a reply; invalid when the object has none of that name.
QMetaMethod operationOf(const QObject *object, const QByteArray &selector)
{
    const QMetaObject *const meta = object->metaObject();
    const QMetaType descriptor = QMetaType::fromType<Descriptor>();
    for (int i = meta->methodCount() - 1; i >= 0; --i) {
        const QMetaMethod method = meta->method(i);
        if (method.name() == selector && method.parameterCount() == 2 &&
            method.parameterMetaType(0) == descriptor && method.parameterMetaType(1) == descriptor)
            return method;
    }
    return {};
}

/// Ends a handler's exception here; false when there was one.
template<class Call>
bool endsWell(const Call &call)
{
    QString raised;
    try {
        call();
        return true;
    } catch (const std::exception &exception) {
        raised = QString::fromUtf8(exception.what());
    } catch (...) {
        raised = QStringLiteral("something that is no exception");
    }
    NSLog("A handler of Apple events raised: %@", logLabel(raised));
    return false;
}

void leave()
{
    AESender::forgetStreams();
    AEReceiver::shared().stop();
}
} // namespace

struct NSAppleEventManager::Private {
    struct Handler {
        QPointer<QObject> object;
        QByteArray selector;
    };
    static quint64 key(AEEventClass eventClass, AEEventID eventID)
    {
        return quint64{eventClass} << 32 | eventID;
    }

    void keepListening()
    {
        Port<AEProcesses>::current()->whenLost([this] {
            AEReceiver::shared().letGo();
            listen();
        });
        listen();
    }

    void listen()
    {
        if (AEReceiver::shared().isListening() || AEReceiver::shared().listen() || isTrying)
            return;
        isTrying = true;
        const auto delay = std::exchange(retryDelay, std::min(retryDelay * 2, longestRetryDelay));
        Port<Clock>::current()->callAfter(delay, &AEReceiver::shared(), [this] {
            isTrying = false;
            listen();
        });
    }

    QHash<quint64, Handler> handlers;
    bool isTrying = false;
    std::chrono::milliseconds retryDelay = firstRetryDelay; ///< Before the next attempt.
};

NSAppleEventManager::NSAppleEventManager() : d(std::make_unique<Private>())
{
    // The files go with the process while there is still somebody to take them away.
    qAddPostRoutine(leave);
}

NSAppleEventManager::~NSAppleEventManager() = default;

NSAppleEventManager &NSAppleEventManager::sharedAppleEventManager()
{
    // Never destroyed: an event may still arrive while the process ends.
    static auto *const manager = new NSAppleEventManager;
    return *manager;
}

void NSAppleEventManager::setEventHandlerForEventClass(QObject *handler, const QByteArray &selector,
                                                       AEEventClass eventClass, AEEventID eventID)
{
    if (!handler)
        return removeEventHandlerForEventClass(eventClass, eventID);
    d->handlers.insert(Private::key(eventClass, eventID), {handler, selector});
    d->keepListening();
}

void NSAppleEventManager::removeEventHandlerForEventClass(AEEventClass eventClass, AEEventID eventID)
{
    d->handlers.remove(Private::key(eventClass, eventID));
}

bool NSAppleEventManager::isListening() const
{
    return AEReceiver::shared().isListening();
}

OSErr NSAppleEventManager::dispatchRawAppleEventWithRawReply(const AppleEvent &event, AppleEvent *reply)
{
    const auto eventDescriptor = NSAppleEventDescriptor::descriptorWithAEDesc(event);
    const auto key = Private::key(eventDescriptor->eventClass(), eventDescriptor->eventID());
    const Private::Handler handler = d->handlers.value(key);
    const QMetaMethod operation =
        handler.object ? operationOf(handler.object, handler.selector) : QMetaMethod();
    if (!operation.isValid())
        return errAEEventNotHandled;
    const auto replyDescriptor = NSAppleEventDescriptor::descriptorWithAEDesc(*reply);
    const bool isHandled = endsWell([&] {
        operation.invoke(handler.object, Qt::DirectConnection, Q_ARG(Descriptor, eventDescriptor),
                         Q_ARG(Descriptor, replyDescriptor));
    });
    *reply = replyDescriptor->aeDesc();
    return isHandled ? noErr : errAEEventFailed;
}
