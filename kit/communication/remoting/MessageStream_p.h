// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <QVariant>

#include <functional>

class NSSocketPort;

namespace dozely
{

/// A stream of requests and replies between two processes. NSConnection knows which object answers what; the
/// stream knows how that travels (docs/wire-protocol.md).
///
/// THREADING: one thread. A stream is alive while somebody holds it and it was not closed.
class DOZELYKIT_AUTOTEST_EXPORT MessageStream
{
public:
    struct Request {
        QByteArray path;
        QByteArray interface; ///< Empty when the caller named none.
        QByteArray member;
        QVariantList arguments;
    };
    struct Reply {
        QByteArray errorName; ///< Empty for success.
        QString errorText;
        QVariantList results;

        static Reply error(const QByteArray &name, const QString &text) { return {name, text, {}}; }
    };

    /// The time-out of a request that has not, or not wholly, left this process. What is left of it leaves
    /// for as long as the stream lives.
    class NotHandedOver : public NSException
    {
    public:
        NotHandedOver()
            : NSException(NSPortTimeoutException,
                          QStringLiteral("the request could not be handed over in time"))
        {
        }
    };

    /// The other side has no room for another stream, of this user or at all. Nothing was delivered.
    class Refused : public NSException
    {
    public:
        Refused()
            : NSException(NSInvalidSendPortException,
                          QStringLiteral("the other side has no room for another stream"))
        {
        }
    };

    /// What a stream tells its connection. The functions may use the stream, nest calls and close it.
    class Handler
    {
    public:
        virtual ~Handler() = default;
        virtual Reply serve(const Request &request) = 0;
        /// The stream has closed, for whatever reason but MessageStream::close. Called once, from the event
        /// loop where the thread has one, never from within a wait.
        virtual void streamClosed() = 0;
    };

    /// Opens a stream to a client port, waiting at most `limit`, or not at all, while the other side's queue
    /// is full. Raises NSException when nobody listens.
    static std::shared_ptr<MessageStream> open(const NSSocketPort &port, std::chrono::milliseconds limit,
                                               const StreamOptions &options = {});
    ~MessageStream();
    MessageStream(const MessageStream &) = delete;
    MessageStream &operator=(const MessageStream &) = delete;

    /// Not owned; null takes it back.
    void setHandler(Handler *handler);

    /// Lets the next call take this request, which must have no arguments, along: the reply is there sooner
    /// when it is called next. What is not is asked all the same.
    void anticipate(const Request &request);

    /// Sends the request and waits. While the main thread waits, requests that come in are served. Raises
    /// NSException when time runs out (NotHandedOver where the request did not even leave) or the stream
    /// closes (Refused where it was never taken); an error reply comes back as a reply.
    Reply call(const Request &request, std::chrono::milliseconds requestTimeout,
               std::chrono::milliseconds replyTimeout);

    /// The same with one limit for all of it.
    Reply callWithin(const Request &request, std::chrono::milliseconds limit);

    /// Sends the request from the event loop and waits for nothing. `answered` is called from there once the
    /// reply has come, whenever that is; never once the stream has closed. Raises NSException as call does
    /// for a stream that is closed and a request that cannot be.
    using Answered = std::function<void(const Reply &)>;
    void ask(const Request &request, Answered answered);

    /// Sends a request to which there is no reply, and waits until it has left this process. Raises as call.
    void post(const Request &request, std::chrono::milliseconds limit);

    bool isOpen() const;
    void close();

    /// Who is at the other end; absent when the kernel did not say.
    std::optional<NSConnection::Peer> peer() const;

    /// What a stream is made of; in linux/.
    struct Private;

private:
    friend class StreamListener;
    explicit MessageStream(std::shared_ptr<Private> state);
    std::shared_ptr<Private> d;
};

/// Accepts streams on a server port for as long as it lives, within the limits of docs/wire-protocol.md.
class DOZELYKIT_AUTOTEST_EXPORT StreamListener
{
public:
    using Accept = std::function<void(std::shared_ptr<MessageStream>)>;

    /// The port has to outlive the listener; each stream gets `options`.
    StreamListener(const NSSocketPort &port, Accept accept, const StreamOptions &options = {});
    ~StreamListener();
    StreamListener(const StreamListener &) = delete;
    StreamListener &operator=(const StreamListener &) = delete;

    /// Accepts what already waits in the queue.
    void acceptPending();

    /// Streams of peers that `isWelcome` does not name are closed before anything is read of them.
    void setPeerCheck(NSConnection::PeerCheck isWelcome);

private:
    struct Private; // in linux/
    std::unique_ptr<Private> d;
};

} // namespace dozely
