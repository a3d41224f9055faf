// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusCall.h"

#include "DozelyKit/core/dbus/linux/BusCodec_p.h"
#include "DozelyKit/core/dbus/linux/BusState_p.h"

#include <utility>

namespace dozely
{

namespace
{
constexpr char failedName[] = "org.freedesktop.DBus.Error.Failed";
} // namespace

struct BusCall::Private {
    using Message = BusConnection::Private::Message;

    std::weak_ptr<BusConnection::Private> connection;
    Message message;
    QByteArray sender, path, interface, method, signature;
    bool isAnswered = false;

    Private(std::weak_ptr<BusConnection::Private> from, sd_bus_message *call)
        : connection(std::move(from)),
          message(sdBus().message_ref(call)),
          sender(sdBus().message_get_sender(call)),
          path(sdBus().message_get_path(call)),
          interface(sdBus().message_get_interface(call)),
          method(sdBus().message_get_member(call)),
          signature(sdBus().message_get_signature(call, true))
    {
    }
    ~Private() { refuse({QStringLiteral("The call was not answered."), failedName}); }
    Private(const Private &) = delete;
    Private &operator=(const Private &) = delete;

    void send(sd_bus_message *reply)
    {
        const auto open = connection.lock();
        isAnswered = true;
        if (!open || !open->watch || sdBus().message_get_expect_reply(message.get()) <= 0)
            return;
        sdBus().send(open->bus.get(), reply, nullptr);
        open->attachToEventLoop(); // what the socket did not take at once leaves from there
    }

    void refuse(const Error &error)
    {
        if (isAnswered)
            return;
        const QByteArray text = error.text.toUtf8();
        for (const QByteArray &name : {error.name, QByteArray(failedName)}) {
            const sd_bus_error refusal{name.isEmpty() ? failedName : name.constData(), text.constData(), 0};
            sd_bus_message *made = nullptr;
            const int result = sdBus().message_new_method_error(message.get(), &made, &refusal);
            const Message reply(made);
            if (result >= 0)
                return send(made);
        }
    }
};

BusCall::BusCall(std::shared_ptr<Private> state) : d(std::move(state)) {}

const QByteArray &BusCall::sender() const
{
    return d->sender;
}

const QByteArray &BusCall::path() const
{
    return d->path;
}

const QByteArray &BusCall::interface() const
{
    return d->interface;
}

const QByteArray &BusCall::method() const
{
    return d->method;
}

const QByteArray &BusCall::signature() const
{
    return d->signature;
}

Result<QVariantList> BusCall::arguments(qsizetype most) const
{
    sdBus().message_rewind(d->message.get(), true);
    return BusCodec::read(d->message.get(), most);
}

void BusCall::answer(const QByteArray &signature, const QVariantList &values) const
{
    if (d->isAnswered)
        return;
    sd_bus_message *made = nullptr;
    const int result = sdBus().message_new_method_return(d->message.get(), &made);
    const Private::Message reply(made);
    if (result < 0)
        return d->refuse(busError(result));
    if (const auto appended = BusCodec::append(made, signature, values); !appended)
        return d->refuse({appended.error().text, failedName});
    d->send(made);
}

void BusCall::refuse(const Error &error) const
{
    d->refuse(error);
}

void BusConnection::Private::queueCall(sd_bus_message *message)
{
    const BusCall call(std::make_shared<BusCall::Private>(weak_from_this(), message));
    if (queue.size() >= maximumQueue)
        return call.refuse({QStringLiteral("Too many calls at a time."),
                            QByteArrayLiteral("org.freedesktop.DBus.Error.LimitsExceeded")});
    queue.emplace_back([this, call] {
        if (const auto handler = onCall) // a copy: it may destroy the connection
            handler(call);
    });
}

void BusConnection::serve(std::function<void(const BusCall &)> handler)
{
    d->onCall = std::move(handler);
    d->attachToEventLoop();
}

} // namespace dozely
