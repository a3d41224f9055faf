// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusCall.h"
#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/dbus/BusDescription.h"
#include "DozelyKit/core/foundation/Export.h"

#include <functional>
#include <memory>

namespace dozely
{

class Clock;

/// One object on a bus, under a name of our own there: what other programs call. Answers by itself what every
/// object answers (introspection, properties, a call that does not fit its description), and hands on the
/// rest.
///
///     BusObject door(BusConnection::Bus::System, {"com.example", "/com/example", description}, handlers);
///     door.setProperties({{"Version", "1"}});
///     door.keepThere(Port<Clock>::current());
///
/// While the bus is away nothing happens; once it is back the object is there again. While another program
/// has the name, the object waits behind it.
///
/// Handlers are called from the event loop, and may do anything but destroy the object.
///
/// THREADING: one thread, which needs an event loop. BLOCKING: never.
class DOZELYKIT_EXPORT BusObject
{
public:
    struct Place {
        QByteArray name; ///< The well-known name that is owned.
        QByteArray path;
        BusDescription description; ///< Of its one interface.
    };

    struct Handlers {
        /// A method of the description was called, with arguments of its types. Answered by `answer` or
        /// BusCall::refuse, now or later.
        std::function<void(const BusCall &call, const QVariantList &arguments)> call;
        /// Properties are about to be read: the last moment to set them. May be empty.
        std::function<void()> willRead = {};
        /// The bus is there (again), and the connection may be used.
        std::function<void(BusConnection &bus)> opened = {};
        /// The name cannot be had now: a clause for the log. Once for each bus.
        std::function<void(const QString &why)> refused = {};
        /// The bus is gone. What is unanswered stays so.
        std::function<void()> closed = {};
    };

    /// So much a call may be worth, in bytes; a larger one is refused.
    static constexpr qsizetype largestCall = 1 << 20;

    BusObject(BusConnection::Bus bus, const Place &place, Handlers handlers);
    ~BusObject();
    BusObject(const BusObject &) = delete;
    BusObject &operator=(const BusObject &) = delete;

    /// Puts the object on the bus, and there again whenever the bus comes back; the pauses pass on `clock`.
    void keepThere(const std::shared_ptr<Clock> &clock);

    /// The connection; null while there is none.
    BusConnection *bus() const;

    /// Answers a call of a method of the description with values of its types.
    void answer(const BusCall &call, const QVariantList &values = {}) const;

    /// Gives properties values; who listens is told of those that are others now.
    void setProperties(const QVariantMap &values);

    /// Sends a signal of the description. Nothing happens while the bus is away.
    void emitSignal(const QByteArray &name, const QVariantList &values) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace dozely
