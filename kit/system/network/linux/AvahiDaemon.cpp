// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/AvahiDaemon_p.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/Platform.h"
#include "DozelyKit/core/foundation/ProblemReport.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace
{
constexpr char service[] = "org.freedesktop.Avahi";
constexpr char serverInterface[] = "org.freedesktop.Avahi.Server";
constexpr std::chrono::seconds answerLimit{30}; // the bus may have to start the daemon first
constexpr std::chrono::seconds betweenAttempts{10};

// What the daemon says of itself (avahi-common/defs.h).
constexpr int isRunning = 2;
constexpr int hasFailed = 4;
} // namespace

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
                open();
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
    if (m_bus)
        m_bus->callLater({service, path, interface, name}, signature, arguments, answerLimit,
                         std::move(handler));
}

void AvahiDaemon::free(const QByteArray &path, const QByteArray &interface)
{
    // Not while the daemon is away: the bus would start it only to be told to forget what it does not know.
    if (!path.isEmpty() && !m_ownerName.isEmpty())
        call(path, interface, "Free", {}, {}, [](const auto &, const auto &) {});
}

std::unique_ptr<BusConnection::Subscription> AvahiDaemon::subscribe(const QByteArray &interface,
                                                                    BusConnection::SignalHandler handler)
{
    return m_bus ? m_bus->subscribe({service, {}, interface, {}}, std::move(handler)) : nullptr;
}

void AvahiDaemon::open()
{
    BusConnection::Failure failure;
    m_bus = BusConnection::open(BusConnection::Bus::System, &failure);
    if (!m_bus) {
        become(State::Away, failure.text);
        retryLater();
        return;
    }
    m_bus->onDisconnected([this] {
        m_owner.reset();
        m_states.reset();
        m_ownerName.clear();
        become(State::Away, "the bus has gone away");
        m_bus.reset();
        retryLater();
    });
    m_states = m_bus->subscribe(
        {service, "/", serverInterface, "StateChanged"},
        [this](const BusConnection::Signal &signal) { stateChanged(signal.arguments.value(0).toInt()); });
    m_owner = m_bus->watchOwner(service, [this](const QByteArray &owner) { ownerChanged(owner); });
    askForState(); // which lets the bus start a daemon that is not running
}

void AvahiDaemon::retryLater()
{
    Platform::current().clock->callAfter(betweenAttempts, &m_context, [this] { open(); });
}

void AvahiDaemon::ownerChanged(const QByteArray &owner)
{
    if (owner == m_ownerName)
        return;
    m_ownerName = owner;
    if (owner.isEmpty())
        become(State::Away, "the daemon has ended");
    else {
        if (m_state == State::Ready)
            become(State::Starting); // another process: what the former one made is gone
        askForState();
    }
}

void AvahiDaemon::askForState()
{
    call("/", serverInterface, "GetState", {}, {},
         [this](const std::optional<QVariantList> &values, const BusConnection::Failure &failure) {
             if (values)
                 stateChanged(values->value(0).toInt());
             else if (m_ownerName.isEmpty())
                 become(State::Away, failure.text);
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
