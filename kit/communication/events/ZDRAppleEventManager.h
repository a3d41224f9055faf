// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/ZDRAppleEvent.h"

#include <QObject>
#include <QVariantMap>

struct ZDRAppleEventManagerPrivate;

/// The process's one place for Apple events: sends them, and keeps handlers by event class and event ID.
///
/// The table of handlers holds the address of each handler as a number, not the handler itself, and an
/// incoming event is sent to that number: `selector` is called where a number answers it ("description",
/// "stringValue", ...), and nothing happens otherwise. So no handler is reached here. A host that wants its
/// own object called registers it with NSAppleEventManager (communication/events/NSAppleEventManager.h), for
/// the same pair after it was registered here, if at all: there the latest wins.
///
/// THREADING: the main thread; sending from any.
class DOZELYKIT_EXPORT ZDRAppleEventManager : public QObject
{
    Q_OBJECT
public:
    /// The shared manager, made at the first call and then kept to the end of the process.
    static std::shared_ptr<ZDRAppleEventManager> sharedInstance();

    /// Makes the shared manager, for the caller to keep; null when there is one already. The class has no
    /// `+initialize` that would make one before: the first call of init() or sharedInstance() takes its
    /// place.
    static std::shared_ptr<ZDRAppleEventManager> init();

    ~ZDRAppleEventManager() override;

    /// Adds a handler for the pair, which several may share, or gives one that is there another selector.
    /// From then on this process listens for events of the pair. Entries are never removed; the handler is
    /// not owned, nor even used.
    void setObserverForEventClass(const void *observer, const QByteArray &selector, AEEventClass eventClass,
                                  AEEventID eventID);

    /// Sends the event in its bare form, with the default time-out of a minute, and waits for the reply or
    /// not. An empty record when no reply was asked for; null on failure, with one line in the log.
    /// BLOCKING: as AESend (communication/events/AEManager.h).
    std::shared_ptr<ZDRAppleEvent> sendAppleEvent(const std::shared_ptr<ZDRAppleEvent> &event,
                                                  bool waitForReply);

    /// The same with a time-out in ticks, sixtieths of a second; -1 is the default, -2 none.
    std::shared_ptr<ZDRAppleEvent> sendAppleEvent(const std::shared_ptr<ZDRAppleEvent> &event, qint64 timeout,
                                                  bool waitForReply);

    /// Called by the platform's manager for every pair that was registered.
    Q_INVOKABLE void dispatchAppleEventWithReply(const std::shared_ptr<NSAppleEventDescriptor> &event,
                                                 const std::shared_ptr<NSAppleEventDescriptor> &reply);
    void dispatchZDRAppleEventWithZDRReply(const std::shared_ptr<ZDRAppleEvent> &event,
                                           const std::shared_ptr<ZDRAppleEvent> &reply);

    /// A copy of the handler table: event class to event ID, both as "'abcd'", to the handler's address in
    /// decimal, to its selector.
    QVariantMap appleEventClasses() const;

private:
    ZDRAppleEventManager();
    friend struct ZDRAppleEventManagerPrivate;
    std::unique_ptr<ZDRAppleEventManagerPrivate> d;
};
