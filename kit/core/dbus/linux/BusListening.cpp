// SPDX-License-Identifier: MIT
//
// The part of BusConnection that hears: signals, the owners of names, and answers that nobody waits for.
#include "DozelyKit/core/dbus/linux/BusCodec_p.h"
#include "DozelyKit/core/dbus/linux/BusState_p.h"

#include <QDebug>

#include <algorithm>
#include <utility>
#include <vector>

namespace
{
constexpr char busName[] = "org.freedesktop.DBus";
constexpr char busPath[] = "/org/freedesktop/DBus";
constexpr char ownerSignal[] = "NameOwnerChanged";
constexpr int messagesInATurn = 64; // then others of this thread have theirs

/// A name that has an owner: neither a unique name nor the bus itself.
bool isWellKnown(const QByteArray &name)
{
    return !name.isEmpty() && !name.startsWith(':') && name != busName;
}

void appendToRule(QByteArray &rule, const char *key, const QByteArray &value)
{
    if (value.isEmpty())
        return;
    QByteArray quoted = value;
    quoted.replace('\'', "'\\''"); // a quote within quotes, as the D-Bus specification writes it
    rule += QByteArray(",") + key + "='" + quoted + "'";
}

QByteArray ruleFor(const BusConnection::SignalSource &source)
{
    QByteArray rule = "type='signal'";
    appendToRule(rule, "sender", source.sender);
    appendToRule(rule, "path", source.path);
    appendToRule(rule, "interface", source.interface);
    appendToRule(rule, "member", source.name);
    if (!source.firstText.isNull()) {
        QByteArray text = source.firstText.toUtf8();
        rule += ",arg0='" + text.replace('\'', "'\\''") + "'";
    }
    return rule;
}

QByteArray ownerRule(const QByteArray &name)
{
    return ruleFor({busName, busPath, busName, ownerSignal, QString::fromLatin1(name)});
}

bool fits(const QByteArray &wanted, const QByteArray &found)
{
    return wanted.isEmpty() || wanted == found;
}
} // namespace

/// Takes its listener away when it goes.
class BusConnection::Private::Hearing : public Subscription
{
public:
    Hearing(std::weak_ptr<Private> connection, quint64 id) : m_connection(std::move(connection)), m_id(id) {}
    ~Hearing() override
    {
        if (const auto connection = m_connection.lock())
            connection->stopListening(m_id);
    }

private:
    std::weak_ptr<Private> m_connection;
    quint64 m_id;
};

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
        Failure failure;
        auto values = valuesOf(reply, &failure);
        if (const auto connection = call->connection.lock()) {
            connection->laterCalls.erase(call);
            connection->queue.emplace_back([handler = std::move(call->handler), values = std::move(values),
                                            failure] { handler(values, failure); });
        }
        return 1;
    }
};

int BusConnection::Private::pull()
{
    sd_bus_message *pulled = nullptr;
    const int result = sd_bus_process(bus.get(), &pulled);
    const Message message(pulled);
    if (message && sd_bus_message_is_signal(pulled, nullptr, nullptr) > 0)
        queueSignal(pulled);
    return result;
}

bool BusConnection::Private::isHeardBy(const Listener &listener, const Signal &signal) const
{
    const SignalSource &source = listener.source;
    QByteArray sender = source.sender;
    if (isWellKnown(sender)) {
        sender = names.at(sender).owner;
        if (sender.isEmpty())
            return false; // the name has no owner: whoever sent this, it was somebody else
    }
    return listener.onSignal && fits(sender, signal.sender) && fits(source.path, signal.path) &&
           fits(source.interface, signal.interface) && fits(source.name, signal.name);
}

