// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/SdBusStream_p.h"

#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/communication/remoting/linux/PeerCredentials_p.h"
#include "DozelyKit/core/dbus/linux/BusCodec_p.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <QScopeGuard>

#include <array>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace
{
// The hello of clients that believe to talk to a bus; the name means nothing here.
constexpr const char *uniqueName = ":1.1";
constexpr const char *busInterface = "org.freedesktop.DBus";
constexpr uint64_t noTimeout = UINT64_MAX; // our own deadlines govern the waits

struct MessageDeleter {
    void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageDeleter>;

struct SlotDeleter {
    void operator()(sd_bus_slot *slot) const { sd_bus_slot_unref(slot); }
};
using Slot = std::unique_ptr<sd_bus_slot, SlotDeleter>;

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error < 0 ? -error : error));
}

[[noreturn]] void raise(const QString &name, const QString &reason)
{
    throw NSException(name, reason);
}

/// The request as a message for this bus, which is null when the stream has closed.
Message newCall(sd_bus *bus, const MessageStream::Request &request)
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

int keepReply(sd_bus_message *reply, void *slot, sd_bus_error *)
{
    static_cast<Message *>(slot)->reset(sd_bus_message_ref(reply));
    return 1;
}
} // namespace

std::shared_ptr<SdBusStream> SdBusStream::make(int descriptor, Side side)
{
    const std::shared_ptr<SdBusStream> stream(new SdBusStream(descriptor, side));
    return stream->start() ? stream : nullptr;
}

SdBusStream::SdBusStream(int descriptor, Side side)
    : m_loop(StreamLoop::ofThisThread()),
      m_side(side),
      m_descriptor(descriptor),
      m_peer(peerCredentials(descriptor))
{
    m_source = m_loop.add(descriptor, POLLIN, this);
    if (side == Side::Server)
        m_loop.setDeadline(m_source, steady_clock::now() + authenticationLimit);
}

SdBusStream::~SdBusStream()
{
    close();
}

void SdBusStream::close()
{
    if (!isOpen())
        return;
    m_loop.remove(m_source);
    if (m_bus)
        sd_bus_close_unref(std::exchange(m_bus, nullptr)); // the descriptor is the bus's
    else
        ::close(m_descriptor);
    m_descriptor = -1;
    if (m_feed >= 0)
        ::close(std::exchange(m_feed, -1));
}

std::chrono::milliseconds SdBusStream::idleLimit = std::chrono::minutes(5);
bool SdBusStream::guardsAgainstEverybody = false;

bool SdBusStream::isTrusted() const
{
    return !guardsAgainstEverybody && m_peer && (m_peer->userId == 0 || m_peer->userId == ::geteuid());
}

bool SdBusStream::start()
{
    int input = m_descriptor;
    if (!isTrusted()) {
        std::array<int, 2> pair{};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, pair.data()) != 0)
            return false;
        m_feed = pair[0];
        input = pair[1];
        const auto claimed = m_peer ? std::optional<uid_t>(m_peer->userId) : std::nullopt;
        m_pump.emplace(m_descriptor, m_feed,
                       m_side == Side::Client ? HandshakeFilter::ofServer()
                                              : HandshakeFilter::ofClient(claimed));
    }
    if (sd_bus_new(&m_bus) < 0) {
        if (input != m_descriptor)
            ::close(input);
        return false;
    }
    sd_bus_set_fd(m_bus, input, m_descriptor); // the bus owns both from here
    sd_bus_negotiate_fds(m_bus, 0);            // descriptors of strangers are not wanted
    if (m_side == Side::Server) {
        sd_id128_t id;
        sd_id128_randomize(&id);
        sd_bus_set_server(m_bus, 1, id);
    }
    // The peer may have written already. Starting reads it: one that is gone or has sent garbage fails here.
    return pump() >= 0 && sd_bus_start(m_bus) >= 0;
}

int SdBusStream::pump()
{
    return m_pump ? m_pump->pump() : 0;
}

void SdBusStream::drop()
{
    if (!isOpen())
        return;
    close();
    m_loop.callFromLoop([weak = weak_from_this()] {
        if (const auto self = weak.lock(); self && self->m_handler)
            std::exchange(self->m_handler, nullptr)->streamClosed();
    });
}

void SdBusStream::ready()
{
    if (!isOpen())
        return;
    const auto self = shared_from_this(); // serving may let go of us
    if (m_pump)
        m_pump->wake();
    if (drain() < 0)
        drop();
    else
        settle();
}

void SdBusStream::deadlinePassed()
{
    const auto self = shared_from_this();
    drop();
}

int SdBusStream::drain()
{
    if (const int moved = pump(); moved < 0)
        return moved;
    for (int i = 0; i < messagesPerTurn; ++i) {
        uint64_t queued = 0;
        if (sd_bus_get_n_queued_write(m_bus, &queued) >= 0 && queued > queuedReplies)
            return -ENOBUFS;
        sd_bus_message *raw = nullptr;
        const int result = sd_bus_process(m_bus, &raw);
        const Message message(raw);
        if (result < 0)
            return result;
        if (result == 0) {
            const int moved = pump();
            if (moved <= 0)
                return moved;
        }
        if (message)
            serve(message.get());
        if (!m_bus)
            return 0;
    }
    m_loop.serviceLater(m_source);
    return 0;
}

