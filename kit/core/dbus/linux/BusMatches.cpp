// SPDX-License-Identifier: MIT
//
// The part of BusConnection that hears signals and follows the owners of names. Both are matches of sd-bus,
// which tells the bus what is wanted, keeps off what is not, and calls us from within sd_bus_process; what it
// calls takes a note and nothing else.
#include "DozelyKit/core/dbus/linux/BusCodec_p.h"
#include "DozelyKit/core/dbus/linux/BusState_p.h"

#include <QDebug>

#include <utility>

namespace dozely
{

namespace
{
constexpr char busName[] = "org.freedesktop.DBus";
constexpr char busPath[] = "/org/freedesktop/DBus";
constexpr char ownerSignal[] = "NameOwnerChanged";

/// A name that has an owner: neither a unique name nor the bus itself.
bool isWellKnown(const QByteArray &name)
{
    return !name.isEmpty() && !name.startsWith(':') && name != busName;
}

/// Whether sd-bus and the bus take a text between quotes for the same one: they differ about what a backslash
/// protects.
bool isPlain(const QByteArray &text)
{
    return !text.contains('\'') && !text.contains('\\') && !text.contains('\0');
}

/// Empty when a field is no name at all.
QByteArray ruleFor(const BusConnection::SignalSource &source)
{
    QByteArray rule = "type='signal'";
    const std::pair<const char *, const QByteArray &> fields[] = {{"sender", source.sender},
                                                                  {"path", source.path},
                                                                  {"interface", source.interface},
                                                                  {"member", source.name}};
    for (const auto &[key, value] : fields) {
        if (!isPlain(value))
            return {};
        if (!value.isEmpty())
            rule += QByteArray(",") + key + "='" + value + "'";
    }
    const QByteArray text = source.firstText.toUtf8();
    if (!source.firstText.isNull() && isPlain(text)) // else the listener looks at what comes
        rule += ",arg0='" + text + "'";
    return rule;
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

BusConnection::Private::Slot BusConnection::Private::match(const SignalSource &source,
                                                           sd_bus_message_handler_t heard, void *data)
{
    const QByteArray rule = ruleFor(source);
    // Without a handler of our own, a bus that refuses a rule would cost the connection.
    const auto installed = [](sd_bus_message *, void *, sd_bus_error *) { return 1; };
    sd_bus_slot *slot = nullptr;
    if (!rule.isEmpty())
        sdBus().add_match_async(bus.get(), &slot, rule.constData(), heard, installed, data);
    return Slot(slot);
}

int BusConnection::Private::Listener::matched(sd_bus_message *, void *data, sd_bus_error *)
{
    const auto *const listener = static_cast<Listener *>(data);
    listener->connection->matched.insert(listener->id);
    return 0; // others may hear it too
}

bool BusConnection::Private::isFrom(const Listener &listener, const QByteArray &sender) const
{
    // To sd-bus, a unique name may be the owner of any well-known one: what is sent to us alone, the bus lets
    // through whoever sent it.
    if (listener.name.isEmpty())
        return listener.source.sender.isEmpty() || listener.source.sender == sender;
    return names.at(listener.name).owner == sender; // none as long as the name has no owner
}

void BusConnection::Private::queueSignal(sd_bus_message *message, std::set<quint64> hearers)
{
    Signal signal{sdBus().message_get_sender(message),
                  sdBus().message_get_path(message),
                  sdBus().message_get_interface(message),
                  sdBus().message_get_member(message),
                  {}};
    std::erase_if(hearers, [&](quint64 id) { return !isFrom(listeners.at(id), signal.sender); });
    if (hearers.empty())
        return; // sent to us alone by a stranger: not even read
    auto arguments = BusCodec::read(message);
    if (!arguments)
        return; // damaged, or with a type that nobody here hears
    signal.arguments = *std::move(arguments);
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

void BusConnection::Private::queueOwner(quint64 id, const QByteArray &owner)
{
    queue.emplace_back([this, id, owner] {
        const auto found = listeners.find(id);
        if (found == listeners.end())
            return;
        const OwnerHandler handler = found->second.onOwner;
        handler(owner);
    });
}

void BusConnection::Private::setOwner(Name &name, const QByteArray &owner)
{
    if (name.owner == owner)
        return;
    name.owner = owner;
    for (const auto &[id, listener] : listeners) {
        if (listener.onOwner && listener.name == name.name)
            queueOwner(id, owner);
    }
}

int BusConnection::Private::Name::changed(sd_bus_message *message, void *data, sd_bus_error *)
{
    auto *const name = static_cast<Name *>(data);
    const char *owner = nullptr;
    if (qstrcmp(sdBus().message_get_sender(message), busName) == 0 && // see isFrom
        sdBus().message_read(message, "sss", nullptr, nullptr, &owner) >= 0)
        name->connection->setOwner(*name, owner);
    return 0;
}

int BusConnection::Private::Name::answered(sd_bus_message *reply, void *data, sd_bus_error *)
{
    auto *const name = static_cast<Name *>(data);
    const char *owner = nullptr;
    if (sdBus().message_is_method_error(reply, nullptr) > 0 || sdBus().message_read(reply, "s", &owner) < 0)
        owner = ""; // the name has none
    name->connection->setOwner(*name, owner);
    return 1;
}

void BusConnection::Private::follow(const QByteArray &name)
{
    if (name.isEmpty())
        return;
    Name &followed = names[name];
    if (followed.users++ > 0)
        return;
    followed.connection = this;
    followed.name = name;
    followed.changes =
        match({busName, busPath, busName, ownerSignal, QString::fromLatin1(name)}, Name::changed, &followed);
    // The bus answers in order: the owner is known before the first signal that is asked for after this.
    const auto question =
        makeCall({busName, busPath, busName, "GetNameOwner"}, "s", {QString::fromLatin1(name)});
    sd_bus_slot *slot = nullptr;
    if (question)
        sdBus().call_async(bus.get(), &slot, question->get(), Name::answered, &followed, UINT64_MAX);
    followed.question.reset(slot);
}

void BusConnection::Private::unfollow(const QByteArray &name)
{
    const auto found = names.find(name);
    if (found != names.end() && --found->second.users == 0)
        names.erase(found);
}

quint64 BusConnection::Private::listen(const SignalSource &source, const QByteArray &name,
                                       SignalHandler onSignal, OwnerHandler onOwner)
{
    const quint64 id = ++lastListener;
    follow(name);
    Listener &listener =
        listeners.try_emplace(id, Listener{this, id, source, name, std::move(onSignal), std::move(onOwner)})
            .first->second;
    if (listener.onSignal)
        listener.match = match(source, Listener::matched, &listener);
    attachToEventLoop();
    return id;
}

void BusConnection::Private::stopListening(quint64 id)
{
    const auto node = listeners.extract(id); // which ends its match
    if (!node.empty())
        unfollow(node.mapped().name);
}

std::unique_ptr<BusConnection::Subscription> BusConnection::subscribe(const SignalSource &source,
                                                                      SignalHandler handler)
{
    const QByteArray name = isWellKnown(source.sender) ? source.sender : QByteArray();
    return std::make_unique<Private::Hearing>(d, d->listen(source, name, std::move(handler), {}));
}

std::unique_ptr<BusConnection::Subscription> BusConnection::watchOwner(const QByteArray &name,
                                                                       OwnerHandler handler)
{
    const quint64 id = d->listen({}, name, {}, std::move(handler));
    if (const auto known = d->names.find(name); known != d->names.end() && known->second.owner) {
        d->queueOwner(id, *known->second.owner); // nobody will ask the bus again
        d->rearm();
    }
    return std::make_unique<Private::Hearing>(d, id);
}

} // namespace dozely
