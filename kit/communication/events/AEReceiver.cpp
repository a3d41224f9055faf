// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEReceiver_p.h"

#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/AbuseLog.h"

#include <QScopeGuard>
#include <QtEndian>

#include <algorithm>

namespace dozely
{

namespace
{
// Then those that wait are served before more are taken in: a sender must not fill our memory.
constexpr size_t longestQueue = 256;
// Of handlers that run an event loop, from which more events are served: each takes of the stack.
constexpr int deepestNesting = 8;

/// What handleAppleEvent answers: the result code in four bytes, big-endian, and the flattened reply.
QByteArray packed(OSStatus status, const AppleEvent &reply)
{
    QByteArray bytes;
    if (status == noErr)
        status = reply.flatten(&bytes);
    QByteArray code(sizeof status, Qt::Uninitialized);
    qToBigEndian(status, code.data());
    return code + bytes;
}

/// The event in a message, with who has sent it; absent when it is none.
std::optional<AppleEvent> received(const QByteArray &bytes)
{
    AppleEvent event;
    const auto peer = NSConnection::currentPeer();
    if (!peer || AEDesc::unflatten(bytes, &event) != noErr || event.descriptorType() != typeAppleEvent)
        return {};
    signAppleEvent(event, peer->processId, peer->userId);
    return event;
}
} // namespace

void signAppleEvent(AppleEvent &event, qint64 processId, qint64 userId)
{
    event.setAttribute(keySenderPIDAttr, AEDesc::of(typeSInt64, processId));
    event.setAttribute(keySenderEUIDAttr, AEDesc::of(typeSInt64, userId));
}

AppleEvent replyTo(const AppleEvent &event)
{
    AppleEvent reply;
    qint16 returnID = 0;
    qint32 transactionID = 0;
    AEGetAttributePtr(event, keyReturnIDAttr, typeSInt16, nullptr, &returnID, sizeof returnID, nullptr);
    AEGetAttributePtr(event, keyTransactionIDAttr, typeSInt32, nullptr, &transactionID, sizeof transactionID,
                      nullptr);
    AECreateAppleEvent(kCoreEventClass, kAEAnswer, AEDesc(), returnID, transactionID, &reply);
    return reply;
}

bool AEReceiver::isOwnUserOrSystem(quint32 userId)
{
    return userId == 0 || userId == NSProcessInfo::effectiveUserID() || RootFolder::owner() == userId;
}

AEReceiver::AEReceiver(SenderCheck maySend) : m_maySend(std::move(maySend)) {}
AEReceiver::~AEReceiver() = default;

AEReceiver &AEReceiver::shared(SenderCheck maySend)
{
    // Never destroyed: an event may still be sent while the process ends.
    static auto *const receiver = new AEReceiver(std::move(maySend));
    return *receiver;
}

bool AEReceiver::listen()
{
    const auto port = Port<AEProcesses>::current()->announce(ProcessSignature::current());
    if (!port)
        return false;
    try {
        m_connection = NSConnection::initWithReceivePortSendPort(port, nullptr);
    } catch (const NSException &) {
        return false; // no descriptor left to watch the port with
    }
    if (!m_connection)
        return false;
    m_connection->setRootObject(this);
    m_connection->setPeerCheck([this](const NSConnection::Peer &peer) { return m_maySend(peer.userId); });
    return true;
}

void AEReceiver::stop()
{
    Port<AEProcesses>::current()->whenLost({});
    if (const auto connection = std::exchange(m_connection, nullptr))
        connection->invalidate();
    m_queue.clear();
    m_wakeUp.reset();
}

bool AEReceiver::queue(const AppleEvent &event, qint16 priority)
{
    if (m_queue.size() >= longestQueue)
        serveQueue();
    if (m_queue.size() >= longestQueue)
        return false;
    const bool isUrgent = priority == kAEHighPriority;
    const auto place = isUrgent ? std::find_if(m_queue.begin(), m_queue.end(),
                                               [](const Waiting &waiting) { return !waiting.isUrgent; })
                                : m_queue.end();
    m_queue.insert(place, {event, isUrgent});
    if (!m_wakeUp)
        m_wakeUp = AEWakeUp::make([this] { serveQueue(); });
    if (m_wakeUp)
        m_wakeUp->wake();
    else
        serveQueue();
    return true;
}

// A handler may run an event loop, or send and wait, and so have this called again: the queue is looked at
// anew each time. What waits when handlers nest too deep is served further out, once the innermost one ends.
void AEReceiver::serveQueue()
{
    if (m_depth >= deepestNesting)
        return;
    ++m_depth;
    const auto left = qScopeGuard([this] { --m_depth; });
    while (!m_queue.empty()) {
        const Waiting next = m_queue.front();
        m_queue.pop_front();
        AppleEvent none;
        NSAppleEventManager::sharedAppleEventManager().dispatchRawAppleEventWithRawReply(next.event, &none);
    }
}

OSStatus AEReceiver::answer(const AppleEvent &event, qint16 priority, AppleEvent *reply)
{
    if (priority != kAEHighPriority)
        serveQueue();
    AppleEvent answer = replyTo(event);
    const OSErr status =
        NSAppleEventManager::sharedAppleEventManager().dispatchRawAppleEventWithRawReply(event, &answer);
    if (status == noErr)
        *reply = answer;
    return status;
}

QByteArray AEReceiver::handleAppleEvent(const QByteArray &event, int priority)
{
    AppleEvent reply;
    const auto taken = received(event);
    const OSStatus status =
        taken ? answer(*taken, static_cast<qint16>(priority), &reply) : OSStatus{errAECorruptData};
    return packed(status, reply);
}

void AEReceiver::postAppleEvent(const QByteArray &event, int priority)
{
    const auto taken = received(event);
    if (taken && !queue(*taken, static_cast<qint16>(priority)))
        AbuseLog::note(NSConnection::currentPeer()->userId, "Apple event dropped, 256 wait already");
}

} // namespace dozely
