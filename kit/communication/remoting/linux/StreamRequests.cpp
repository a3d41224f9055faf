// SPDX-License-Identifier: MIT
//
// What a stream serves and sends; its life, and what it takes in, is in StreamState.cpp.
#include "DozelyKit/communication/remoting/RemoteCall_p.h"
#include "DozelyKit/communication/remoting/WireValues_p.h"
#include "DozelyKit/communication/remoting/linux/AcceptedStreams_p.h"
#include "DozelyKit/communication/remoting/linux/StreamState_p.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <QScopeGuard>
#include <QSysInfo>

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>

namespace dozely
{

using std::chrono::steady_clock;
using State = MessageStream::Private;

namespace
{
// The hello of clients that believe to talk to a bus; the name means nothing here.
constexpr const char *uniqueName = ":1.1";
constexpr const char *busInterface = "org.freedesktop.DBus";
constexpr const char *peerInterface = "org.freedesktop.DBus.Peer";
constexpr const char *failed = "org.freedesktop.DBus.Error.Failed";
constexpr size_t unreadReplies = 64;            // a peer that reads no replies is dropped
constexpr qsizetype longestUncounted = 4 << 10; // of the bytes that wait to leave

/// The text of an error as D-Bus can carry it, within the limit of a message: a reply that cannot be sent
/// would leave the caller waiting.
QString errorText(const QString &text)
{
    constexpr qsizetype longest = 64 << 10;
    QList<uint> characters = text.left(longest).toUcs4(); // with U+FFFD for half a surrogate pair
    for (uint &character : characters) {
        if (character == 0 || QChar::isNonCharacter(character))
            character = QChar::ReplacementCharacter;
    }
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()), characters.size());
}

[[noreturn]] void raiseDied()
{
    throw NSException(NSInvalidSendPortException, QStringLiteral("the connection died"));
}

/// An error for one that cannot be read.
Result<MessageStream::Reply> replyIn(const WireMessage &answer)
{
    auto results = WireValues::read(answer);
    if (answer.type == WireMessage::Type::Error)
        return MessageStream::Reply::error(answer.errorName,
                                           results ? results->value(0).toString() : QString());
    if (!results)
        return Error{QStringLiteral("the reply is too large or holds types that are not known")};
    return MessageStream::Reply{{}, {}, *std::move(results)};
}

bool isSame(const MessageStream::Request &a, const MessageStream::Request &b)
{
    return a.path == b.path && a.interface == b.interface && a.member == b.member && a.arguments.isEmpty() &&
           b.arguments.isEmpty();
}
} // namespace

// ---- serving

void State::handle(const WireMessage &message)
{
    switch (message.type) {
    case WireMessage::Type::Call:
        return serve(message);
    case WireMessage::Type::Return:
    case WireMessage::Type::Error:
        if (const auto awaited = m_awaited.find(message.replySerial); awaited != m_awaited.end())
            awaited->second = message;
        else
            tellAnswer(message);
        return;
    case WireMessage::Type::Signal: // nobody asked for any
        return;
    }
}

void State::tellAnswer(const WireMessage &answer)
{
    const auto asked = m_asked.extract(answer.replySerial);
    if (!asked)
        return;
    const auto reply = replyIn(answer);
    asked.mapped()(reply ? *reply : Reply::error(failed, reply.error().text));
}

void State::serve(const WireMessage &call)
{
    Request request{call.path, call.interface, call.member, {}};
    if (serveAsBus(request, call))
        return;
    endIdleTime(); // serving may take its time
    ++m_serving;
    const auto served = qScopeGuard([this] {
        --m_serving;
        beginIdleTime();
    });
    auto arguments = WireValues::read(call);
    if (!arguments)
        return reply(call, Reply::error(WireName::invalidArguments, arguments.error().text));
    request.arguments = *std::move(arguments);
    if (request.path != WireName::connectionPath)
        settle(); // what is served from here may take its time, and replies before it must not wait
    if (handler)
        reply(call, handled(request));
}