// After every use of the bus: what it waits for may have changed.
void SdBusStream::settle()
{
    if (!m_bus)
        return;
    const int events = sd_bus_get_events(m_bus);
    if (events >= 0)
        m_loop.setEvents(m_source, static_cast<short>(m_pump ? events | POLLIN : events));
    uint64_t reading = 0;
    if (sd_bus_get_n_queued_read(m_bus, &reading) >= 0 && reading > 0)
        m_loop.serviceLater(m_source);
    if (!m_authenticated && sd_bus_is_ready(m_bus) > 0) {
        m_authenticated = true;
        beginIdleTime();
    }
}

void SdBusStream::beginIdleTime()
{
    if (m_side == Side::Server)
        m_loop.setDeadline(m_source, steady_clock::now() + idleLimit);
}

void SdBusStream::serve(sd_bus_message *message)
{
    uint8_t type = 0;
    if (sd_bus_message_get_type(message, &type) < 0 || type != SD_BUS_MESSAGE_METHOD_CALL)
        return;
    m_loop.setDeadline(m_source, std::nullopt); // serving may take its time
    const auto served = qScopeGuard([this] { beginIdleTime(); });
    const auto textOf = [](const char *text) { return text ? QByteArray(text) : QByteArray(); };
    Request request{textOf(sd_bus_message_get_path(message)),
                    textOf(sd_bus_message_get_interface(message)),
                    textOf(sd_bus_message_get_member(message)),
                    {}};
    if (request.interface == busInterface && request.member == "Hello") {
        reply(message, {{}, {}, {QString::fromLatin1(uniqueName)}});
        return;
    }
    auto arguments = BusCodec::read(message, BusCodec::ownStream);
    if (!arguments && arguments.error().name == BusCodec::tooLarge)
        return drop();
    if (!arguments) {
        reply(message, Reply::error(SD_BUS_ERROR_INVALID_ARGS,
                                    QStringLiteral("arguments of these types are not known")));
        return;
    }
    request.arguments = *std::move(arguments);
    if (m_handler)
        reply(message, m_handler->serve(request));
}

void SdBusStream::reply(sd_bus_message *message, const Reply &reply)
{
    if (!m_bus || sd_bus_message_get_expect_reply(message) <= 0)
        return;
    if (!reply.errorName.isEmpty()) {
        sd_bus_reply_method_errorf(message, reply.errorName.constData(), "%s",
                                   reply.errorText.toUtf8().constData());
        return;
    }
    sd_bus_message *raw = nullptr;
    if (sd_bus_message_new_method_return(message, &raw) < 0)
        return;
    const Message answer(raw);
    if (const auto appended = BusCodec::append(answer.get(), reply.results, BusCodec::ownStream); appended)
        sd_bus_send(m_bus, answer.get(), nullptr);
    else
        sd_bus_reply_method_errorf(message, SD_BUS_ERROR_FAILED, "%s",
                                   appended.error().text.toUtf8().constData());
}

bool SdBusStream::hasHandedOver() const
{
    uint64_t queued = 0;
    return sd_bus_is_ready(m_bus) > 0 && sd_bus_get_n_queued_write(m_bus, &queued) >= 0 && queued == 0;
}

MessageStream::Reply SdBusStream::call(const Request &request, milliseconds requestTimeout,
                                       milliseconds replyTimeout)
{
    return exchange(request, steady_clock::now() + requestTimeout, replyTimeout);
}

MessageStream::Reply SdBusStream::callWithin(const Request &request, milliseconds limit)
{
    return exchange(request, steady_clock::now() + limit, {});
}

void SdBusStream::post(const Request &request, milliseconds limit)
{
    const auto self = shared_from_this();
    const auto deadline = steady_clock::now() + limit;
    const Message message = newCall(m_bus, request);
    sd_bus_message_set_expect_reply(message.get(), 0);
    if (const int error = sd_bus_send(m_bus, message.get(), nullptr); error < 0) {
        drop();
        raise(NSInvalidSendPortException, errorText(error));
    }
    settle();
    m_loop.waitUntil([&] { return !m_bus || hasHandedOver(); }, [&] { return deadline; });
    if (!m_bus)
        raise(NSInvalidSendPortException, QStringLiteral("the connection died"));
    if (!hasHandedOver())
        throw NotHandedOver();
}

MessageStream::Reply SdBusStream::exchange(const Request &request, StreamLoop::Moment deadline,
                                           std::optional<milliseconds> replyTimeout)
{
    const auto self = shared_from_this();
    const Message message = newCall(m_bus, request);
    Message answer;
    sd_bus_slot *rawSlot = nullptr;
    if (const int error = sd_bus_call_async(m_bus, &rawSlot, message.get(), keepReply, &answer, noTimeout);
        error < 0) {
        drop();
        raise(NSInvalidSendPortException, errorText(error));
    }
    Slot slot(rawSlot);
    settle();

    // Two deadlines in turn: one until the request has left this process, one for the answer.
    bool handedOver = false;
    const auto done = [&] {
        if (!handedOver && m_bus) {
            handedOver = hasHandedOver();
            if (handedOver && replyTimeout)
                deadline = steady_clock::now() + *replyTimeout;
        }
        return answer != nullptr || !m_bus;
    };
    m_loop.waitUntil(done, [&] { return deadline; });
    slot.reset();
    if (!answer) {
        if (!m_bus)
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

std::shared_ptr<MessageStream> MessageStream::open(const NSSocketPort &port, milliseconds limit)
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
    auto stream = SdBusStream::make(descriptor, SdBusStream::Side::Client);
    if (!stream)
        raise(NSInvalidSendPortException, QStringLiteral("the connection died"));
    return stream;
}
