// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/linux/DistributedBus_p.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"

#include <algorithm>

namespace dozely
{

namespace
{
constexpr char busService[] = "org.freedesktop.DBus";
constexpr char busPath[] = "/org/freedesktop/DBus";
constexpr std::chrono::seconds handOverLimit{2};
constexpr std::chrono::seconds answerLimit{5};

// A process that connects to the bus again and again has a new name each time.
constexpr size_t mostUsers = 256;

// What is held while the bus is asked who posted it; beyond that, notifications are dropped.
constexpr size_t mostWaiting = 1024;
constexpr qsizetype largestWaiting = 4 << 20;
constexpr int mostWaitingOfOne = 64; // and no single connection takes it all
} // namespace

DistributedBus::DistributedBus(BusConnection::Bus bus, Handler handler)
    : m_handler(std::move(handler)),
      m_kind(bus),
      m_bus(bus, busService,
            {.opened = [this] { subscribe(); },
             .isThere = [this](const QByteArray &) { busIsThere(); },
             .isAway =
                 [this](BusService::Absence why, const QString &) {
                     // Not that there has been none from the beginning: many have no session.
                     if (why == BusService::Absence::BusLost && isWanted() && !std::exchange(m_isDeaf, true))
                         reportProblem(busName() + " has gone: notifications of other processes are not "
                                                   "heard until it is there again.");
                     busIsLost();
                 }})
{
}

QString DistributedBus::busName() const
{
    return m_kind == BusConnection::Bus::System ? "The system's message bus" : "The session's message bus";
}

void DistributedBus::busIsThere()
{
    if (std::exchange(m_isDeaf, false))
        reportProblem(busName() + " is there again: notifications are heard.");
}

void DistributedBus::busIsLost()
{
    m_ofNames.clear();
    m_ofEverything.reset();
    m_hearsEverything = false;
    m_asked.clear();
    m_users.clear();
    m_usersInOrder.clear();
    for (Waiting &waiting : m_waiting)
        waiting.isKnown = true; // as far as it ever will be
    QMetaObject::invokeMethod(
        &m_context, [this] { deliver(); }, Qt::QueuedConnection);
}

Result<void> DistributedBus::post(const DistributedMessage &message)
{
    const QDeadlineTimer deadline(handOverLimit);
    // A bus that was restarted is noticed only now, when nothing was heard from it before.
    constexpr int attempts = 2;
    Error error;
    for (int i = 0; i < attempts && !deadline.hasExpired(); ++i) {
        if (const auto opened = m_bus.open(); !opened)
            return Error{QString("there is no message bus (%1)").arg(opened.error().text)};
        const auto handedOver = handOver(message, deadline);
        if (handedOver)
            return {};
        error = handedOver.error();
        m_bus.close();
    }
    return error;
}

Result<void> DistributedBus::handOver(const DistributedMessage &message, const QDeadlineTimer &deadline)
{
    const auto sent =
        m_bus.bus()->emitSignal(DistributedMessage::path, DistributedMessage::interface,
                                DistributedMessage::signalName, message.signature, message.arguments);
    if (!sent)
        return sent.error();
    // The answer to a question that comes after the signal shows that the bus has both: a program may post
    // and end.
    const auto answered = m_bus.bus()->call({busService, busPath, busService, "GetId"}, {}, {}, deadline);
    if (!answered)
        return answered.error();
    return {};
}

void DistributedBus::setNames(const QSet<QString> &names, bool everyName)
{
    if (names == m_names && everyName == m_everyName)
        return;
    m_names = names;
    m_everyName = everyName;
    if (m_bus.bus())
        subscribe();
    if (isWanted())
        m_bus.keepOpen(Port<Clock>::current()); // no line when it is not there: many have no session
    else
        m_bus.stopKeeping();
}

void DistributedBus::subscribe()
{
    std::erase_if(m_ofNames, [this](const auto &entry) { return !m_names.contains(entry.first); });
    for (const QString &name : m_names) {
        if (!name.isEmpty() && !m_ofNames.contains(name))
            m_ofNames.emplace(name, hear(name, false));
    }
    if (m_everyName == (m_ofEverything != nullptr))
        return;
    if (m_everyName)
        m_ofEverything = hear({}, true);
    // The bus answers when it has taken note of the above: until then those hear who heard before. Nothing is
    // missed between, and nothing heard twice.
    m_bus.bus()->callLater({busService, busPath, busService, "GetId"}, {}, {}, answerLimit,
                           [this](const auto &) {
                               m_hearsEverything = m_everyName;
                               if (!m_everyName)
                                   m_ofEverything.reset();
                           });
}

std::unique_ptr<BusConnection::Subscription> DistributedBus::hear(const QString &name, bool everything)
{
    return m_bus.bus()->subscribe(
        {{}, DistributedMessage::path, DistributedMessage::interface, DistributedMessage::signalName, name},
        [this, everything](const BusConnection::Signal &signal) {
            if (everything == m_hearsEverything)
                heard(signal);
        });
}

void DistributedBus::heard(const BusConnection::Signal &signal)
{
    auto posted = DistributedMessage::read(signal.arguments);
    if (!posted)
        return;
    const qsizetype size = DistributedMessage::sizeOf(posted->notification);
    if (m_waiting.size() >= mostWaiting || m_waitingSize + size > largestWaiting ||
        m_waitingOf.value(signal.sender) >= mostWaitingOfOne)
        return;
    const auto user = m_users.constFind(signal.sender);
    const bool isKnown = user != m_users.constEnd();
    if (isKnown)
        posted->sender = *user;
    m_waiting.push_back({signal.sender, *posted, size, isKnown});
    m_waitingSize += size;
    ++m_waitingOf[signal.sender];
    if (isKnown)
        deliver();
    else if (!m_asked.contains(signal.sender))
        ask(signal.sender);
}

void DistributedBus::ask(const QByteArray &sender)
{
    m_asked += sender;
    m_bus.bus()->callLater(
        {busService, busPath, busService, "GetConnectionUnixUser"}, "s", {QString::fromLatin1(sender)},
        answerLimit, [this, sender](const BusConnection::Reply &reply) {
            const QVariant answer = BusConnection::firstOf(reply);
            // A poster that has gone is unknown, never user 0.
            learn(sender, answer.typeId() == QMetaType::UInt ? std::optional(answer.toUInt()) : std::nullopt);
        });
}

void DistributedBus::learn(const QByteArray &sender, const std::optional<quint32> &user)
{
    m_asked.remove(sender);
    if (user) {
        if (m_usersInOrder.size() >= mostUsers) {
            m_users.remove(m_usersInOrder.front());
            m_usersInOrder.pop_front();
        }
        m_users.insert(sender, *user);
        m_usersInOrder.push_back(sender);
    }
    for (Waiting &waiting : m_waiting) {
        if (waiting.isKnown || waiting.sender != sender)
            continue;
        waiting.posted.sender = user;
        waiting.isKnown = true;
    }
    deliver();
}

void DistributedBus::deliver()
{
    // A handler may run an event loop, in which the next ones are delivered.
    while (!m_waiting.empty() && m_waiting.front().isKnown) {
        const Waiting next = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_waitingSize -= next.size;
        if (--m_waitingOf[next.sender] == 0)
            m_waitingOf.remove(next.sender);
        m_handler(next.posted);
    }
}

} // namespace dozely