// What a message bus and every peer answer.
bool State::serveAsBus(const Request &request, const WireMessage &call)
{
    if (request.interface == busInterface && request.member == "Hello") {
        beginIdleTime();
        reply(call, {{}, {}, {QString::fromLatin1(uniqueName)}});
        return true;
    }
    if (request.interface != peerInterface)
        return false;
    if (!m_idleDeadline) // it has waited for its turn
        beginIdleTime();
    if (request.member == "Ping")
        reply(call, {});
    else if (request.member == "GetMachineId")
        reply(call, {{}, {}, {QString::fromLatin1(QSysInfo::machineUniqueId())}});
    else
        reply(call, Reply::error(WireName::unknownMethod, QStringLiteral("no such method of a peer")));
    return true;
}

// Whatever is thrown is the caller's to know, and leaves this loop as it was.
MessageStream::Reply State::handled(const Request &request)
{
    const StreamLoop::Serving serving(loop);
    try {
        return handler->serve(request);
    } catch (const std::exception &exception) {
        return Reply::error(WireName::exception, QString::fromUtf8(exception.what()));
    } catch (...) {
        return Reply::error(WireName::exception, QStringLiteral("something was thrown that is no exception"));
    }
}

void State::reply(const WireMessage &call, const Reply &reply)
{
    if (!isOpen() || !call.expectsReply)
        return;
    const auto answer = [&](const Reply &with) {
        WireMessage message;
        message.type = with.errorName.isEmpty() ? WireMessage::Type::Return : WireMessage::Type::Error;
        message.expectsReply = false;
        message.replySerial = call.serial;
        message.errorName = with.errorName;
        return send(message,
                    with.errorName.isEmpty() ? with.results : QVariantList{errorText(with.errorText)});
    };
    if (const auto sent = answer(reply); !sent)
        static_cast<void>(answer(Reply::error(failed, sent.error().text)));
    m_replyEnds.push_back(m_outputEnd);
    limitReplies();
}

// Replies wait for company, to leave together, and for a peer that is slow to read; neither without end.
void State::limitReplies()
{
    if (m_replyEnds.size() <= unreadReplies && m_output.size() <= longestUncounted)
        return;
    if (!flush())
        return;
    const bool isStranger = m_side == Side::Server && peer && !m_isTrusted;
    const qsizetype more = m_output.size() - m_outputHeld;
    bool isWithin = m_replyEnds.size() <= unreadReplies;
    if (isWithin && isStranger && more > 0) {
        isWithin = AcceptedStreams::ofThisThread().output().take(peer->userId, more);
        m_outputHeld += isWithin ? more : 0;
    }
    if (!isWithin)
        dropFor("connection closed whose replies nobody read");
}

// ---- sending

Result<void> State::send(WireMessage &message, const QVariantList &values)
{
    if (auto written = WireValues::write(values, &message); !written)
        return written;
    message.serial = ++m_lastSerial;
    if (message.serial == 0) // after four thousand million
        message.serial = ++m_lastSerial;
    const qsizetype before = m_output.size();
    message.appendTo(&m_output);
    const auto size = static_cast<quint64>(m_output.size() - before);
    if (size > m_largestToSend) {
        m_output.truncate(before);
        return Error{QStringLiteral("a message of more than %1 bytes").arg(m_largestToSend)};
    }
    m_outputEnd += size;
    return {};
}

bool State::flush()
{
    while (!m_output.isEmpty()) {
        const ssize_t sent = ::send(m_descriptor, m_output.constData(), static_cast<size_t>(m_output.size()),
                                    MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent < 0 && errno == EAGAIN)
            break;
        if (sent < 0) {
            if (m_side == Side::Client && !m_isAuthenticated)
                receive(); // a server that has no room says so before it closes
            drop();
            return false;
        }
        if (sent == m_output.size())
            m_output.clear();
        else
            m_output.remove(0, sent);
    }
    const quint64 left = m_outputEnd - static_cast<quint64>(m_output.size());
    while (!m_replyEnds.empty() && m_replyEnds.front() <= left)
        m_replyEnds.pop_front();
    if (m_outputHeld > m_output.size()) {
        AcceptedStreams::ofThisThread().output().give(peer->userId, m_outputHeld - m_output.size());
        m_outputHeld = m_output.size();
    }
    return true;
}

