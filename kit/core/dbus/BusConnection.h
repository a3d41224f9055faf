// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QVariant>

#include <chrono>
#include <functional>
#include <memory>

namespace dozely
{

class BusCall;

/// A connection of our own to one of the machine's message buses: the only place that speaks to services
/// there.
///
/// A value of a message is a QVariant: bool, integers of their width, double, QString (texts, object paths
/// and signatures), QByteArray (`ay`), QVariantMap (dictionaries with text keys), QVariantList (other arrays
/// and structures), BusDescriptor (`h`). A variant of the wire is the value that it holds; one that is to
/// hold a type which its value does not tell is written as a BusVariant.
///
/// Signals and the answers to asynchronous calls are delivered from the thread's Qt event loop, one after the
/// other in the order in which they came, never from within a function of this class; a handler may do
/// anything, destroy the connection included.
///
/// What fails tells a text for a person and, as its name, that of the error on the bus.
///
/// THREADING: one thread; it needs an event loop for signals and asynchronous calls only. BLOCKING: open does
/// not wait; `call` waits until its deadline, which covers connecting and authentication too: a bus that
/// accepts and says nothing costs no more than that. Nothing else waits.
class DOZELYKIT_EXPORT BusConnection
{
public:
    /// DBUS_SYSTEM_BUS_ADDRESS and DBUS_SESSION_BUS_ADDRESS are honoured.
    enum class Bus { System, Session };

    /// Which operation (or property) of which object.
    struct Member {
        QByteArray destination;
        QByteArray path;
        QByteArray interface;
        QByteArray name;
    };

    /// Which signals to hear. An empty field stands for any. A `sender` with a well-known name is held to the
    /// owner of that name at the moment: nobody else can send in its name, not even to us alone.
    struct SignalSource {
        QByteArray sender;
        QByteArray path;
        QByteArray interface;
        QByteArray name;
        QString firstText = {}; ///< When not null: only signals whose first argument is this text.
    };

    /// A signal that came.
    struct Signal {
        QByteArray sender; ///< The unique name (":1.5") of the connection that sent it.
        QByteArray path;
        QByteArray interface;
        QByteArray name;
        QVariantList arguments;
    };

    using SignalHandler = std::function<void(const Signal &)>;
    using OwnerHandler = std::function<void(const QByteArray &owner)>;
    using Reply = Result<QVariantList>; ///< The values of a reply.
    using ReplyHandler = std::function<void(const Reply &reply)>;

    /// Hearing ends when this is destroyed, at once. May outlive its connection.
    class Subscription
    {
    public:
        virtual ~Subscription() = default;
    };

    /// Begins to connect; fails when nobody listens there.
    static Result<std::unique_ptr<BusConnection>> open(Bus bus);

    /// The path of the socket file to which `open` connects at first; empty when it is no file.
    static QByteArray socketPath(Bus bus);

    ~BusConnection();
    BusConnection(const BusConnection &) = delete;
    BusConnection &operator=(const BusConnection &) = delete;

    /// Calls the operation and returns the values of its reply. `signature` gives the types of `arguments` on
    /// the wire, one complete type each. What may fail: an error reply, a bus that went away, the
    /// deadline. Signals that arrive meanwhile are delivered later, from the event loop.
    Reply call(const Member &method, const QByteArray &signature, const QVariantList &arguments,
               const QDeadlineTimer &deadline);

    /// Calls the operation without waiting; `handler` gets what `call` would have returned, exactly once,
    /// unless the connection is destroyed before. The time-out begins when the bus has accepted us.
    void callLater(const Member &method, const QByteArray &signature, const QVariantList &arguments,
                   std::chrono::milliseconds timeout, ReplyHandler handler);

    /// Reads one property.
    Result<QVariant> property(const Member &property, const QDeadlineTimer &deadline);

    /// Reads all properties that an object has by an interface, at once; `object.name` does not count.
    Result<QVariantMap> properties(const Member &object, const QDeadlineTimer &deadline);

    /// Hears the signals of `source` that the bus passes on from when it knows of this; whatever is sent
    /// through this connection afterwards, the bus sees later. One signal goes to those who hear it in the
    /// order in which they subscribed.
    std::unique_ptr<Subscription> subscribe(const SignalSource &source, SignalHandler handler);

    /// Tells the unique name of the owner of `name`, empty when it has none: once soon, then at each change.
    std::unique_ptr<Subscription> watchOwner(const QByteArray &name, OwnerHandler handler);

    /// Sends a signal to whoever listens; fails when it could not be queued.
    Result<void> emitSignal(const QByteArray &path, const QByteArray &interface, const QByteArray &name,
                            const QByteArray &signature, const QVariantList &arguments);

    /// Hears from now on every method call that comes from others on the bus, whatever its object; until then
    /// such calls get no answer.
    void serve(std::function<void(const BusCall &call)> handler);

    /// The first value of a reply; invalid for one that failed or is empty.
    static QVariant firstOf(const Reply &reply);

    /// Our unique name on the bus; empty until the bus has accepted us.
    QByteArray uniqueName() const;

    /// `handler` is called once from the event loop when the bus has gone away; from then on every call fails
    /// and no signal comes. Needs a subscription or an asynchronous call to be noticed.
    void onDisconnected(std::function<void()> handler);

    struct Private;

private:
    explicit BusConnection(std::shared_ptr<Private> state);
    std::shared_ptr<Private> d;
};

/// A file descriptor that came in a message, or is to be sent in one; the last copy closes it.
class DOZELYKIT_EXPORT BusDescriptor
{
public:
    BusDescriptor() = default;
    /// Takes over `descriptor`.
    explicit BusDescriptor(int descriptor);
    /// -1 when it holds none.
    int get() const;

private:
    std::shared_ptr<const int> m_descriptor;
};

/// A variant to be sent whose type is given: `signature` is one complete type, into which `value` must fit.
struct BusVariant {
    QByteArray signature;
    QVariant value;
};

} // namespace dozely

Q_DECLARE_METATYPE(dozely::BusDescriptor)
Q_DECLARE_METATYPE(dozely::BusVariant)
