// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/LogindConsoleUser_p.h"

#include "DozelyKit/core/dbus/BusConnection.h"

namespace dozely
{

namespace
{
constexpr char service[] = "org.freedesktop.login1";
constexpr char seatPath[] = "/org/freedesktop/login1/seat/seat0";

/// The object of the seat's active session; empty when it has none, which the login manager tells by an empty
/// name.
Result<QByteArray> activeSession(BusConnection &bus, const QDeadlineTimer &deadline)
{
    const auto active =
        bus.property({service, seatPath, "org.freedesktop.login1.Seat", "ActiveSession"}, deadline);
    if (!active)
        return active.error();
    const QVariantList session = active->toList(); // name, object path
    return session.value(0).toString().isEmpty() ? QByteArray() : session.value(1).toString().toUtf8();
}

/// Who has this session; absent for one that is nobody's.
std::optional<ConsoleUser::User> userOf(const QVariantMap &session)
{
    const QString sessionClass = session.value("Class").toString();
    const QString name = session.value("Name").toString();
    const QVariant userId = session.value("User").toList().value(0); // user id, object path
    // An id that could not be read is absent, never 0.
    if (sessionClass.isEmpty() || sessionClass == "greeter" || sessionClass == "lock-screen" ||
        name.isEmpty() || userId.metaType() != QMetaType::fromType<quint32>())
        return std::nullopt;
    return ConsoleUser::User{name, userId.toUInt()};
}

Result<std::optional<ConsoleUser::User>> ask(BusConnection &bus, const QDeadlineTimer &deadline)
{
    const auto session = activeSession(bus, deadline);
    if (!session)
        return session.error();
    if (session->isEmpty())
        return std::optional<ConsoleUser::User>();
    // All at once: an action of the session waits for this answer. A session that ends while it is asked
    // gives none, and is nobody as well.
    const auto properties =
        bus.properties({service, *session, "org.freedesktop.login1.Session", {}}, deadline);
    if (!properties)
        return properties.error();
    return userOf(*properties);
}
} // namespace

LogindConsoleUser::LogindConsoleUser(std::chrono::milliseconds limit) : m_limit(limit) {}

LogindConsoleUser::~LogindConsoleUser() = default;

std::optional<ConsoleUser::User> LogindConsoleUser::current()
{
    const QDeadlineTimer deadline(m_limit);
    if (m_bus && m_thread == std::this_thread::get_id()) {
        if (const auto user = ask(*m_bus, deadline))
            return *user;
    }
    m_bus.reset();
    auto opened = BusConnection::open(BusConnection::Bus::System);
    if (!opened)
        return std::nullopt;
    const auto user = ask(**opened, deadline);
    if (!user)
        return std::nullopt;
    m_bus = *std::move(opened);
    m_thread = std::this_thread::get_id();
    return *user;
}

template<>
std::shared_ptr<ConsoleUser> &Port<ConsoleUser>::current()
{
    static auto *const port = new std::shared_ptr<ConsoleUser>(std::make_shared<LogindConsoleUser>());
    return *port;
}

} // namespace dozely
