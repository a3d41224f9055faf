// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/Handshake_p.h"
#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/communication/remoting/WireMessage_p.h"
#include "DozelyKit/communication/remoting/linux/StreamLoop_p.h"
#include "DozelyKit/core/foundation/Result.h"

#include <deque>
#include <map>

namespace dozely
{

/// What a MessageStream is made of: D-Bus, peer to peer, over one connected socket.
///
/// Messages are taken in whole, one at a time, and served after nothing of this is under way any more, so
/// that serving may nest and may close the stream. Replies leave at once, or with the next reply when another
/// request is at hand already.
///
/// The stream is open for as long as somebody holds this: its MessageStream, who serves it, who waits on it.
struct MessageStream::Private final : StreamLoop::Source,
                                      std::enable_shared_from_this<MessageStream::Private> {
    enum class Side { Server, Client };

    /// Takes over the descriptor. Null when it cannot be watched.
    static std::shared_ptr<Private> make(int descriptor, Side side, const StreamOptions &options);
    ~Private() override;

    bool isOpen() const { return m_descriptor >= 0; }
    bool isAuthenticated() const { return m_isAuthenticated; }
    void close();
    /// Closes, and tells the handler from the event loop.
    void drop();
    /// The same, of a client that is not let in yet: it is told that there is no room.
    void refuse();
    bool ready() override;
    void deadlinePassed() override;
    void serviceLater() { loop.serviceLater(m_source); }

    /// Queues a request, which leaves with the next settle; its serial number. Raises NSException on a closed
    /// stream and for too large a request.
    quint32 begin(const Request &request, bool expectsReply);
    /// Waits for the reply. Without a reply time-out of its own it has to come before the first deadline.
    Reply finish(quint32 serial, StreamLoop::Moment deadline,
                 std::optional<std::chrono::milliseconds> replyTimeout);
    void post(const Request &request, StreamLoop::Moment deadline);
    /// Waits for nothing.
    void ask(const Request &request, Answered answered);
    /// The same request, with its reply on its way, was sent along with the one before. If it was another,
    /// its reply is of no interest any more: it would be of the past when it is asked for.
    std::optional<quint32> takeAnticipated(const Request &request);

    StreamLoop &loop; ///< The one of the thread that made the stream.
    Handler *handler = nullptr;
    std::optional<NSConnection::Peer> peer;
    std::optional<Request> toAnticipate; ///< Leaves with the next request.

private:
    Private(int descriptor, Side side, const StreamOptions &options);

    /// What the first bytes of the input are.
    enum class Front { Incomplete, Whole, Bad };

    Front front() const;
    void receive();
    bool makeRoom(qsizetype size);
    void releaseRoom();
    bool hasPeerGone() const;
    void goOnWithHandshake();
    QByteArray takeMessage();
    void handle(const WireMessage &message);
    void tellAnswer(const WireMessage &answer);
    void serve(const WireMessage &call);
    bool serveAsBus(const Request &request, const WireMessage &call);
    Reply handled(const Request &request);
    void reply(const WireMessage &call, const Reply &reply);
    Result<void> send(WireMessage &message, const QVariantList &values);
    /// After every use of the stream: sends what there is to send and looks for what may come.
    void settle();
    bool flush();
    bool hasHandedOver() const { return m_isAuthenticated && m_output.isEmpty(); }
    void limitReplies();
    /// From now on the peer has the idle limit for its next request, unless one of its requests is served.
    void beginIdleTime();
    void endIdleTime();
    void armDeadline();
    std::optional<StreamLoop::Moment> nextDeadline() const;
    void dropFor(const char *reason);

    const Side m_side;
    const std::chrono::milliseconds m_idleLimit;
    const bool m_isTrusted; ///< The peer may send more than strangers: it can harm us without that.
    const bool m_isOwnProcess;
    const quint64 m_largestToSend;
    int m_descriptor; ///< -1 when closed.
    quint64 m_source = 0;

    Handshake m_handshake;
    bool m_isAuthenticated = false;
    bool m_wasRefused = false;

    QByteArray m_input;        ///< What has come and is not served yet.
    qsizetype m_roomTaken = 0; ///< For the message at its front, when that is a large one.
    bool m_waitsForRoom = false;

    QByteArray m_output;             ///< What has not left yet.
    quint64 m_outputEnd = 0;         ///< All that was ever put into it.
    std::deque<quint64> m_replyEnds; ///< Where the replies in it end, counted likewise.
    qsizetype m_outputHeld = 0;      ///< Taken of the quota.

    quint32 m_lastSerial = 0;
    std::map<quint32, std::optional<WireMessage>> m_awaited; ///< Replies by the serial of their call.
    std::map<quint32, Answered> m_asked;                     ///< The same for what nobody waits for.
    std::optional<std::pair<Request, quint32>> m_anticipated;

    int m_serving = 0;                                   ///< Requests of this stream, within each other.
    std::optional<StreamLoop::Moment> m_idleDeadline;    ///< Or that of the handshake.
    std::optional<StreamLoop::Moment> m_messageDeadline; ///< Of a large message that has begun.
    std::optional<StreamLoop::Moment> m_armed;           ///< What the loop was told.
};

} // namespace dozely
