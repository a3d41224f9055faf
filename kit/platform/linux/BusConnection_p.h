// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

/// A connection of our own to one of the machine's message buses: the only place that calls services there.
///
/// A value of a message is a QVariant: bool, integers of their width, double, QString (texts, object paths
/// and signatures), QByteArray (`ay`), QVariantMap (dictionaries with text keys), QVariantList (other arrays
/// and structures). A variant of the wire is the value that it holds.
///
/// THREADING: one thread, without an event loop. BLOCKING: open does not wait; a call waits until its
/// deadline, which covers connecting and authentication too: a bus that accepts and says nothing costs no
/// more than that.
class DOZELYKIT_AUTOTEST_EXPORT BusConnection
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

    /// Why a call gave nothing: the error's name on the bus and a text for a person.
    struct Failure {
        QByteArray name;
        QString text;
    };

    /// Begins to connect; null when nobody listens there.
    static std::unique_ptr<BusConnection> open(Bus bus, Failure *failure = nullptr);

    ~BusConnection();
    BusConnection(const BusConnection &) = delete;
    BusConnection &operator=(const BusConnection &) = delete;

    /// Calls the operation and returns the values of its reply. `signature` gives the types of `arguments` on
    /// the wire, one complete type each. Absent on failure: an error reply, a bus that went away, the
    /// deadline.
    std::optional<QVariantList> call(const Member &method, const QByteArray &signature,
                                     const QVariantList &arguments, const QDeadlineTimer &deadline,
                                     Failure *failure = nullptr);

    /// Reads one property; absent on failure.
    std::optional<QVariant> property(const Member &property, const QDeadlineTimer &deadline,
                                     Failure *failure = nullptr);

private:
    struct Private;
    explicit BusConnection(std::unique_ptr<Private> state);
    std::unique_ptr<Private> d;
};