void State::settle()
{
    if (!isOpen() || !flush())
        return;
    const int reading = m_waitsForRoom ? 0 : POLLIN;
    const int writing = m_output.isEmpty() ? 0 : POLLOUT;
    try {
        loop.setEvents(m_source, static_cast<short>(reading | writing));
    } catch (const NSException &) {
        drop(); // the kernel has no room to watch it again, and nobody would look at it any more
    }
}

quint32 State::begin(const Request &request, bool expectsReply)
{
    if (m_wasRefused)
        throw Refused();
    if (!isOpen())
        throw NSException(NSInvalidSendPortException, QStringLiteral("the connection is closed"));
    WireMessage call;
    call.expectsReply = expectsReply;
    call.path = request.path;
    call.interface = request.interface;
    call.member = request.member;
    if (!call.isSound())
        throw NSException(
            NSInvalidArgumentException,
            QStringLiteral("%1 is no name of a request").arg(QString::fromUtf8(request.member)));
    if (const auto sent = send(call, request.arguments); !sent)
        throw NSException(NSInvalidArgumentException, sent.error().text);
    if (expectsReply)
        m_awaited.emplace(call.serial, std::nullopt);
    return call.serial;
}

std::optional<quint32> State::takeAnticipated(const Request &request)
{
    const auto anticipated = std::exchange(m_anticipated, std::nullopt);
    if (!anticipated)
        return {};
    if (isSame(anticipated->first, request))
        return anticipated->second;
    m_awaited.erase(anticipated->second);
    return {};
}

MessageStream::Reply State::finish(quint32 serial, StreamLoop::Moment deadline,
                                   std::optional<std::chrono::milliseconds> replyTimeout)
{
    const auto self = shared_from_this();
    if (toAnticipate) {
        const Request next = *std::exchange(toAnticipate, std::nullopt);
        m_anticipated.emplace(next, begin(next, true));
    }
    settle();

    // Two deadlines in turn: one until the request has left this process, one for the answer.
    bool handedOver = false;
    const auto done = [&] {
        if (!handedOver && isOpen()) {
            handedOver = hasHandedOver();
            if (handedOver && replyTimeout)
                deadline = steady_clock::now() + *replyTimeout;
        }
        return m_awaited.at(serial).has_value() || !isOpen();
    };
    loop.waitUntil(done, [&] { return deadline; });
    const auto answer = m_awaited.extract(serial).mapped();
    if (!answer) {
        if (m_wasRefused)
            throw Refused();
        if (!isOpen())
            raiseDied();
        if (!handedOver)
            throw NotHandedOver();
        throw NSException(NSPortTimeoutException, QStringLiteral("no reply in time"));
    }
    auto reply = replyIn(*answer);
    if (!reply)
        throw NSException(NSInvalidArgumentException, reply.error().text);
    return *std::move(reply);
}

void State::ask(const Request &request, Answered answered)
{
    const auto self = shared_from_this();
    const quint32 serial = begin(request, true);
    m_awaited.erase(serial);
    m_asked.emplace(serial, std::move(answered));
    settle();
}

void State::post(const Request &request, StreamLoop::Moment deadline)
{
    const auto self = shared_from_this();
    begin(request, false);
    settle();
    loop.waitUntil([&] { return !isOpen() || hasHandedOver(); }, [&] { return deadline; });
    if (m_wasRefused)
        throw Refused();
    if (!isOpen())
        raiseDied();
    if (!hasHandedOver())
        throw NotHandedOver();
}

} // namespace dozely
