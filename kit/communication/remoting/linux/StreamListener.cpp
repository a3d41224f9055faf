// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/Handshake_p.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/communication/remoting/linux/AcceptedStreams_p.h"
#include "DozelyKit/communication/remoting/linux/PeerCredentials_p.h"
#include "DozelyKit/communication/remoting/linux/StreamState_p.h"
#include "DozelyKit/core/log/AbuseLog.h"

#include <cerrno>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace dozely
{

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using Stream = MessageStream::Private;

namespace
{
constexpr int acceptsPerTurn = 16;      // then the streams have their turn
constexpr int acceptsAtTheEnd = 64;     // of a listener
constexpr int descriptorsOfOurOwn = 64; // which strangers' streams must leave for files and children
constexpr milliseconds pauseWithoutDescriptors(50);

/// Whether this descriptor leaves enough others: the kernel gives away the lowest that is free.
bool leavesRoomForFiles(int descriptor)
{
    rlimit limit{};
    return ::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY ||
           static_cast<rlim_t>(descriptor) + descriptorsOfOurOwn < limit.rlim_cur;
}
} // namespace

struct StreamListener::Private final : StreamLoop::Source {
    Private(int descriptor, Accept accept, const StreamOptions &options)
        : m_accept(std::move(accept)),
          m_options(options),
          m_loop(StreamLoop::ofThisThread()),
          m_descriptor(descriptor),
          m_source(m_loop.addListener(descriptor, this))
    {
    }
    ~Private() override { m_loop.remove(m_source); }

    bool ready() override { return acceptUpTo(acceptsPerTurn); }

    void deadlinePassed() override { m_loop.setEvents(m_source, POLLIN); }

    /// True when more may be waiting.
    bool acceptUpTo(int limit)
    {
        const std::weak_ptr<bool> alive = m_alive;
        for (int i = 0; i < limit; ++i) {
            const int descriptor = ::accept4(m_descriptor, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
            if (descriptor < 0) {
                if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM)
                    pause();
                return false;
            }
            take(descriptor);
            if (alive.expired())
                return false; // whoever took the stream has ended us
        }
        return true;
    }

    // Whatever the check throws: a stream is not taken in that nobody wanted.
    bool isWelcome(const NSConnection::Peer &peer) const
    {
        try {
            return !m_isWelcome || m_isWelcome(peer);
        } catch (...) {
            return false;
        }
    }

    void take(int descriptor)
    {
        const auto peer = peerCredentials(descriptor);
        if (!peer || !isWelcome(*peer)) {
            ::close(descriptor);
            return;
        }
        const bool isStranger = peer->userId != 0 && peer->userId != ::geteuid();
        if ((isStranger && !leavesRoomForFiles(descriptor)) ||
            !AcceptedStreams::ofThisThread().makeRoomFor(peer->userId)) {
            refuse(descriptor, *peer);
            return;
        }
        const auto stream = Stream::make(descriptor, Stream::Side::Server, m_options);
        if (!stream)
            return;
        m_accept(std::shared_ptr<MessageStream>(new MessageStream(stream)));
        stream->serviceLater(); // it has mostly been written to already
    }

    static void refuse(int descriptor, const NSConnection::Peer &peer)
    {
        const QByteArray words = Handshake::refusal();
        ::send(descriptor, words.constData(), static_cast<size_t>(words.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
        ::close(descriptor);
        AbuseLog::note(peer.userId, "connection refused, there are too many");
    }

    // Without free descriptors the queue stays readable: looking again at once would only burn time.
    void pause()
    {
        m_loop.setEvents(m_source, 0);
        m_loop.setDeadline(m_source, steady_clock::now() + pauseWithoutDescriptors);
    }

    Accept m_accept;
    const StreamOptions m_options;
    NSConnection::PeerCheck m_isWelcome;
    StreamLoop &m_loop;
    int m_descriptor;
    quint64 m_source;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

StreamListener::StreamListener(const NSSocketPort &port, Accept accept, const StreamOptions &options)
    : d(std::make_unique<Private>(port.listeningDescriptor(), std::move(accept), options))
{
}

StreamListener::~StreamListener() = default;

void StreamListener::acceptPending()
{
    d->acceptUpTo(acceptsAtTheEnd);
}

void StreamListener::setPeerCheck(NSConnection::PeerCheck isWelcome)
{
    d->m_isWelcome = std::move(isWelcome);
}

} // namespace dozely
