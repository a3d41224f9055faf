// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/StreamState_p.h"

#include "DozelyKit/communication/remoting/linux/PeerCredentials_p.h"
#include "DozelyKit/core/dbus/linux/BusCodec_p.h"

#include <QScopeGuard>

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
// The hello of clients that believe to talk to a bus; the name means nothing here.
constexpr const char *uniqueName = ":1.1";
constexpr const char *busInterface = "org.freedesktop.DBus";

/// The text of an error as D-Bus can carry it, within the limit of a message: a reply that cannot be sent
/// would leave the caller waiting, and one that is too large would cost him the stream.
QByteArray errorText(const QString &text)
{
    constexpr qsizetype longest = 64 << 10;
    QList<uint> characters = text.left(longest).toUcs4(); // with U+FFFD for half a surrogate pair
    for (uint &character : characters) {
        if (character == 0 || QChar::isNonCharacter(character))
            character = QChar::ReplacementCharacter;
    }
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()), characters.size())
        .toUtf8();
}
} // namespace

std::shared_ptr<State> State::make(int descriptor, Side side, const StreamOptions &options)
{
    const std::shared_ptr<State> stream(new State(descriptor, side, options));
    return stream->start() ? stream : nullptr;
}

State::Private(int descriptor, Side side, const StreamOptions &options)
    : loop(StreamLoop::ofThisThread()),
      peer(peerCredentials(descriptor)),
      m_side(side),
      m_options(options),
      m_descriptor(descriptor)
{
    m_source = loop.add(descriptor, POLLIN, this);
    if (side == Side::Server)
        loop.setDeadline(m_source, steady_clock::now() + authenticationLimit);
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
    if (bus)
        sd_bus_close_unref(std::exchange(bus, nullptr)); // the descriptor is the bus's
    else
        ::close(m_descriptor);
    m_descriptor = -1;
    if (m_feed >= 0)
        ::close(std::exchange(m_feed, -1));
}

bool State::isTrusted() const
{
    return m_options.trustsOwnUser && peer && (peer->userId == 0 || peer->userId == ::geteuid());
}

bool State::start()
{
    int input = m_descriptor;
    if (!isTrusted()) {
        std::array<int, 2> pair{};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, pair.data()) != 0)
            return false;
        m_feed = pair[0];
        input = pair[1];
        const auto claimed = peer ? std::optional<uid_t>(peer->userId) : std::nullopt;
        m_pump.emplace(m_descriptor, m_feed,
                       m_side == Side::Client ? HandshakeFilter::ofServer()
                                              : HandshakeFilter::ofClient(claimed));
    }
    if (sd_bus_new(&bus) < 0) {
        if (input != m_descriptor)
            ::close(input);
        return false;
    }
    sd_bus_set_fd(bus, input, m_descriptor); // the bus owns both from here
    sd_bus_negotiate_fds(bus, 0);            // descriptors of strangers are not wanted
    if (m_side == Side::Server) {
        sd_id128_t id;
        sd_id128_randomize(&id);
        sd_bus_set_server(bus, 1, id);
    }
    // The peer may have written already. Starting reads it: one that is gone or has sent garbage fails here.
    return pump() >= 0 && sd_bus_start(bus) >= 0;
}

int State::pump()
{
    return m_pump ? m_pump->pump() : 0;
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

void State::ready()
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

void State::deadlinePassed()
{
    const auto self = shared_from_this();
    drop();
}

int State::drain()
{
    if (const int moved = pump(); moved < 0)
        return moved;
    for (int i = 0; i < messagesPerTurn; ++i) {
        uint64_t queued = 0;
        if (sd_bus_get_n_queued_write(bus, &queued) >= 0 && queued > queuedReplies)
            return -ENOBUFS;
        sd_bus_message *raw = nullptr;
        const int result = sd_bus_process(bus, &raw);
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
        if (!bus)
            return 0;
    }
    loop.serviceLater(m_source);
    return 0;
}

void State::settle()
{
    if (!bus)
        return;
    const int events = sd_bus_get_events(bus);
    if (events >= 0)
        loop.setEvents(m_source, static_cast<short>(m_pump ? events | POLLIN : events));
    uint64_t reading = 0;
    if (sd_bus_get_n_queued_read(bus, &reading) >= 0 && reading > 0)
        loop.serviceLater(m_source);
    if (!isAuthenticated && sd_bus_is_ready(bus) > 0) {
        isAuthenticated = true;
        beginIdleTime();
    }
}

void State::beginIdleTime()
{
    if (m_side == Side::Server)
        loop.setDeadline(m_source, steady_clock::now() + m_options.idleLimit);
}

void State::serve(sd_bus_message *message)
{
    uint8_t type = 0;
    if (sd_bus_message_get_type(message, &type) < 0 || type != SD_BUS_MESSAGE_METHOD_CALL)
        return;
    loop.setDeadline(m_source, std::nullopt); // serving may take its time
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
    if (handler)
        reply(message, handler->serve(request));
}

void State::reply(sd_bus_message *message, const Reply &reply)
{
    if (!bus || sd_bus_message_get_expect_reply(message) <= 0)
        return;
    if (!reply.errorName.isEmpty()) {
        sd_bus_reply_method_errorf(message, reply.errorName.constData(), "%s",
                                   errorText(reply.errorText).constData());
        return;
    }
    sd_bus_message *raw = nullptr;
    if (sd_bus_message_new_method_return(message, &raw) < 0)
        return;
    const Message answer(raw);
    if (const auto appended = BusCodec::append(answer.get(), reply.results, BusCodec::ownStream); appended)
        sd_bus_send(bus, answer.get(), nullptr);
    else
        sd_bus_reply_method_errorf(message, SD_BUS_ERROR_FAILED, "%s",
                                   errorText(appended.error().text).constData());
}

} // namespace dozely
