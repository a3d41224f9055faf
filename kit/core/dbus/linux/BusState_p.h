// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusCall.h"
#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/dbus/linux/BusLibrary_p.h"
#include "DozelyKit/core/foundation/DescriptorWatch.h"

#include <deque>
#include <map>
#include <optional>
#include <set>

namespace dozely
{

/// What a BusConnection is made of: the connection itself, and what the event loop does with it.
///
/// What comes of the messages that are pulled from sd-bus fills a queue; handlers run from the queue, after
/// sd-bus has returned, so that they may do anything.
struct BusConnection::Private : std::enable_shared_from_this<BusConnection::Private> {
    struct ReleaseBus {
        // Not the variant that flushes: that one waits for a peer which may be mute.
        void operator()(sd_bus *bus) const { sdBus().close_unref(bus); }
    };
    struct ReleaseMessage {
        void operator()(sd_bus_message *message) const { sdBus().message_unref(message); }
    };
    struct ReleaseSlot {
        void operator()(sd_bus_slot *slot) const { sdBus().slot_unref(slot); }
    };
    using BusPointer = std::unique_ptr<sd_bus, ReleaseBus>;
    using Message = std::unique_ptr<sd_bus_message, ReleaseMessage>;
    using Slot = std::unique_ptr<sd_bus_slot, ReleaseSlot>;

    /// One who hears signals, or the changes of a name's owner.
    struct Listener {
        Private *connection;
        quint64 id;
        SignalSource source;
        QByteArray name; ///< Whose owner is followed for this listener; empty for none.
        SignalHandler onSignal;
        OwnerHandler onOwner;
        Slot match = {}; ///< Null for one who hears of an owner.

        static int matched(sd_bus_message *message, void *listener, sd_bus_error *);
    };
    /// A name whose owner somebody wants to know.
    struct Name {
        Private *connection = nullptr;
        QByteArray name = {};
        int users = 0;
        std::optional<QByteArray> owner = {}; ///< Empty when it has none; absent until the bus has told it.
        Slot changes = {};
        Slot question = {};

        static int changed(sd_bus_message *message, void *name, sd_bus_error *);
        static int answered(sd_bus_message *reply, void *name, sd_bus_error *);
    };
    class Hearing; // a Subscription
    struct LaterCall;

    /// Handlers waiting at a time; beyond that, signals are dropped. A process that waits in `call` under a
    /// flood of signals keeps its memory.
    static constexpr size_t maximumQueue = 4096;

    BusPointer bus;
    std::map<quint64, Listener> listeners;
    std::map<QByteArray, Name> names;
    quint64 lastListener = 0;
    std::set<quint64> matched; ///< The listeners of the message that is being pulled.
    std::deque<std::function<void()>> queue;
    std::function<void()> onDisconnected;
    std::function<void(const BusCall &)> onCall;
    std::set<LaterCall *> laterCalls; ///< Those not answered yet. Each belongs to the slot of its reply.
    bool disconnected = false;
    bool queueOverflowed = false;
    std::unique_ptr<DescriptorWatch> watch; ///< Null as long as nothing needs the event loop.

    /// A call that is ready to be sent; fails when an argument does not fit.
    Result<Message> makeCall(const Member &method, const QByteArray &signature,
                             const QVariantList &arguments);
    /// Sends `call` and serves the bus until its reply is there.
    Reply replyTo(sd_bus_message *call, const QDeadlineTimer &deadline);
    static Reply valuesOf(sd_bus_message *reply);

    /// One step of the connection: 0 when there is nothing to do, a negative errno value when it is lost.
    int pull();
    /// Has sd-bus call `heard` with `data` for each signal of the source, until the slot goes.
    Slot match(const SignalSource &source, sd_bus_message_handler_t heard, void *data);
    void queueSignal(sd_bus_message *message, std::set<quint64> hearers);
    void queueCall(sd_bus_message *message);
    void queueOwner(quint64 id, const QByteArray &owner);
    bool isFrom(const Listener &listener, const QByteArray &sender) const;

    quint64 listen(const SignalSource &source, const QByteArray &name, SignalHandler onSignal,
                   OwnerHandler onOwner);
    void stopListening(quint64 id);
    void follow(const QByteArray &name);
    void unfollow(const QByteArray &name);
    void setOwner(Name &name, const QByteArray &owner);

    void attachToEventLoop();
    void rearm();
    void turn();
    void disconnect();
    /// The connection is being destroyed: nobody hears anything any more.
    void abandon();
};

/// Why something failed with a negative errno value.
Error busError(int result);

} // namespace dozely
