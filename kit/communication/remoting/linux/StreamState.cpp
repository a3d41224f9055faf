// SPDX-License-Identifier: MIT
//
// The life of a stream, and what it takes in; what it serves and sends is in StreamRequests.cpp.
#include "DozelyKit/communication/remoting/linux/StreamState_p.h"

#include "DozelyKit/communication/remoting/linux/AcceptedStreams_p.h"
#include "DozelyKit/communication/remoting/linux/PeerCredentials_p.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/log/AbuseLog.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace dozely
{

using std::chrono::steady_clock;
using State = MessageStream::Private;

namespace
{
constexpr std::chrono::seconds authenticationLimit(5); // a peer that connects and stays silent is dropped
constexpr std::chrono::seconds messageLimit(5);        // a stranger's large message, from its head to its end
constexpr quint64 largestOfTrusted = static_cast<quint64>(CborBlock::maximumSize) + (64 << 10);
constexpr quint64 largestOfStranger = 256 << 10;
constexpr qsizetype pieceOfTrusted = 16 << 10; // read at once, before the size of a message is known
constexpr qsizetype pieceOfStranger = 4 << 10;
constexpr quint32 root = 0;
constexpr const char *badMessage = "message too large or damaged, its connection closed";

/// Whether that peer can harm us without sending us anything.
bool mayHarm(const std::optional<NSConnection::Peer> &peer, quint32 us)
{
    return peer && (peer->userId == root || peer->userId == us);
}

constexpr quint64 largest(bool isTrusted)
{
    return isTrusted ? largestOfTrusted : largestOfStranger;
}
} // namespace

std::shared_ptr<State> State::make(int descriptor, Side side, const StreamOptions &options)
{
    std::shared_ptr<State> stream(new State(descriptor, side, options));
    const auto user = stream->peer ? std::optional<quint32>(stream->peer->userId) : std::nullopt;
    try {
        stream->m_source = stream->loop.add(descriptor, POLLIN, stream.get(), user);
    } catch (const NSException &) {
        return nullptr;
    }
    if (side == Side::Client) {
        stream->m_output = Handshake::opening(::geteuid());
        stream->m_outputEnd = static_cast<quint64>(stream->m_output.size());
        return stream;
    }
    stream->m_idleDeadline = steady_clock::now() + authenticationLimit;
    stream->armDeadline();
    if (user)
        AcceptedStreams::ofThisThread().add(stream.get(), *user);
    return stream;
}

State::Private(int descriptor, Side side, const StreamOptions &options)
    : loop(StreamLoop::ofThisThread()),
      peer(peerCredentials(descriptor)),
      m_side(side),
      m_idleLimit(options.idleLimit),
      m_isTrusted(options.trustsOwnUser && mayHarm(peer, ::geteuid())),
      m_isOwnProcess(peer && peer->processId == ::getpid()),
      m_largestToSend(largest(::geteuid() == root || (peer && peer->userId == ::geteuid()))),
      m_descriptor(descriptor),
      m_handshake(side == Side::Client
                      ? Handshake::ofClient()
                      : Handshake::ofServer(peer ? std::optional<quint32>(peer->userId) : std::nullopt))
{
}

State::~Private()
{
    close();
}

void State::close()
{
    if (!isOpen())
        return;
    loop.remove(m_source);
    ::close(std::exchange(m_descriptor, -1));
    releaseRoom();
    if (m_side == Side::Server && peer) {
        auto &accepted = AcceptedStreams::ofThisThread();
        accepted.remove(this, peer->userId);
        accepted.output().give(peer->userId, std::exchange(m_outputHeld, 0));
    }
    m_input.clear();
    m_output.clear();
    m_asked.clear();
}

void State::drop()
{
    if (!isOpen())
        return;
    close();
    loop.callFromLoop([weak = weak_from_this()] {
        if (const auto self = weak.lock(); self && self->handler)
            std::exchange(self->handler, nullptr)->streamClosed();
    });
}

void State::refuse()
{
    const QByteArray words = Handshake::refusal();
    ::send(m_descriptor, words.constData(), static_cast<size_t>(words.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    drop();
}

void State::dropFor(const char *reason)
{
    if (!m_isTrusted && m_side == Side::Server)
        AbuseLog::note(peer ? std::optional<quint32>(peer->userId) : std::nullopt, reason);
    drop();
}

// ---- limits

void State::beginIdleTime()
{
    if (m_side != Side::Server || m_serving > 0)
        return;
    m_idleDeadline = steady_clock::now() + m_idleLimit;
    armDeadline();
}

void State::endIdleTime()
{
    m_idleDeadline.reset();
}

// Deadlines are mostly put off before they come: the loop is told of earlier ones alone, and of the rest when
// it comes back.
void State::armDeadline()
{
    const auto next = nextDeadline();
    if (next && (!m_armed || *next < *m_armed)) {
        m_armed = next;
        loop.setDeadline(m_source, next);
    }
}

std::optional<StreamLoop::Moment> State::nextDeadline() const
{
    const bool hasBoth = m_idleDeadline && m_messageDeadline;
    return hasBoth ? std::min(m_idleDeadline, m_messageDeadline)
                   : (m_idleDeadline ? m_idleDeadline : m_messageDeadline);
}

void State::deadlinePassed()
{
    m_armed.reset();
    const auto now = steady_clock::now();
    const auto next = nextDeadline();
    if (!next || *next > now)
        armDeadline();
    else if (!m_isAuthenticated)
        dropFor("silent connection closed");
    else if (m_messageDeadline && *m_messageDeadline <= now)
        dropFor("message without end dropped");
    else
        drop();
}

// ---- taking in

bool State::ready()
{
    if (!isOpen())
        return false;
    const auto self = shared_from_this(); // serving may let go of us
    m_waitsForRoom = false;
    if (front() == Front::Incomplete)
        receive();
    if (!isOpen())
        return false;
    switch (front()) {
    case Front::Bad:
        dropFor(badMessage);
        return false;
    case Front::Incomplete:
        settle();
        return false;
    case Front::Whole:
        break;
    }
    m_messageDeadline.reset(); // it has come in time, whenever it is served
    if (WireMessage::isCall(m_input) && !loop.mayServe(m_source, m_isOwnProcess)) {
        endIdleTime(); // the peer has asked
        settle();
        return false;
    }
    const auto message = WireMessage::parse(takeMessage());
    if (!message) {
        dropFor(badMessage);
        return false;
    }
    if (front() != Front::Incomplete)
        serviceLater(); // from an event loop within the request, when it runs one
    handle(*message);
    if (!isOpen())
        return false;
    const bool hasMore = front() != Front::Incomplete;
    if (!hasMore) // else the next reply takes this one along
        settle();
    return hasMore && isOpen();
}

State::Front State::front() const
{
    if (!m_isAuthenticated || m_input.size() < WireMessage::headSize)
        return Front::Incomplete;
    const auto size = WireMessage::sizeOf(m_input);
    if (!size || *size > largest(m_isTrusted))
        return Front::Bad;
    return *size <= static_cast<quint64>(m_input.size()) ? Front::Whole : Front::Incomplete;
}

void State::receive()
{
    const qsizetype piece = m_isTrusted ? pieceOfTrusted : pieceOfStranger;
    const auto size = m_isAuthenticated && m_input.size() >= WireMessage::headSize
                          ? static_cast<qsizetype>(*WireMessage::sizeOf(m_input))
                          : 0;
    ssize_t got = 0;
    if (size <= piece) {
        std::array<char, pieceOfTrusted> bytes;
        got = ::recv(m_descriptor, bytes.data(), static_cast<size_t>(piece - m_input.size()), MSG_DONTWAIT);
        m_input.append(bytes.data(), std::max<ssize_t>(got, 0));
    } else if (makeRoom(size)) {
        const qsizetype before = m_input.size();
        m_input.resize(size);
        got = ::recv(m_descriptor, m_input.data() + before, static_cast<size_t>(size - before), MSG_DONTWAIT);
        const int error = errno;
        m_input.resize(before + std::max<ssize_t>(got, 0));
        errno = error;
    } else {
        return;
    }
    if (got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR))
        return drop();
    if (got > 0 && !m_isAuthenticated)
        goOnWithHandshake();
}

// What a stranger sends is held within limits, and a message that has begun has to come to an end.
bool State::makeRoom(qsizetype size)
{
    if (m_roomTaken > 0 || m_isTrusted || m_side == Side::Client)
        return true;
    if (!peer || !AcceptedStreams::ofThisThread().takeInput(this, peer->userId, size)) {
        m_waitsForRoom = true;
        return false;
    }
    m_roomTaken = size;
    m_messageDeadline = steady_clock::now() + messageLimit;
    armDeadline();
    return true;
}

void State::releaseRoom()
{
    if (m_roomTaken == 0)
        return;
    AcceptedStreams::ofThisThread().giveInput(peer->userId, std::exchange(m_roomTaken, 0));
}

bool State::hasPeerGone() const
{
    pollfd end{m_descriptor, 0, 0};
    return ::poll(&end, 1, 0) > 0 && (end.revents & POLLHUP) != 0;
}

void State::goOnWithHandshake()
{
    const qsizetype before = m_output.size();
    switch (m_handshake.take(&m_input, &m_output)) {
    case Handshake::State::Going:
        break;
    case Handshake::State::Done:
        // Who has gone before there was an answer has given up all that came with the opening.
        if (m_side == Side::Server && m_outputEnd == 0 && hasPeerGone())
            return drop();
        m_isAuthenticated = true;
        beginIdleTime();
        break;
    case Handshake::State::Failed:
        return dropFor("connection without a proper handshake closed");
    case Handshake::State::Refused:
        m_wasRefused = true;
        return drop();
    }
    m_outputEnd += static_cast<quint64>(m_output.size() - before);
}

QByteArray State::takeMessage()
{
    const auto size = static_cast<qsizetype>(*WireMessage::sizeOf(m_input));
    QByteArray message = m_input.size() == size ? std::exchange(m_input, {}) : m_input.left(size);
    if (!m_input.isEmpty())
        m_input.remove(0, size);
    releaseRoom();
    return message;
}

} // namespace dozely
