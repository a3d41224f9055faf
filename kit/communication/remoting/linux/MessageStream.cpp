// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/MessageStream_p.h"

#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/communication/remoting/linux/StreamState_p.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace dozely
{

using std::chrono::milliseconds;
using std::chrono::steady_clock;

std::shared_ptr<MessageStream> MessageStream::open(const NSSocketPort &port, milliseconds limit,
                                                   const StreamOptions &options)
{
    const auto deadline = steady_clock::now() + limit;
    constexpr milliseconds pause(5);
    int descriptor = port.connectStream();
    while (descriptor < 0 && errno == EAGAIN) {
        if (steady_clock::now() >= deadline)
            throw NSException(NSPortTimeoutException,
                              QStringLiteral("the other side accepts no connection in time"));
        // The other side's queue is full. It may be our own: serve while we wait.
        const auto retry = std::min(deadline, steady_clock::now() + pause);
        StreamLoop::ofThisThread().waitUntil([] { return false; }, [=] { return retry; });
        descriptor = port.connectStream();
    }
    if (descriptor < 0)
        throw NSException(NSInvalidSendPortException, QString::fromLocal8Bit(std::strerror(errno)));
    auto state = Private::make(descriptor, Private::Side::Client, options);
    if (!state)
        throw NSException(NSInvalidSendPortException, QStringLiteral("the connection died"));
    return std::shared_ptr<MessageStream>(new MessageStream(std::move(state)));
}

MessageStream::MessageStream(std::shared_ptr<Private> state) : d(std::move(state)) {}

MessageStream::~MessageStream() = default;

void MessageStream::setHandler(Handler *handler)
{
    d->handler = handler;
}

void MessageStream::anticipate(const Request &request)
{
    d->toAnticipate = request;
}

MessageStream::Reply MessageStream::call(const Request &request, milliseconds requestTimeout,
                                         milliseconds replyTimeout)
{
    const auto sent = d->takeAnticipated(request);
    return d->finish(sent ? *sent : d->begin(request, true), steady_clock::now() + requestTimeout,
                     replyTimeout);
}

MessageStream::Reply MessageStream::callWithin(const Request &request, milliseconds limit)
{
    return d->finish(d->begin(request, true), steady_clock::now() + limit, {});
}

void MessageStream::ask(const Request &request, Answered answered)
{
    d->ask(request, std::move(answered));
}

void MessageStream::post(const Request &request, milliseconds limit)
{
    d->post(request, steady_clock::now() + limit);
}

bool MessageStream::isOpen() const
{
    return d->isOpen();
}

void MessageStream::close()
{
    d->close();
}

std::optional<NSConnection::Peer> MessageStream::peer() const
{
    return d->peer;
}

} // namespace dozely