void BusConnection::Private::queueSignal(sd_bus_message *message)
{
    Signal signal{sd_bus_message_get_sender(message),
                  sd_bus_message_get_path(message),
                  sd_bus_message_get_interface(message),
                  sd_bus_message_get_member(message),
                  {}};
    const bool tellsOwner = signal.sender == busName && signal.name == ownerSignal;
    std::vector<quint64> hearers;
    for (const auto &[id, listener] : listeners)
        if (isHeardBy(listener, signal))
            hearers.push_back(id);
    if (hearers.empty() && !tellsOwner)
        return; // sent to us alone by a stranger: not even read
    auto arguments = BusCodec::read(message, BusCodec::machineBus);
    if (!arguments)
        return; // damaged, or with a type that nobody here hears
    signal.arguments = *std::move(arguments);
    if (tellsOwner && signal.arguments.size() == 3)
        setOwner(signal.arguments[0].toString().toLatin1(), signal.arguments[2].toString().toLatin1());
    std::erase_if(hearers, [&](quint64 id) {
        const QString &text = listeners.at(id).source.firstText;
        return !text.isNull() && signal.arguments.value(0) != QVariant(text);
    });
    if (hearers.empty())
        return;
    if (queue.size() >= maximumQueue) {
        if (!std::exchange(queueOverflowed, true))
            qWarning("Too many signals from the bus: some are not delivered.");
        return;
    }
    queue.emplace_back([this, signal = std::move(signal), hearers = std::move(hearers)] {
        for (const quint64 id : hearers) {
            const auto listener = listeners.find(id);
            if (listener == listeners.end())
                continue; // gone while it waited
            const SignalHandler handler = listener->second.onSignal;
            handler(signal);
        }
    });
}

void BusConnection::Private::tellOwnerHandlers(const QByteArray &name)
{
    const QByteArray owner = names[name].owner;
    for (const auto &[id, listener] : listeners) {
        if (!listener.onOwner || listener.name != name)
            continue;
        queue.emplace_back([this, id = id, owner] {
            const auto found = listeners.find(id);
            if (found == listeners.end())
                return;
            const OwnerHandler handler = found->second.onOwner;
            handler(owner);
        });
    }
}

void BusConnection::Private::setOwner(const QByteArray &name, const QByteArray &owner)
{
    const auto found = names.find(name);
    if (found == names.end() || (found->second.isKnown && found->second.owner == owner))
        return;
    found->second.isKnown = true;
    found->second.owner = owner;
    tellOwnerHandlers(name);
}

void BusConnection::Private::tellBus(const char *operation, const QByteArray &rule)
{
    const Message message =
        makeCall({busName, busPath, busName, operation}, "s", {QString::fromUtf8(rule)}, nullptr);
    if (message) {
        sd_bus_message_set_expect_reply(message.get(), 0);
        sd_bus_send(bus.get(), message.get(), nullptr);
    }
}

void BusConnection::Private::follow(const QByteArray &name)
{
    if (name.isEmpty() || names[name].users++ > 0)
        return;
    tellBus("AddMatch", ownerRule(name));
    // The bus answers in order: the owner is known before the first signal that is asked for after this.
    const Message question =
        makeCall({busName, busPath, busName, "GetNameOwner"}, "s", {QString::fromLatin1(name)}, nullptr);
    struct Question {
        std::weak_ptr<Private> connection;
        QByteArray name;
    };
    auto *const asked = new Question{weak_from_this(), name};
    const auto answered = [](sd_bus_message *reply, void *data, sd_bus_error *) {
        const auto *const question = static_cast<Question *>(data);
        const auto values = valuesOf(reply, nullptr); // an error: the name has no owner
        if (const auto connection = question->connection.lock())
            connection->setOwner(question->name,
                                 values.value_or(QVariantList()).value(0).toString().toLatin1());
        return 1;
    };
    sd_bus_slot *slot = nullptr;
    if (!question || sd_bus_call_async(bus.get(), &slot, question.get(), answered, asked, UINT64_MAX) < 0) {
        delete asked;
        return;
    }
    sd_bus_slot_set_destroy_callback(slot, [](void *data) { delete static_cast<Question *>(data); });
    sd_bus_slot_set_floating(slot, 1);
    sd_bus_slot_unref(slot);
}

void BusConnection::Private::unfollow(const QByteArray &name)
{
    const auto found = names.find(name);
    if (found == names.end() || --found->second.users > 0)
        return;
    names.erase(found);
    tellBus("RemoveMatch", ownerRule(name));
}

