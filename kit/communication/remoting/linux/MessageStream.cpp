// SPDX-License-Identifier: MIT
//
// What a stream sends on its own account; what it serves is in StreamState.cpp.
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/communication/remoting/linux/StreamState_p.h"
#include "DozelyKit/core/dbus/linux/BusCodec_p.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <cerrno>
#include <cstring>

using namespace dozely;

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using State = MessageStream::Private;

namespace
{
constexpr uint64_t noTimeout = UINT64_MAX; // our own deadlines govern the waits

struct ReleaseSlot {
    void operator()(sd_bus_slot *slot) const { sd_bus_slot_unref(slot); }
};
using Slot = std::unique_ptr<sd_bus_slot, ReleaseSlot>;

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error < 0 ? -error : error));
}

[[noreturn]] void raise(const QString &name, const QString &reason)
{
    throw NSException(name, reason);
}

int keepReply(sd_bus_message *reply, void *slot, sd_bus_error *)
{
    static_cast<State::Message *>(slot)->reset(sd_bus_message_ref(reply));
    return 1;
}
} // namespace

State::Message State::newCall(const Request &request) const
{
    if (!bus)
        raise(NSInvalidSendPortException, QStringLiteral("the connection is closed"));
    sd_bus_message *raw = nullptr;
    if (const int error =
            sd_bus_message_new_method_call(bus, &raw, nullptr, request.path.constData(),
                                           request.interface.constData(), request.member.constData());
        error < 0)
        raise(NSInvalidArgumentException, errorText(error));
    Message message(raw);
    if (const auto appended = BusCodec::append(message.get(), request.arguments, BusCodec::ownStream);
        !appended)
        raise(NSInvalidArgumentException, appended.error().text);
    return message;
}

bool State::hasHandedOver() const
{
    uint64_t queued = 0;
    return sd_bus_is_ready(bus) > 0 && sd_bus_get_n_queued_write(bus, &queued) >= 0 && queued == 0;
}

void State::post(const Request &request, StreamLoop::Moment deadline)
{
    const auto self = shared_from_this();
    const Message message = newCall(request);
    sd_bus_message_set_expect_reply(message.get(), 0);
    if (const int error = sd_bus_send(bus, message.get(), nullptr); error < 0) {
        drop();
        raise(NSInvalidSendPortException, errorText(error));
    }
    settle();
    loop.waitUntil([&] { return !bus || hasHandedOver(); }, [&] { return deadline; });
    if (!bus)
        raise(NSInvalidSendPortException, QStringLiteral("the connection died"));
    if (!hasHandedOver())
        throw NotHandedOver();
}

MessageStream::Reply State::exchange(const Request &request, StreamLoop::Moment deadline,
                                     std::optional<milliseconds> replyTimeout)
{
    const auto self = shared_from_this();
    const Message message = newCall(request);
    Message answer;
    sd_bus_slot *rawSlot = nullptr;
    if (const int error = sd_bus_call_async(bus, &rawSlot, message.get(), keepReply, &answer, noTimeout);
        error < 0) {
        drop();
        raise(NSInvalidSendPortException, errorText(error));
    }
    Slot slot(rawSlot);
    settle();

    // Two deadlines in turn: one until the request has left this process, one for the answer.
    bool handedOver = false;
    const auto done = [&] {
        if (!handedOver && bus) {
            handedOver = hasHandedOver();
            if (handedOver && replyTimeout)
                deadline = steady_clock::now() + *replyTimeout;
        }
        return answer != nullptr || !bus;
    };
    loop.waitUntil(done, [&] { return deadline; });
    slot.reset();
    if (!answer) {
        if (!bus)
            raise(NSInvalidSendPortException, QStringLiteral("the connection died"));
        if (!handedOver)
            throw NotHandedOver();
        raise(NSPortTimeoutException, QStringLiteral("no reply in time"));
    }
    const sd_bus_error *const error = sd_bus_message_get_error(answer.get());
    // What sd-bus itself answers to the calls that are under way when the stream closes.
    if (error && (sd_bus_error_has_name(error, SD_BUS_ERROR_NO_REPLY) ||
                  sd_bus_error_has_name(error, SD_BUS_ERROR_DISCONNECTED)))
        raise(NSInvalidSendPortException, QStringLiteral("the connection died"));
    if (error)
        return Reply::error(error->name, QString::fromUtf8(error->message));
    auto results = BusCodec::read(answer.get(), BusCodec::ownStream);
    if (!results)
        raise(NSInvalidArgumentException,
              QStringLiteral("the reply is too large or holds types that are not known"));
    return {{}, {}, *std::move(results)};
}

std::shared_ptr<MessageStream> MessageStream::open(const NSSocketPort &port, milliseconds limit,
                                                   const StreamOptions &options)
{
    const auto deadline = steady_clock::now() + limit;
    constexpr milliseconds pause(5);
    int descriptor = port.connectStream();
    while (descriptor < 0 && errno == EAGAIN) {
        // The other side's queue is full. It may be our own: serve while we wait.
        const auto retry = std::min(deadline, steady_clock::now() + pause);
        StreamLoop::ofThisThread().waitUntil([] { return false; }, [=] { return retry; });
        if (steady_clock::now() >= deadline)
            raise(NSPortTimeoutException, QStringLiteral("the other side accepts no connection in time"));
        descriptor = port.connectStream();
    }
    if (descriptor < 0)
        raise(NSInvalidSendPortException, errorText(errno));
    auto state = Private::make(descriptor, Private::Side::Client, options);
    if (!state)
        raise(NSInvalidSendPortException, QStringLiteral("the connection died"));
    return std::shared_ptr<MessageStream>(new MessageStream(std::move(state)));
}

MessageStream::MessageStream(std::shared_ptr<Private> state) : d(std::move(state)) {}

MessageStream::~MessageStream() = default;

void MessageStream::setHandler(Handler *handler)
{
    d->handler = handler;
}

MessageStream::Reply MessageStream::call(const Request &request, milliseconds requestTimeout,
                                         milliseconds replyTimeout)
{
    return d->exchange(request, steady_clock::now() + requestTimeout, replyTimeout);
}

MessageStream::Reply MessageStream::callWithin(const Request &request, milliseconds limit)
{
    return d->exchange(request, steady_clock::now() + limit, {});
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
