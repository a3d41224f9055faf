// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusConnection.h"

#include "DozelyKit/core/dbus/linux/BusCodec_p.h"
#include "DozelyKit/core/dbus/linux/BusState_p.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <poll.h>
#include <unistd.h>

namespace dozely
{

namespace
{
constexpr char timeoutName[] = "org.freedesktop.DBus.Error.Timeout";
constexpr char failedName[] = "org.freedesktop.DBus.Error.Failed";

/// Waits until the bus has something to do, at most until the deadline. A negative errno value on failure.
int waitForBus(sd_bus *bus, const QDeadlineTimer &deadline)
{
    using std::chrono::microseconds;
    using std::chrono::nanoseconds;

    const int descriptor = sdBus().get_fd(bus);
    const int events = sdBus().get_events(bus);
    if (descriptor < 0 || events < 0)
        return std::min(descriptor, events);
    nanoseconds limit(std::max<qint64>(0, deadline.remainingTimeNSecs()));
    uint64_t due = UINT64_MAX; // CLOCK_MONOTONIC
    if (const int result = sdBus().get_timeout(bus, &due); result < 0)
        return result;
    if (due != UINT64_MAX) {
        timespec now{};
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        const nanoseconds passed = std::chrono::seconds(now.tv_sec) + nanoseconds(now.tv_nsec);
        limit = std::clamp(nanoseconds(microseconds(due)) - passed, nanoseconds(0), limit);
    }
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(limit);
    const timespec wait{static_cast<time_t>(whole.count()), static_cast<long>((limit - whole).count())};
    pollfd descriptors{descriptor, static_cast<short>(events), 0};
    return ::ppoll(&descriptors, 1, &wait, nullptr) < 0 && errno != EINTR ? -errno : 0;
}
} // namespace

Error busError(int result)
{
    return {qt_error_string(-result), failedName};
}

Result<BusConnection::Private::Message> BusConnection::Private::makeCall(const Member &method,
                                                                         const QByteArray &signature,
                                                                         const QVariantList &arguments)
{
    sd_bus_message *made = nullptr;
    const int result = sdBus().message_new_method_call(
        bus.get(), &made, method.destination.constData(), method.path.constData(),
        method.interface.isEmpty() ? nullptr : method.interface.constData(), method.name.constData());
    Message message(made);
    if (result < 0)
        return busError(result);
    if (const auto appended = BusCodec::append(made, signature, arguments); !appended)
        return Error{appended.error().text, failedName};
    return message;
}

BusConnection::Reply BusConnection::Private::valuesOf(sd_bus_message *reply)
{
    if (const sd_bus_error *error = sdBus().message_get_error(reply))
        return Error{QString::fromUtf8(error->message), error->name};
    auto values = BusCodec::read(reply);
    if (!values)
        return Error{values.error().text, failedName};
    return values;
}

BusConnection::Reply BusConnection::Private::replyTo(sd_bus_message *call, const QDeadlineTimer &deadline)
{
    Message reply;
    const auto keepReply = [](sd_bus_message *message, void *destination, sd_bus_error *) {
        static_cast<Message *>(destination)->reset(sdBus().message_ref(message));
        return 1;
    };
    sd_bus_slot *pending = nullptr;
    // The time-out of sd_bus_call_async begins only after authentication; the deadline covers both.
    int result = sdBus().call_async(bus.get(), &pending, call, keepReply, &reply, UINT64_MAX);
    const Slot slot(pending); // taken back when this returns early, so that no late reply finds `reply` gone
    while (result >= 0 && !reply) {
        // The bus may be busy with other messages all the time: the deadline is looked at in any case.
        if (deadline.hasExpired())
            return Error{"The bus did not answer in time.", timeoutName};
        result = pull();
        if (result == 0 && !reply)
            result = waitForBus(bus.get(), deadline);
    }
    if (result < 0)
        return busError(result);
    return valuesOf(reply.get());
}

BusConnection::BusConnection(std::shared_ptr<Private> state) : d(std::move(state)) {}

BusConnection::~BusConnection()
{
    d->abandon();
}

Result<std::unique_ptr<BusConnection>> BusConnection::open(Bus bus)
{
    if (!BusLibrary::open())
        return busError(-ELIBACC);
    sd_bus *opened = nullptr;
    const int result = bus == Bus::System ? sdBus().open_system(&opened) : sdBus().open_user(&opened);
    if (result < 0)
        return busError(result);
    auto state = std::make_shared<Private>();
    state->bus.reset(opened);
    return std::unique_ptr<BusConnection>(new BusConnection(std::move(state)));
}

QByteArray BusConnection::socketPath(Bus bus)
{
    const bool isSystem = bus == Bus::System;
    QByteArray addresses = qgetenv(isSystem ? "DBUS_SYSTEM_BUS_ADDRESS" : "DBUS_SESSION_BUS_ADDRESS");
    if (addresses.isEmpty() && isSystem)
        return "/run/dbus/system_bus_socket";
    if (addresses.isEmpty()) {
        const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
        return folder.isEmpty() ? folder : folder + "/bus";
    }
    constexpr char transport[] = "unix:";
    constexpr char key[] = "path=";
    for (const QByteArray &address : addresses.split(';')) {
        if (!address.startsWith(transport))
            continue;
        for (const QByteArray &pair : address.mid(sizeof transport - 1).split(',')) {
            if (pair.startsWith(key))
                return QByteArray::fromPercentEncoding(pair.mid(sizeof key - 1));
        }
    }
    return {};
}

BusConnection::Reply BusConnection::call(const Member &method, const QByteArray &signature,
                                         const QVariantList &arguments, const QDeadlineTimer &deadline)
{
    const auto message = d->makeCall(method, signature, arguments);
    if (!message)
        return message.error();
    auto reply = d->replyTo(message->get(), deadline);
    if (d->watch)
        d->rearm(); // what came meanwhile is delivered from the event loop
    return reply;
}

Result<QVariant> BusConnection::property(const Member &property, const QDeadlineTimer &deadline)
{
    const Member get{property.destination, property.path, "org.freedesktop.DBus.Properties", "Get"};
    const Reply reply = call(
        get, "ss", {QString::fromLatin1(property.interface), QString::fromLatin1(property.name)}, deadline);
    if (!reply)
        return reply.error();
    if (reply->size() != 1)
        return Error{"The answer holds no value.", failedName};
    return reply->constFirst();
}

Result<QVariantMap> BusConnection::properties(const Member &object, const QDeadlineTimer &deadline)
{
    const Member getAll{object.destination, object.path, "org.freedesktop.DBus.Properties", "GetAll"};
    const Reply reply = call(getAll, "s", {QString::fromLatin1(object.interface)}, deadline);
    if (!reply)
        return reply.error();
    return firstOf(reply).toMap();
}

Result<void> BusConnection::emitSignal(const QByteArray &path, const QByteArray &interface,
                                       const QByteArray &name, const QByteArray &signature,
                                       const QVariantList &arguments)
{
    sd_bus_message *made = nullptr;
    int result = sdBus().message_new_signal(d->bus.get(), &made, path.constData(), interface.constData(),
                                            name.constData());
    const Private::Message message(made);
    if (result < 0)
        return busError(result);
    if (const auto appended = BusCodec::append(made, signature, arguments); !appended)
        return Error{appended.error().text, failedName};
    result = sdBus().send(d->bus.get(), made, nullptr);
    if (result < 0)
        return busError(result);
    d->attachToEventLoop(); // what the socket did not take at once leaves from there
    return {};
}

QVariant BusConnection::firstOf(const Reply &reply)
{
    return reply ? reply->value(0) : QVariant();
}

QByteArray BusConnection::uniqueName() const
{
    if (sdBus().is_ready(d->bus.get()) <= 0)
        return {};
    const char *name = nullptr;
    return sdBus().get_unique_name(d->bus.get(), &name) < 0 ? QByteArray() : QByteArray(name);
}

void BusConnection::onDisconnected(std::function<void()> handler)
{
    d->onDisconnected = std::move(handler);
    d->attachToEventLoop();
}

BusDescriptor::BusDescriptor(int descriptor)
    : m_descriptor(descriptor < 0 ? nullptr : new int(descriptor), [](const int *held) {
          if (held)
              ::close(*held);
          delete held;
      })
{
}

int BusDescriptor::get() const
{
    return m_descriptor ? *m_descriptor : -1;
}

} // namespace dozely