quint64 BusConnection::Private::listen(Listener listener)
{
    const quint64 id = ++lastListener;
    follow(listener.name);
    if (!listener.rule.isEmpty())
        tellBus("AddMatch", listener.rule);
    listeners.emplace(id, std::move(listener));
    attachToEventLoop();
    return id;
}

void BusConnection::Private::stopListening(quint64 id)
{
    const auto node = listeners.extract(id);
    if (node.empty())
        return;
    if (!node.mapped().rule.isEmpty())
        tellBus("RemoveMatch", node.mapped().rule);
    unfollow(node.mapped().name);
}

std::unique_ptr<BusConnection::Subscription> BusConnection::subscribe(const SignalSource &source,
                                                                      SignalHandler handler)
{
    const QByteArray name = isWellKnown(source.sender) ? source.sender : QByteArray();
    const quint64 id = d->listen({source, ruleFor(source), name, std::move(handler), {}});
    return std::make_unique<Private::Hearing>(d, id);
}

std::unique_ptr<BusConnection::Subscription> BusConnection::watchOwner(const QByteArray &name,
                                                                       OwnerHandler handler)
{
    const quint64 id = d->listen({{}, {}, name, {}, std::move(handler)});
    if (const auto known = d->names.find(name); known != d->names.end() && known->second.isKnown) {
        d->tellOwnerHandlers(name); // nobody will ask the bus again
        d->rearm();
    }
    return std::make_unique<Private::Hearing>(d, id);
}

void BusConnection::callLater(const Member &method, const QByteArray &signature,
                              const QVariantList &arguments, std::chrono::milliseconds timeout,
                              ReplyHandler handler)
{
    Failure failure;
    const Private::Message message = d->makeCall(method, signature, arguments, &failure);
    sd_bus_slot *slot = nullptr;
    if (message) {
        auto call = std::make_unique<Private::LaterCall>(Private::LaterCall{d, handler});
        const auto limit = std::chrono::duration_cast<std::chrono::microseconds>(timeout).count();
        const int result = sd_bus_call_async(d->bus.get(), &slot, message.get(), Private::LaterCall::answered,
                                             call.get(), static_cast<uint64_t>(limit));
        if (result >= 0) {
            sd_bus_slot_set_destroy_callback(slot, Private::LaterCall::destroy);
            sd_bus_slot_set_floating(slot, 1);
            sd_bus_slot_unref(slot);
            d->laterCalls.insert(call.release());
        } else {
            tellBusFailure(&failure, result);
        }
    }
    if (!slot)
        d->queue.emplace_back([handler = std::move(handler), failure] { handler(std::nullopt, failure); });
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
    const int descriptor = disconnected ? -1 : sd_bus_get_fd(bus.get());
    const int events = descriptor < 0 ? 0 : sd_bus_get_events(bus.get());
    watch->watch(descriptor, static_cast<short>(std::max(events, 0)));
    uint64_t due = UINT64_MAX; // CLOCK_MONOTONIC, in microseconds
    const bool isLost = !disconnected && (descriptor < 0 || events < 0);
    if (!queue.empty() || isLost)
        watch->setDeadline(Moment::min());
    else if (!disconnected && sd_bus_get_timeout(bus.get(), &due) >= 0 && due != UINT64_MAX)
        watch->setDeadline(Moment(std::chrono::microseconds(due)));
    else
        watch->setDeadline(std::nullopt);
}

void BusConnection::Private::disconnect()
{
    disconnected = true;
    watch->watch(-1, 0);
    sd_bus_close(bus.get()); // calls from now on fail at once
    const Failure failure{"org.freedesktop.DBus.Error.NoReply", "The bus has gone away."};
    for (LaterCall *call : std::exchange(laterCalls, {}))
        queue.emplace_back([handler = std::move(call->handler), failure] { handler(std::nullopt, failure); });
    for (auto &[name, state] : names)
        setOwner(name, {});
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
    listeners.clear();
    queue.clear();
    watch.reset();
}
