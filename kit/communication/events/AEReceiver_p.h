// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEDesc.h"
#include "DozelyKit/communication/events/AEWakeUp_p.h"
#include "DozelyKit/communication/remoting/NSConnection.h"

#include <QObject>

#include <deque>
#include <functional>

namespace dozely
{

/// The receiving end of Apple events: what a process that listens vends, and its queue of events that want no
/// reply. docs/apple-events.md names the two messages.
///
/// THREADING: the main thread.
class DOZELYKIT_AUTOTEST_EXPORT AEReceiver : public QObject
{
    Q_OBJECT
public:
    /// Who may send, asked for every stream with the user at its other end.
    using SenderCheck = std::function<bool(quint32 userId)>;

    /// This process's user, root, and the owner of a relocated root folder.
    static bool isOwnUserOrSystem(quint32 userId);

    explicit AEReceiver(SenderCheck maySend = isOwnUserOrSystem);
    ~AEReceiver() override;

    /// Announces the process and listens; false when that cannot be had now.
    bool listen();
    bool isListening() const { return m_connection != nullptr; }
    void stop();
    /// Gives up the place at which the process was found, but none of the streams that are open.
    void letGo() { m_connection.reset(); }

    /// Queues an event that wants no reply; one of high priority before the others. Where the queue is full,
    /// those that wait are served first; false when that cannot be, because as many handlers nest as may.
    bool queue(const AppleEvent &event, qint16 priority);

    /// Dispatches an event that wants a reply, after those that were queued before, unless it is urgent or
    /// they have to wait until a handler ends.
    OSStatus answer(const AppleEvent &event, qint16 priority, AppleEvent *reply);

    /// The receiver of this process, made by the first call with the check given there.
    static AEReceiver &shared(SenderCheck maySend = isOwnUserOrSystem);

    // ---- called through the connection layer

    NS_REMOTE Q_INVOKABLE QByteArray handleAppleEvent(const QByteArray &event, int priority);
    NS_REMOTE Q_INVOKABLE void postAppleEvent(const QByteArray &event, int priority);

private:
    struct Waiting {
        AppleEvent event;
        bool isUrgent;
    };
    void serveQueue();

    const SenderCheck m_maySend;
    std::shared_ptr<NSConnection> m_connection;
    std::unique_ptr<AEWakeUp> m_wakeUp;
    std::deque<Waiting> m_queue;
    int m_depth = 0; ///< Of handlers of queued events within each other.
};

/// An event as the sender's process and user made it, by the word of the kernel.
void signAppleEvent(AppleEvent &event, qint64 processId, qint64 userId);

/// The reply that a handler finds: it answers `event`.
AppleEvent replyTo(const AppleEvent &event);

} // namespace dozely
