// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/LogindConsoleUser_p.h"

#include "DozelyKit/core/dbus/linux/BusConnection_p.h"

#include <chrono>

namespace dozely
{

namespace
{
constexpr std::chrono::seconds limit{2}; // for all questions together
constexpr char service[] = "org.freedesktop.login1";
constexpr char seatPath[] = "/org/freedesktop/login1/seat/seat0";

/// The object of the seat's active session; empty when it has none, which the login manager tells by an empty
/// name.
QByteArray activeSession(BusConnection &bus, const QDeadlineTimer &deadline)
{
    const auto active =
        bus.property({service, seatPath, "org.freedesktop.login1.Seat", "ActiveSession"}, deadline);
    const QVariantList session = active ? active->toList() : QVariantList(); // name, object path
    return session.value(0).toString().isEmpty() ? QByteArray() : session.value(1).toString().toUtf8();
}
} // namespace

std::optional<ConsoleUser::User> LogindConsoleUser::current()
{
    const QDeadlineTimer deadline(limit);
    const auto bus = BusConnection::open(BusConnection::Bus::System);
    if (!bus)
        return std::nullopt;
    const QByteArray session = activeSession(**bus, deadline);
    if (session.isEmpty())
        return std::nullopt;
    // All at once: an action of the session waits for this answer. A session that ends while it is asked
    // gives none, and is nobody as well.
    const auto properties =
        (*bus)->properties({service, session, "org.freedesktop.login1.Session", {}}, deadline);
    if (!properties)
        return std::nullopt;
    const QString sessionClass = properties->value("Class").toString();
    const QString name = properties->value("Name").toString();
    const QVariant userId = properties->value("User").toList().value(0); // user id, object path
    // An id that could not be read is absent, never 0.
    if (sessionClass.isEmpty() || sessionClass == "greeter" || sessionClass == "lock-screen" ||
        name.isEmpty() || userId.metaType() != QMetaType::fromType<quint32>())
        return std::nullopt;
    return User{name, userId.toUInt()};
}

template<>
std::shared_ptr<ConsoleUser> &Port<ConsoleUser>::current()
{
    static auto *const port = new std::shared_ptr<ConsoleUser>(std::make_shared<LogindConsoleUser>());
    return *port;
}

} // namespace dozely
