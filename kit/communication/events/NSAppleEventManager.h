// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEDesc.h"

#include <memory>

namespace dozely
{
class AEReceiver;
} // namespace dozely

class QObject;

/// Receives Apple events and calls the one handler that is registered for each pair of event class and event
/// ID.
///
/// With its first handler a process begins to listen: it can be found under its signature, and its own user,
/// root and, below a relocated root folder, that folder's owner can send to it. Where that fails, it is tried
/// again after a second, then after two, and so on up to a minute.
///
/// A handler is an object with an invokable operation of that name, which answers by putting parameters into
/// the reply:
///
///     Q_INVOKABLE void greet(const std::shared_ptr<NSAppleEventDescriptor> &event,
///                            const std::shared_ptr<NSAppleEventDescriptor> &reply);
///
/// What it raises ends with the event: one line on the console, and errAEEventFailed for the sender. Handlers
/// of events that want no reply nest eight deep where each runs an event loop; then such events wait.
///
/// THREADING: the main thread, whose event loop serves events, as does AESend while it waits there.
class DOZELYKIT_EXPORT NSAppleEventManager
{
public:
    static NSAppleEventManager &sharedAppleEventManager();

    /// Registers the handler for the pair, in the place of an earlier one. Not owned; forgotten when it is
    /// destroyed.
    void setEventHandlerForEventClass(QObject *handler, const QByteArray &selector, AEEventClass eventClass,
                                      AEEventID eventID);
    void removeEventHandlerForEventClass(AEEventClass eventClass, AEEventID eventID);

    /// Whether other processes can find this one now.
    bool isListening() const;

    /// Calls the pair's handler as for an incoming event. `reply` is what the handler finds as its reply, and
    /// afterwards what it made of it. errAEEventNotHandled when there is no handler, errAEEventFailed when it
    /// raised.
    OSErr dispatchRawAppleEventWithRawReply(const AppleEvent &event, AppleEvent *reply);

private:
    friend class dozely::AEReceiver;
    NSAppleEventManager();
    ~NSAppleEventManager();
    struct Private;
    std::unique_ptr<Private> d;
};
