// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/CallQueue.h"

#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/AbuseLog.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/orders/OrderPermissions.h"

#include <algorithm>
#include <utility>

using namespace dozely;

using std::chrono::milliseconds;

namespace
{
constexpr int restForWork = 3;
constexpr milliseconds longestRest(1000);
constexpr std::chrono::seconds askTimeout(25);
constexpr qsizetype mostKnown = 512; // connections whose user is remembered
} // namespace

bool BusCaller::isSystem() const
{
    return OrderPermissions::isSystem(user, RootFolder::owner());
}

CallQueue::CallQueue(Clock &clock, Serve serve) : m_clock(clock), m_serve(std::move(serve)) {}

CallQueue::~CallQueue() = default;

void CallQueue::refuse(const BusCall &call)
{
    call.refuse(
        {QStringLiteral("Too many calls at a time: wait for the answers."), SchedulerNames::limitReached});
}

void CallQueue::add(BusConnection &bus, const BusCall &call, const QVariantList &arguments)
{
    const Waiting waiting{call, arguments};
    if (const auto user = m_users.constFind(call.sender()); user != m_users.cend())
        return enqueue(*user, waiting);
    std::deque<Waiting> &unknown = m_unknown[call.sender()];
    if (m_count >= mostOfAll || unknown.size() >= mostOfAUser)
        return refuse(call);
    const bool isFirst = unknown.empty();
    unknown.push_back(waiting);
    ++m_count;
    if (isFirst)
        ask(bus, call.sender());
}

void CallQueue::ask(BusConnection &bus, const QByteArray &sender)
{
    bus.callLater(
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetConnectionUnixUser"},
        "s", {QString::fromLatin1(sender)}, askTimeout, [this, sender](const BusConnection::Reply &reply) {
            const QVariant user = BusConnection::firstOf(reply);
            answered(sender, user.metaType() == QMetaType::fromType<quint32>() ? std::optional(user.toUInt())
                                                                               : std::nullopt);
        });
}

/// A caller of whom the bus says nothing has gone.
void CallQueue::answered(const QByteArray &sender, std::optional<quint32> user)
{
    const std::deque<Waiting> calls = m_unknown.take(sender);
    m_count -= calls.size();
    if (!user)
        return;
    if (m_users.size() >= mostKnown)
        m_users.clear();
    m_users.insert(sender, *user);
    for (const Waiting &waiting : calls)
        enqueue(*user, waiting);
}

void CallQueue::enqueue(quint32 user, const Waiting &waiting)
{
    const auto known = m_waiting.constFind(user);
    const size_t count = known == m_waiting.cend() ? 0 : known->calls.size();
    if (count >= mostOfAUser || m_count >= mostOfAll) {
        AbuseLog::note(user, "call on the bus refused: too many at a time");
        return refuse(waiting.call);
    }
    User &his = m_waiting[user];
    if (his.calls.empty() && !his.isSuspended)
        m_turns.push_back(user);
    his.calls.push_back(waiting);
    ++m_count;
    serveSoon();
}

std::deque<quint32>::iterator CallQueue::nextUser()
{
    const milliseconds now = m_clock.steadyTime();
    return std::find_if(m_turns.begin(), m_turns.end(),
                        [&](quint32 user) { return m_waiting[user].notBefore <= now; });
}

void CallQueue::serveSoon()
{
    if (m_turns.empty())
        return;
    milliseconds delay(0);
    if (nextUser() == m_turns.end()) {
        const auto earliest = std::min_element(m_turns.begin(), m_turns.end(), [&](quint32 a, quint32 b) {
            return m_waiting[a].notBefore < m_waiting[b].notBefore;
        });
        delay = m_waiting[*earliest].notBefore - m_clock.steadyTime();
    }
    m_clock.callAfter(delay, this, [this, planned = ++m_planned] {
        if (planned == m_planned)
            serveOne();
    });
}

void CallQueue::serveOne()
{
    const auto turn = nextUser();
    if (turn == m_turns.end())
        return serveSoon();
    const quint32 user = *turn;
    m_turns.erase(turn);
    const Waiting waiting = std::move(m_waiting[user].calls.front());
    m_waiting[user].calls.pop_front();
    --m_count;

    const milliseconds begin = m_clock.steadyTime();
    const bool isServed = m_serve({waiting.call.sender(), user}, waiting.call, waiting.arguments);
    const milliseconds end = m_clock.steadyTime();

    User &his = m_waiting[user];
    his.notBefore = end + std::min<milliseconds>(restForWork * (end - begin), longestRest);
    his.isSuspended = !isServed;
    if (!isServed) {
        his.calls.push_front(waiting);
        ++m_count;
    } else if (!his.calls.empty()) {
        m_turns.push_back(user);
    } else if (his.notBefore <= end) {
        m_waiting.remove(user);
    }
    serveSoon();
}

void CallQueue::resume(quint32 user)
{
    const auto his = m_waiting.find(user);
    if (his == m_waiting.end() || !std::exchange(his->isSuspended, false))
        return;
    m_turns.push_back(user);
    serveSoon();
}

void CallQueue::charge(quint32 user, milliseconds duration)
{
    if (duration.count() <= 0)
        return;
    User &his = m_waiting[user];
    his.notBefore = std::max(his.notBefore, m_clock.steadyTime()) +
                    std::min<milliseconds>(restForWork * duration, longestRest);
}

void CallQueue::clear()
{
    m_users.clear();
    m_unknown.clear();
    m_waiting.clear();
    m_turns.clear();
    m_count = 0;
    ++m_planned;
}
