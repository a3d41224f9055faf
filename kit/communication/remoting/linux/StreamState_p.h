// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/communication/remoting/linux/FramePump_p.h"
#include "DozelyKit/communication/remoting/linux/StreamLoop_p.h"

#include <systemd/sd-bus.h>

namespace dozely
{

/// What a MessageStream is made of: D-Bus, peer to peer, over a connected socket.
///
/// sd-bus writes to the socket itself. What it reads of another user's comes through a socket pair from the
/// FramePump, which has looked at each message's size before. Root's processes and our own user's need no
/// such guard, which makes a short request dearer by half: they can harm this process without it.
///
/// Requests are taken out of sd-bus and served after it returned, so that serving may nest: sd-bus refuses to
/// be entered again from within its own callbacks.
///
/// The stream is open for as long as somebody holds this: its MessageStream, who serves it, who waits on it.
struct MessageStream::Private final : StreamLoop::Source,
                                      std::enable_shared_from_this<MessageStream::Private> {
    enum class Side { Server, Client };

    // What keeps one peer from starving or exhausting the others.
    static constexpr std::chrono::seconds authenticationLimit{
        5};                                       ///< A peer that connects and stays silent is dropped.
    static constexpr int messagesPerTurn = 64;    ///< Then the others have their turn.
    static constexpr uint64_t queuedReplies = 64; ///< A peer that reads no replies is dropped.

    /// Takes over the descriptor. Null when the peer has gone already or has sent garbage.
    static std::shared_ptr<Private> make(int descriptor, Side side, const StreamOptions &options);
    ~Private() override;

    bool isOpen() const { return m_descriptor >= 0; }
    void close();
    void ready() override;
    void deadlinePassed() override;

    struct ReleaseMessage {
        void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
    };
    using Message = std::unique_ptr<sd_bus_message, ReleaseMessage>;

    /// A request that goes nowhere yet. Raises NSException on a closed stream and for too large a request.
    Message newCall(const Request &request) const;
    /// Without a reply time-out of its own, the reply has to come before the first deadline.
    Reply exchange(const Request &request, StreamLoop::Moment deadline,
                   std::optional<std::chrono::milliseconds> replyTimeout);
    void post(const Request &request, StreamLoop::Moment deadline);
    /// Everything that was sent has left this process.
    bool hasHandedOver() const;
    /// After every use of the bus: what it waits for may have changed.
    void settle();
    void drop();

    sd_bus *bus = nullptr; ///< Null when closed.
    StreamLoop &loop;      ///< The one of the thread that made the stream.
    Handler *handler = nullptr;
    std::optional<NSConnection::Peer> peer;
    bool isAuthenticated = false;

private:
    Private(int descriptor, Side side, const StreamOptions &options);
    bool isTrusted() const;
    /// False when the peer has gone already or has sent garbage.
    bool start();
    int pump();
    /// Everything there is to read and answer, at most a turn's worth; a negative errno drops the peer.
    int drain();
    void serve(sd_bus_message *message);
    void reply(sd_bus_message *message, const Reply &reply);
    /// From now on the peer has the idle limit for its next request.
    void beginIdleTime();

    const Side m_side;
    const StreamOptions m_options;
    int m_descriptor;                ///< The connected socket, which is the bus's; -1 when closed.
    int m_feed = -1;                 ///< Our end of what the bus reads.
    std::optional<FramePump> m_pump; ///< Absent for a peer that is trusted.
    quint64 m_source = 0;
};

} // namespace dozely
