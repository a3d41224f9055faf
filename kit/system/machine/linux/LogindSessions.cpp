// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/LogindSessions_p.h"

#include "DozelyKit/core/dbus/BusConnection.h"

#include <QStringList>

namespace dozely
{

namespace
{
constexpr char service[] = "org.freedesktop.login1";
constexpr char manager[] = "/org/freedesktop/login1";

/// Microseconds since 1970; absent for 0, which stands for never.
std::optional<QDateTime> dateOf(const QVariant &microseconds)
{
    const quint64 value = microseconds.toULongLong();
    if (microseconds.metaType() != QMetaType::fromType<quint64>() || value == 0)
        return {};
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(value / 1000), Qt::UTC);
}

bool isOfAPerson(const QString &sessionClass)
{
    return sessionClass != "greeter" && sessionClass != "lock-screen" &&
           !sessionClass.startsWith("background") && !sessionClass.startsWith("manager");
}

std::optional<QDateTime> unusedSince(const QVariantMap &properties, const QDateTime &began)
{
    if (properties.value("State").toString() == "closing")
        return began; // programs alone are left of it
    const QString type = properties.value("Type").toString();
    const bool isTerminal = type == "tty" || type == "unspecified";
    if (!isTerminal && !properties.value("IdleHint").toBool())
        return {};
    return dateOf(properties.value("IdleSinceHint"));
}
} // namespace

std::optional<QList<LoginSessions::Session>> LogindSessions::current()
{
    const QDeadlineTimer deadline(m_limit);
    const auto bus = BusConnection::open(BusConnection::Bus::System);
    if (!bus)
        return {};
    const auto list =
        (*bus)->call({service, manager, "org.freedesktop.login1.Manager", "ListSessions"}, "", {}, deadline);
    if (!list)
        return {};
    QList<Session> sessions;
    for (const QVariant &listed : BusConnection::firstOf(list).toList()) {
        const QByteArray path = listed.toList().value(4).toString().toUtf8(); // name, id, user, seat, path
        // One that ends while it is asked is unknown as well.
        const auto answer =
            (*bus)->properties({service, path, "org.freedesktop.login1.Session", {}}, deadline);
        const QVariantMap properties = answer ? *answer : QVariantMap();
        const auto began = dateOf(properties.value("Timestamp"));
        if (!began)
            return {};
        if (isOfAPerson(properties.value("Class").toString()))
            sessions += {properties.value("Name").toString(), *began, unusedSince(properties, *began)};
    }
    return sessions;
}

template<>
std::shared_ptr<LoginSessions> &Port<LoginSessions>::current()
{
    static auto *const port = new std::shared_ptr<LoginSessions>(std::make_shared<LogindSessions>());
    return *port;
}

} // namespace dozely
