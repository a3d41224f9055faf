// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AESender_p.h"

#include "DozelyKit/communication/events/AEKeptStreams_p.h"
#include "DozelyKit/communication/events/AEPause_p.h"
#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/communication/events/AEReceiver_p.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/communication/remoting/RemoteCall_p.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QCoreApplication>
#include <QThread>
#include <QtEndian>

#include <algorithm>

namespace dozely
{

using std::chrono::milliseconds;
using Process = AEProcesses::Process;
using Stream = std::shared_ptr<MessageStream>;

namespace
{
// Between attempts at a receiver that has no room; each is twice as long as the one before, up to the
// longest.
constexpr milliseconds firstPause(20);
constexpr milliseconds longestPause(200);

bool isMainThread()
{
    const QCoreApplication *const application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}

/// The process id in the event's address.
OSErr targetOf(const AppleEvent &event, qint32 *identifier)
{
    ProcessSerialNumber number;
    qsizetype size = 0;
    if (AEGetAttributePtr(event, keyAddressAttr, typeProcessSerialNumber, nullptr, &number, sizeof number,
                          &size) != noErr ||
        size != sizeof number)
        return errAEUnknownAddressType;
    *identifier = static_cast<qint32>(number.lowLongOfPSN);
    return number.highLongOfPSN == 0 && *identifier > 0 ? noErr : procNotFound;
}

bool maySendTo(quint32 userId)
{
    const quint32 user = NSProcessInfo::effectiveUserID();
    return user == 0 || user == userId || RootFolder::owner() == user;
}

bool isRunning(qint32 identifier)
{
    const auto running = Port<AEProcesses>::current()->processes();
    return std::any_of(running.begin(), running.end(),
                       [&](const Process &other) { return other.identifier == identifier; });
}

/// One event on its way to another process.
class Sending
{
public:
    Sending(qint32 target, milliseconds limit)
        : m_target(target), m_deadline(std::chrono::steady_clock::now() + limit)
    {
    }

    OSStatus run(const QByteArray &event, qint16 priority, AppleEvent *reply)
    {
        for (milliseconds pause = firstPause;; pause = std::min(2 * pause, longestPause)) {
            try {
                return attempt(event, priority, reply);
            } catch (const MessageStream::Refused &) {
                letGo(); // nothing has arrived there: the event may be sent again
                m_wasRefused = true;
            } catch (const MessageStream::NotHandedOver &) {
                letGo(); // the event goes with its stream: it must not arrive later
                return m_wasRefused ? sessTableErr : errAETimeout;
            } catch (const NSException &exception) {
                // A stream that still works is kept for all that the reply is late.
                const OSStatus status = codeOf(exception);
                if (m_stream && exception.name() != NSPortTimeoutException)
                    letGo();
                return status;
            }
            pauseServingStreams(std::min(pause, left()));
            if (left() == milliseconds(0))
                return sessTableErr;
        }
    }

private:
    OSStatus attempt(const QByteArray &event, qint16 priority, AppleEvent *reply)
    {
        if (const OSStatus status = open(); status != noErr)
            return status;
        const MessageStream::Request request{WireName::rootPath, WireName::objectInterface,
                                             reply ? "handleAppleEvent" : "postAppleEvent",
                                             QVariantList{event, static_cast<int>(priority)}};
        if (reply)
            return unpack(m_stream->callWithin(request, left()), reply);
        m_stream->post(request, left());
        return noErr;
    }

    milliseconds left() const
    {
        const auto rest = std::chrono::ceil<milliseconds>(m_deadline - std::chrono::steady_clock::now());
        return std::max(rest, milliseconds(0));
    }

    /// A stream that was used lately still leads to the process, without another look at who there is.
    OSStatus open()
    {
        if (isMainThread())
            m_stream = AEKeptStreams::ofMainThread().to(m_target);
        if (m_stream)
            return noErr;
        Process process;
        const auto port = Port<AEProcesses>::current()->portOf(m_target, &process);
        if (!port)
            return procNotFound;
        if (!maySendTo(process.userId))
            return errAEPrivilegeError;
        const Stream stream = MessageStream::open(*port, left());
        const auto peer = stream->peer();
        if (!peer || peer->processId != m_target || peer->userId != process.userId)
            return procNotFound; // another process has taken its place
        m_stream = stream;
        if (isMainThread())
            AEKeptStreams::ofMainThread().keep(m_target, stream);
        return noErr;
    }

