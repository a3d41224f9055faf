// SPDX-License-Identifier: MIT
#include "platform/linux/BusConnection_p.h"

#include "platform/linux/BusValue_p.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <poll.h>
#include <systemd/sd-bus.h>

namespace
{
struct ReleaseBus {
    // Not the variant that flushes: that one waits for a peer which may be mute.
    void operator()(sd_bus *bus) const { sd_bus_close_unref(bus); }
};
struct ReleaseMessage {
    void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
};
struct ReleaseSlot {
    void operator()(sd_bus_slot *slot) const { sd_bus_slot_unref(slot); }
};
using BusPointer = std::unique_ptr<sd_bus, ReleaseBus>;
using Message = std::unique_ptr<sd_bus_message, ReleaseMessage>;
using Slot = std::unique_ptr<sd_bus_slot, ReleaseSlot>;

constexpr char timeoutName[] = "org.freedesktop.DBus.Error.Timeout";
constexpr char failedName[] = "org.freedesktop.DBus.Error.Failed";

void tell(BusConnection::Failure *failure, const QByteArray &name, const QString &text)
{
    if (failure)
        *failure = {name, text};
}

void tell(BusConnection::Failure *failure, int result)
{
    tell(failure, failedName, qt_error_string(-result));
}

int keepReply(sd_bus_message *message, void *destination, sd_bus_error *)
{
    static_cast<Message *>(destination)->reset(sd_bus_message_ref(message));
    return 1;
}

/// Waits until the bus has something to do, at most until the deadline. A negative errno value on failure.
int waitForBus(sd_bus *bus, const QDeadlineTimer &deadline)
{
    using std::chrono::microseconds;
    using std::chrono::nanoseconds;

    const int descriptor = sd_bus_get_fd(bus);
    const int events = sd_bus_get_events(bus);
    if (descriptor < 0 || events < 0)
        return std::min(descriptor, events);
    nanoseconds limit(std::max<qint64>(0, deadline.remainingTimeNSecs()));
    uint64_t due = UINT64_MAX; // CLOCK_MONOTONIC
    if (const int result = sd_bus_get_timeout(bus, &due); result < 0)
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

struct BusConnection::Private {
    BusPointer bus;

    /// Sends `call` and serves the bus until its reply is there. Absent, and `failure` filled in, on failure.
    std::optional<QVariantList> replyTo(sd_bus_message *call, const QDeadlineTimer &deadline,
                                        Failure *failure);
};

std::optional<QVariantList> BusConnection::Private::replyTo(sd_bus_message *call,
                                                            const QDeadlineTimer &deadline, Failure *failure)
{
    Message reply;
    sd_bus_slot *pending = nullptr;
    // The time-out of sd_bus_call_async begins only after authentication; the deadline covers both.
    int result = sd_bus_call_async(bus.get(), &pending, call, keepReply, &reply, UINT64_MAX);
    const Slot slot(pending); // taken back when this returns early, so that no late reply finds `reply` gone
    while (result >= 0 && !reply) {
        // The bus may be busy with other messages all the time: the deadline is looked at in any case.
        if (deadline.hasExpired()) {
            tell(failure, timeoutName, "The bus did not answer in time.");
            return std::nullopt;
        }
        result = sd_bus_process(bus.get(), nullptr);
        if (result == 0 && !reply)
            result = waitForBus(bus.get(), deadline);
    }
    if (result < 0) {
        tell(failure, result);
        return std::nullopt;
    }
    if (const sd_bus_error *error = sd_bus_message_get_error(reply.get())) {
        tell(failure, error->name, QString::fromUtf8(error->message));
        return std::nullopt;
    }
    QVariantList values;
    if ((result = BusValue::readAll(reply.get(), values)) < 0) {
        tell(failure, result);
        return std::nullopt;
    }
    return values;
}

BusConnection::BusConnection(std::unique_ptr<Private> state) : d(std::move(state)) {}

BusConnection::~BusConnection() = default;

std::unique_ptr<BusConnection> BusConnection::open(Bus bus, Failure *failure)
{
    sd_bus *opened = nullptr;
    const int result = bus == Bus::System ? sd_bus_open_system(&opened) : sd_bus_open_user(&opened);
    if (result < 0) {
        tell(failure, result);
        return nullptr;
    }
    auto state = std::make_unique<Private>();
    state->bus.reset(opened);
    return std::unique_ptr<BusConnection>(new BusConnection(std::move(state)));
}

std::optional<QVariantList> BusConnection::call(const Member &method, const QByteArray &signature,
                                                const QVariantList &arguments, const QDeadlineTimer &deadline,
                                                Failure *failure)
{
    sd_bus_message *made = nullptr;
    int result = sd_bus_message_new_method_call(d->bus.get(), &made, method.destination.constData(),
                                                method.path.constData(), method.interface.constData(),
                                                method.name.constData());
    const Message message(made);
    if (result >= 0)
        result = BusValue::append(made, signature, arguments);
    if (result < 0) {
        tell(failure, result);
        return std::nullopt;
    }
    return d->replyTo(made, deadline, failure);
}

std::optional<QVariant> BusConnection::property(const Member &property, const QDeadlineTimer &deadline,
                                                Failure *failure)
{
    const Member get{property.destination, property.path, "org.freedesktop.DBus.Properties", "Get"};
    const auto values =
        call(get, "ss", {QString::fromLatin1(property.interface), QString::fromLatin1(property.name)},
             deadline, failure);
    if (!values)
        return std::nullopt;
    if (values->size() != 1) {
        tell(failure, failedName, "The answer holds no value.");
        return std::nullopt;
    }
    return values->constFirst();
}
