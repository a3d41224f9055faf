// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/communication/remoting/linux/FramePump_p.h"
#include "DozelyKit/communication/remoting/linux/StreamLoop_p.h"

#include <systemd/sd-bus.h>

/// A message stream that speaks D-Bus, peer to peer, over a connected socket.
///
/// sd-bus writes to the socket itself. What it reads of another user's comes through a socket pair from the
/// FramePump, which has looked at each message's size before. Root's processes and our own user's need no
/// such guard, which makes a short request dearer by half: they can harm this process without it.
///
/// Requests are taken out of sd-bus and served after it returned, so that serving may nest: sd-bus refuses to
/// be entered again from within its own callbacks.
class SdBusStream final : public MessageStream,
                          public StreamLoop::Source,
                          public std::enable_shared_from_this<SdBusStream>
{
public:
    enum class Side { Server, Client };

    // What keeps one peer from starving or exhausting the others.
    static constexpr std::chrono::seconds authenticationLimit{
        5};                                       ///< A peer that connects and stays silent is dropped.
    static constexpr int messagesPerTurn = 64;    ///< Then the others have their turn.
    static constexpr uint64_t queuedReplies = 64; ///< A peer that reads no replies is dropped.

    /// A peer that makes no request for so long is dropped; counted from its authentication or the end of its
    /// last request, so that pieces of a message do not prolong it. Other than 5 minutes in tests alone.
    DOZELYKIT_AUTOTEST_EXPORT static std::chrono::milliseconds idleLimit;

    /// Guards against root and our own user too; for tests.
    DOZELYKIT_AUTOTEST_EXPORT static bool guardsAgainstEverybody;

    /// Takes over the descriptor. Null when the peer has gone already or has sent garbage.
    static std::shared_ptr<SdBusStream> make(int descriptor, Side side);
    ~SdBusStream() override;

    void setHandler(Handler *handler) override { m_handler = handler; }
    Reply call(const Request &request, std::chrono::milliseconds requestTimeout,
               std::chrono::milliseconds replyTimeout) override;
    Reply callWithin(const Request &request, std::chrono::milliseconds limit) override;
    void post(const Request &request, std::chrono::milliseconds limit) override;
    bool isOpen() const override { return m_descriptor >= 0; }
    void close() override;
    std::optional<NSConnection::Peer> peer() const override { return m_peer; }

    bool isAuthenticated() const { return m_authenticated; }

    void ready() override;
    void deadlinePassed() override;

private:
    SdBusStream(int descriptor, Side side);
    bool isTrusted() const;
    /// False when the peer has gone already or has sent garbage.
    bool start();
    int pump();
    /// Everything there is to read and answer, at most a turn's worth; a negative errno drops the peer.
    int drain();
    void serve(sd_bus_message *message);
    void reply(sd_bus_message *message, const Reply &reply);
    /// Without a reply time-out of its own, the reply has to come before the first deadline.
    Reply exchange(const Request &request, StreamLoop::Moment deadline,
                   std::optional<std::chrono::milliseconds> replyTimeout);
    /// Everything that was sent has left this process.
    bool hasHandedOver() const;
    void settle();
    /// From now on the peer has the idle limit for its next request.
    void beginIdleTime();
    void drop();

    sd_bus *m_bus = nullptr; ///< Null when closed.
    StreamLoop &m_loop;      ///< The one of the thread that made the stream.
    Side m_side;
    int m_descriptor;                ///< The connected socket, which is the bus's; -1 when closed.
    int m_feed = -1;                 ///< Our end of what the bus reads.
    std::optional<FramePump> m_pump; ///< Absent for a peer that is trusted.
    quint64 m_source = 0;
    Handler *m_handler = nullptr;
    std::optional<NSConnection::Peer> m_peer;
    bool m_authenticated = false;
};