    /// The stream closes with its last user. When this event was sent from a handler, that may be an event
    /// further out that waits on it: its receiver may be well, and what could not be handed over is then
    /// still written, up to the moment when that wait ends.
    void letGo()
    {
        if (isMainThread())
            AEKeptStreams::ofMainThread().forget(m_target, m_stream);
        m_stream.reset();
    }

    static OSStatus unpack(const MessageStream::Reply &answer, AppleEvent *reply)
    {
        if (!answer.errorName.isEmpty())
            return errAEEventFailed;
        const QByteArray bytes = answer.results.value(0).toByteArray();
        if (bytes.size() < static_cast<qsizetype>(sizeof(OSStatus)))
            return errAECorruptData;
        const auto status = qFromBigEndian<OSStatus>(bytes.constData());
        AppleEvent read;
        if (status == noErr && (AEDesc::unflatten(bytes.sliced(sizeof status), &read) != noErr ||
                                read.descriptorType() != typeAppleEvent))
            return errAECorruptData;
        if (status == noErr)
            *reply = read;
        return status;
    }

    OSStatus codeOf(const NSException &exception) const
    {
        if (exception.name() == NSPortTimeoutException)
            return errAETimeout;
        if (exception.name() != NSInvalidSendPortException)
            return memFullErr; // no descriptor left, or a message beyond the limit
        return m_stream || isRunning(m_target) ? connectionInvalid : procNotFound;
    }

    const qint32 m_target; ///< Its process id.
    std::chrono::steady_clock::time_point m_deadline;
    Stream m_stream; ///< Once there is one to the process itself.
    bool m_wasRefused = false;
};

OSStatus sendToSelf(AppleEvent event, AppleEvent *reply, qint16 priority)
{
    signAppleEvent(event, NSProcessInfo::processIdentifier(), NSProcessInfo::effectiveUserID());
    if (reply)
        return AEReceiver::shared().answer(event, priority, reply);
    return AEReceiver::shared().queue(event, priority) ? noErr : sessTableErr;
}
} // namespace

milliseconds AESender::limitOf(qint64 ticks)
{
    constexpr qint64 ticksPerSecond = 60;
    constexpr milliseconds never = std::chrono::hours(24 * 365 * 100);
    if (ticks == kAEDefaultTimeout)
        return std::chrono::minutes(1);
    if (ticks == kNoTimeOut || ticks >= never.count() / 1000 * ticksPerSecond)
        return never;
    return milliseconds((ticks * 1000 + ticksPerSecond - 1) / ticksPerSecond);
}

OSStatus AESender::send(const AppleEvent &event, AppleEvent *reply, qint16 priority, qint64 timeOutInTicks)
{
    qint32 target = 0;
    if (const OSErr error = targetOf(event, &target); error != noErr)
        return error;
    if (target == NSProcessInfo::processIdentifier() && isMainThread())
        return sendToSelf(event, reply, priority);
    QByteArray bytes;
    if (const OSErr error = event.flatten(&bytes); error != noErr)
        return error;
    return Sending(target, limitOf(timeOutInTicks)).run(bytes, priority, reply);
}

void AESender::forgetStreams()
{
    AEKeptStreams::ofMainThread().clear();
}

} // namespace dozely

OSStatus AESend(const AppleEvent *event, AppleEvent *reply, qint32 mode, qint16 priority,
                qint64 timeOutInTicks)
{
    constexpr qint32 replyBits = 0x03;
    const qint32 wanted = mode & replyBits;
    const bool isKnownMode = (wanted == kAENoReply || wanted == kAEWaitReply) &&
                             (mode & ~(replyBits | kAEAlwaysInteract | kAECanSwitchLayer)) == 0;
    if (!event)
        return paramErr;
    if (event->descriptorType() != typeAppleEvent)
        return errAENotAppleEvent;
    if (!isKnownMode)
        return errAEUnknownSendMode;
    const bool isWaiting = wanted == kAEWaitReply;
    if ((isWaiting && !reply) || (priority != kAENormalPriority && priority != kAEHighPriority) ||
        timeOutInTicks < kNoTimeOut)
        return paramErr;
    return dozely::AESender::send(*event, isWaiting ? reply : nullptr, priority, timeOutInTicks);
}
