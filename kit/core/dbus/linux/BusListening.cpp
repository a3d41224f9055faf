// SPDX-License-Identifier: MIT
//
// The part of BusConnection that works in the event loop: it pulls messages, runs what they have put into the
// queue, and knows the answers that nobody waits for.
#include "DozelyKit/core/dbus/linux/BusState_p.h"

#include <algorithm>
#include <utility>

namespace dozely
{

namespace
{
constexpr int messagesInATurn = 64; // then others of this thread have theirs
} // namespace

/// An asynchronous call on its way. It belongs to the slot of its reply.
struct BusConnection::Private::LaterCall {
    std::weak_ptr<Private> connection;
    ReplyHandler handler;

    static void destroy(void *data)
    {
        const std::unique_ptr<LaterCall> call(static_cast<LaterCall *>(data));
        if (const auto connection = call->connection.lock())
            connection->laterCalls.erase(call.get());
    }

    static int answered(sd_bus_message *reply, void *data, sd_bus_error *)
    {
        auto *const call = static_cast<LaterCall *>(data);
        if (const auto connection = call->connection.lock()) {
            connection->laterCalls.erase(call);
            connection->queue.emplace_back(
                [handler = std::move(call->handler), values = valuesOf(reply)] { handler(values); });
        }
        return 1;
    }
};

int BusConnection::Private::pull()
{
    sd_bus_message *pulled = nullptr;
    const int result = sdBus().process(bus.get(), &pulled);
    const Message message(pulled);
    const std::set<quint64> hearers = std::exchange(matched, {});
    if (message && !hearers.empty())
        queueSignal(pulled, hearers);
    else if (message && onCall && sdBus().message_is_method_call(pulled, nullptr, nullptr) > 0)
        queueCall(pulled); // anything else, a stranger's call where nobody serves any too, is passed over
    return result;
}

void BusConnection::callLater(const Member &method, const QByteArray &signature,
                              const QVariantList &arguments, std::chrono::milliseconds timeout,
                              ReplyHandler handler)
{
    const auto message = d->makeCall(method, signature, arguments);
    sd_bus_slot *slot = nullptr;
    int result = 0;
    if (message) {
        auto call = std::make_unique<Private::LaterCall>(Private::LaterCall{d, handler});
        const auto limit = std::chrono::duration_cast<std::chrono::microseconds>(timeout).count();
        result = sdBus().call_async(d->bus.get(), &slot, message->get(), Private::LaterCall::answered,
                                    call.get(), static_cast<uint64_t>(limit));
        if (result >= 0) {
            sdBus().slot_set_destroy_callback(slot, Private::LaterCall::destroy);
            sdBus().slot_set_floating(slot, 1);
            sdBus().slot_unref(slot);
            d->laterCalls.insert(call.release());
        }
    }
    if (!slot)
        d->queue.emplace_back([handler = std::move(handler),
                               error = message ? busError(result) : message.error()] { handler(error); });
    d->attachToEventLoop();
}

void BusConnection::Private::attachToEventLoop()
{
    if (!watch)
        watch = std::make_unique<DescriptorWatch>([this] { turn(); });
    rearm();
}

void BusConnection::Private::rearm()
{
    using Moment = DescriptorWatch::Moment;
    const int descriptor = disconnected ? -1 : sdBus().get_fd(bus.get());
    const int events = descriptor < 0 ? 0 : sdBus().get_events(bus.get());
    watch->watch(descriptor, static_cast<short>(std::max(events, 0)));
    uint64_t due = UINT64_MAX; // CLOCK_MONOTONIC, in microseconds
    const bool isLost = !disconnected && (descriptor < 0 || events < 0);
    if (!queue.empty() || isLost)
        watch->setDeadline(Moment::min());
    else if (!disconnected && sdBus().get_timeout(bus.get(), &due) >= 0 && due != UINT64_MAX)
        watch->setDeadline(Moment(std::chrono::microseconds(due)));
    else
        watch->setDeadline(std::nullopt);
}

void BusConnection::Private::disconnect()
{
    disconnected = true;
    watch->watch(-1, 0);
    sdBus().close(bus.get()); // calls from now on fail at once
    const Reply failure = Error{"The bus has gone away.", "org.freedesktop.DBus.Error.NoReply"};
    for (LaterCall *call : std::exchange(laterCalls, {}))
        queue.emplace_back([handler = std::move(call->handler), failure] { handler(failure); });
    for (auto &[name, state] : names)
        setOwner(state, "");
    if (onDisconnected)
        queue.emplace_back(std::exchange(onDisconnected, nullptr));
}

void BusConnection::Private::turn()
{
    const auto self = shared_from_this(); // a handler may destroy the connection
    int result = 1;
    for (int i = 0; !disconnected && result > 0 && i < messagesInATurn; ++i)
        result = pull();
    if (!disconnected && result < 0)
        disconnect();
    queueOverflowed = false;
    for (int i = 0; i < messagesInATurn && !queue.empty(); ++i) {
        const auto handler = std::move(queue.front());
        queue.pop_front();
        handler();
    }
    if (watch)
        rearm();
}

void BusConnection::Private::abandon()
{
    watch.reset();
    sdBus().close(bus.get()); // else each match would be taken back by a message of its own
    onCall = {};
    listeners.clear();
    names.clear();
    queue.clear();
}

} // namespace dozely
