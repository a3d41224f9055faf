// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/AvahiDaemon_p.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace dozely
{

namespace
{
constexpr char service[] = "org.freedesktop.Avahi";
constexpr char serverInterface[] = "org.freedesktop.Avahi.Server";
constexpr std::chrono::seconds answerLimit{30}; // the bus may have to start the daemon first

// What the daemon says of itself (avahi-common/defs.h).
constexpr int isRunning = 2;
constexpr int hasFailed = 4;
} // namespace

AvahiDaemon::AvahiDaemon()
    : m_service(BusConnection::Bus::System, service,
                {.opened = [this] { busIsOpen(); },
                 .isThere = [this](const QByteArray &) { isThere(); },
                 .isAway = [this](BusService::Absence why, const QString &text) { isAway(why, text); }})
{
}

AvahiDaemon::~AvahiDaemon() = default;

void AvahiDaemon::add(User &user)
{
    m_users.push_back(&user);
    m_newUsers.push_back(&user);
    const bool isFirst = !std::exchange(m_isUsed, true);
    QMetaObject::invokeMethod(
        &m_context,
        [this, isFirst] {
            if (isFirst)
                m_service.keepOpen(Port<Clock>::current());
            else if (m_state != State::Unknown)
                tellNewUsers();
        },
        Qt::QueuedConnection);
}

void AvahiDaemon::remove(User &user)
{
    std::erase(m_users, &user);
    std::erase(m_newUsers, &user);
}

void AvahiDaemon::tellNewUsers()
{
    while (!m_newUsers.empty()) {
        User *const user = m_newUsers.front();
        m_newUsers.erase(m_newUsers.begin());
        tell(*user);
    }
}

void AvahiDaemon::call(const QByteArray &path, const QByteArray &interface, const QByteArray &name,
                       const QByteArray &signature, const QVariantList &arguments,
                       BusConnection::ReplyHandler handler)
{
    if (BusConnection *const bus = m_service.bus())
        bus->callLater({service, path, interface, name}, signature, arguments, answerLimit,
                       std::move(handler));
}

void AvahiDaemon::free(const QByteArray &path, const QByteArray &interface)
{
    // Not while the daemon is away: the bus would start it only to be told to forget what it does not know.
    if (!path.isEmpty() && m_service.isThere())
        call(path, interface, "Free", {}, {}, [](const auto &) {});
}

std::unique_ptr<BusConnection::Subscription> AvahiDaemon::subscribe(const QByteArray &interface,
                                                                    BusConnection::SignalHandler handler)
{
    return m_service.subscribe({}, interface, {}, std::move(handler));
}

void AvahiDaemon::busIsOpen()
{
    m_states = m_service.subscribe(
        "/", serverInterface, "StateChanged",
        [this](const BusConnection::Signal &signal) { stateChanged(signal.arguments.value(0).toInt()); });
    askForState(); // which lets the bus start a daemon that is not running
}

void AvahiDaemon::isThere()
{
    if (m_state == State::Ready)
        become(State::Starting); // another process: what the former one made is gone
    askForState();
}

void AvahiDaemon::isAway(BusService::Absence why, const QString &text)
{
    switch (why) {
    case BusService::Absence::NoBus:
        become(State::Away, text);
        break;
    case BusService::Absence::BusLost:
        become(State::Away, "the bus has gone away");
        break;
    case BusService::Absence::NotRunning:
        break; // it has been asked for its state, and the bus tells whether it could be started
    case BusService::Absence::Ended:
        become(State::Away, "the daemon has ended");
        break;
    }
}

void AvahiDaemon::askForState()
{
    call("/", serverInterface, "GetState", {}, {}, [this](const BusConnection::Reply &reply) {
        if (reply)
            stateChanged(reply->value(0).toInt());
        else if (!m_service.isThere())
            become(State::Away, reply.error().text);
    });
}

void AvahiDaemon::stateChanged(int state)
{
    if (state == isRunning)
        become(State::Ready);
    else if (state == hasFailed)
        become(State::Away, "the daemon reports a failure");
    else
        become(State::Starting); // its own name is not settled: what is published waits for it
}

void AvahiDaemon::become(State state, const QString &text)
{
    if (state == m_state)
        return;
    m_state = state;
    m_text = text;
    if (state == State::Away)
        reportProblem(QString("Network services are neither published nor resolved until Avahi is there: %1.")
                          .arg(text));
    m_newUsers.clear(); // they hear it with the others
    const std::vector<User *> users = m_users;
    for (User *const user : users) {
        // Whoever is told may end another one, or bring about a change of state, which then was told already.
        if (m_state != state)
            return;
        if (std::find(m_users.begin(), m_users.end(), user) != m_users.end())
            tell(*user);
    }
}

void AvahiDaemon::tell(User &user)
{
    if (m_state == State::Ready)
        user.daemonIsReady();
    else if (m_state != State::Unknown)
        user.daemonIsNotReady(m_state == State::Away, m_text);
}

} // namespace dozely
