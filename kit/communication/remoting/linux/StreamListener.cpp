// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/communication/remoting/linux/PeerCredentials_p.h"
#include "DozelyKit/communication/remoting/linux/StreamState_p.h"

#include <cerrno>
#include <list>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace dozely;

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using Stream = MessageStream::Private;

namespace
{
constexpr size_t streamsPerUser = 64; // a user who connects without end harms himself only
constexpr int acceptsPerTurn = 64;    // then the streams have their turn
constexpr milliseconds pauseWithoutDescriptors(50);

// The accepted streams of this thread, oldest first, whatever port they came in on.
class AcceptedStreams
{
public:
    static AcceptedStreams &ofThisThread()
    {
        static thread_local AcceptedStreams streams;
        return streams;
    }

    // Makes room for one more stream of the user: at the limit the oldest one that has not identified itself
    // goes.
    bool makeRoomFor(quint32 userId)
    {
        size_t count = 0;
        std::shared_ptr<Stream> unidentified;
        m_streams.remove_if([](const auto &weak) { return weak.expired() || !weak.lock()->isOpen(); });
        for (const auto &weak : m_streams) {
            const auto stream = weak.lock();
            if (!stream->peer || stream->peer->userId != userId)
                continue;
            ++count;
            if (!unidentified && !stream->isAuthenticated)
                unidentified = stream;
        }
        if (count < streamsPerUser)
            return true;
        if (!unidentified)
            return false;
        unidentified->deadlinePassed();
        return true;
    }

    void add(const std::shared_ptr<Stream> &stream) { m_streams.push_back(stream); }

private:
    std::list<std::weak_ptr<Stream>> m_streams;
};

} // namespace

struct StreamListener::Private final : StreamLoop::Source {
    Private(int descriptor, Accept accept, const StreamOptions &options)
        : m_accept(std::move(accept)),
          m_options(options),
          m_loop(StreamLoop::ofThisThread()),
          m_descriptor(descriptor),
          m_source(m_loop.add(descriptor, POLLIN, this))
    {
    }
    ~Private() override { m_loop.remove(m_source); }

    void ready() override { acceptUpTo(acceptsPerTurn); }

    void deadlinePassed() override { m_loop.setEvents(m_source, POLLIN); }

    void acceptUpTo(int limit)
    {
        const std::weak_ptr<bool> alive = m_alive;
        for (int i = 0; i < limit; ++i) {
            const int descriptor = ::accept4(m_descriptor, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
            if (descriptor < 0) {
                if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM)
                    pause();
                return;
            }
            take(descriptor);
            if (alive.expired())
                return; // whoever took the stream has ended us
        }
    }

    void take(int descriptor)
    {
        const auto peer = peerCredentials(descriptor);
        if (!peer || (m_isWelcome && !m_isWelcome(*peer)) ||
            !AcceptedStreams::ofThisThread().makeRoomFor(peer->userId)) {
            ::close(descriptor);
            return;
        }
        if (auto stream = Stream::make(descriptor, Stream::Side::Server, m_options)) {
            AcceptedStreams::ofThisThread().add(stream);
            m_accept(std::shared_ptr<MessageStream>(new MessageStream(stream)));
            stream->ready(); // starting it has read the handshake already: answer without another turn
        }
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
    d->acceptUpTo(static_cast<int>(streamsPerUser));
}

void StreamListener::setPeerCheck(NSConnection::PeerCheck isWelcome)
{
    d->m_isWelcome = std::move(isWelcome);
}
