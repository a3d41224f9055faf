// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/StreamLoop_p.h"

#include "DozelyKit/communication/remoting/linux/PerThread_p.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <QAbstractEventDispatcher>
#include <QScopedValueRollback>

#include <algorithm>
#include <array>
#include <climits>
#include <poll.h>
#include <sys/epoll.h>

namespace dozely
{

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace
{
constexpr milliseconds turnLength(2);
constexpr int deepestServing = 8;
constexpr TurnOrder::User nobody = quint64{1}
                                   << 32; // beyond every user id: sources that are the thread's own

// The kernel's numbers are the same (epoll_ctl(2)).
static_assert(EPOLLIN == POLLIN && EPOLLOUT == POLLOUT);

} // namespace

StreamLoop &StreamLoop::ofThisThread()
{
    return perThread<StreamLoop>();
}

// ---- what is watched

quint64 StreamLoop::add(int descriptor, short events, Source *source, std::optional<quint32> user)
{
    return insert({source, descriptor, events, user ? TurnOrder::User{*user} : nobody});
}

quint64 StreamLoop::addListener(int descriptor, Source *source)
{
    return insert({source, descriptor, POLLIN, nobody, true});
}

quint64 StreamLoop::insert(Entry entry)
{
    if (!m_epoll.isValid())
        m_epoll = Descriptor(::epoll_create1(EPOLL_CLOEXEC));
    attachToEventLoop();
    const short events = std::exchange(entry.events, short{0});
    const quint64 id = ++m_lastId;
    Entry &added = m_entries.emplace(id, std::move(entry)).first->second;
    m_listeners += added.isListener ? 1 : 0;
    try {
        watch(id, added, events);
    } catch (...) {
        remove(id);
        throw;
    }
    return id;
}

void StreamLoop::watch(quint64 id, Entry &entry, short events)
{
    const short before = std::exchange(entry.events, events);
    if (events == before)
        return;
    if (entry.isListener)
        return watchListener(id, entry);
    epoll_event event{};
    event.events = static_cast<uint32_t>(events);
    event.data.u64 = id;
    const int operation = events == 0 ? EPOLL_CTL_DEL : before == 0 ? EPOLL_CTL_ADD : EPOLL_CTL_MOD;
    if (::epoll_ctl(m_epoll.get(), operation, entry.descriptor, &event) == 0)
        return;
    entry.events = 0;
    throw NSException(NSInvalidArgumentException, QStringLiteral("the descriptor cannot be watched"));
}

void StreamLoop::watchListener(quint64 id, Entry &entry)
{
    if (!m_watch)
        return;
    if (!entry.watch) {
        entry.watch = std::make_unique<DescriptorWatch>([this, id] {
            enqueue(id);
            // The streams that it accepts are served in the same turn; when others wait, the next has them
            // all.
            if (!m_isBusy)
                turn(0, nullptr);
            rearm();
        });
    }
    entry.watch->watch(entry.descriptor, entry.events);
}

void StreamLoop::setEvents(quint64 id, short events)
{
    if (const auto entry = m_entries.find(id); entry != m_entries.end())
        watch(id, entry->second, static_cast<short>(entry->second.isParked ? events & ~POLLIN : events));
}

void StreamLoop::setDeadline(quint64 id, std::optional<Moment> deadline)
{
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end())
        return;
    if (entry->second.deadline)
        m_deadlines.erase({*entry->second.deadline, id});
    entry->second.deadline = deadline;
    if (deadline) {
        m_deadlines.emplace(*deadline, id);
        rearm();
    }
}

void StreamLoop::serviceLater(quint64 id)
{
    enqueue(id);
    rearm();
}

void StreamLoop::enqueue(quint64 id)
{
    const auto entry = m_entries.find(id);
    if (entry != m_entries.end() && !std::exchange(entry->second.isWaiting, true))
        m_order.add(id, entry->second.user);
}

void StreamLoop::remove(quint64 id)
{
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end())
        return;
    if (entry->second.deadline)
        m_deadlines.erase({*entry->second.deadline, id});
    if (entry->second.isListener)
        --m_listeners;
    else if (entry->second.events != 0)
        ::epoll_ctl(m_epoll.get(), EPOLL_CTL_DEL, entry->second.descriptor, nullptr);
    m_entries.erase(entry);
}

// ---- turns

void StreamLoop::waitUntil(const Done &done, const std::function<Moment()> &deadline)
{
    {
        const QScopedValueRollback depth(m_waits, m_waits + 1);
        while (!done()) {
            const Moment latest = deadline();
            if (steady_clock::now() >= latest)
                break;
            turn(timeoutUntil(latest), done);
        }
    }
    rearm();
    runCallsOfQuietThread();
}

void StreamLoop::turn(int timeoutMilliseconds, const Done &done)
{
    const QScopedValueRollback waiting(m_waitsForReply, done != nullptr);
    collect(m_order.isEmpty() ? timeoutMilliseconds : 0);
    serveInTurn(done);
    expire();
}

// Whoever has something to read or to write gets in line.
void StreamLoop::collect(int timeoutMilliseconds)
{
    if (m_listeners > 0 && m_waits > 0) {
        waitWithListeners(timeoutMilliseconds);
        timeoutMilliseconds = 0;
    }
    std::array<epoll_event, 128> events;
    const int count =
        ::epoll_wait(m_epoll.get(), events.data(), static_cast<int>(events.size()), timeoutMilliseconds);
    for (int i = 0; i < count; ++i) // -1: a signal
        enqueue(events[static_cast<size_t>(i)].data.u64);
}

// A thread that waits for a reply looks at its listeners itself.
void StreamLoop::waitWithListeners(int timeoutMilliseconds)
{
    std::vector<pollfd> polled{{m_epoll.get(), POLLIN, 0}};
    std::vector<quint64> ids;
    for (const auto &[id, entry] : m_entries) {
        if (entry.isListener && entry.events != 0) {
            polled.push_back({entry.descriptor, entry.events, 0});
            ids.push_back(id);
        }
    }
    if (::poll(polled.data(), polled.size(), timeoutMilliseconds) <= 0)
        return;
    for (size_t i = 0; i < ids.size(); ++i) {
        if (polled[i + 1].revents)
            enqueue(ids[i]);
    }
}

void StreamLoop::serveInTurn(const Done &done)
{
    const Moment end = steady_clock::now() + turnLength;
    Moment begin = steady_clock::now();
    while (begin < end && !(done && done())) {
        const auto id = m_order.next();
        if (!id)
            break;
        const auto entry = m_entries.find(*id);
        if (entry == m_entries.end()) // another source has removed it
            continue;
        const TurnOrder::User user = entry->second.user;
        entry->second.isWaiting = false;
        rearm(); // what is served may run an event loop, and the others are served from there
        serve(*id);
        const Moment now = steady_clock::now();
        m_order.charge(user, now - begin);
        begin = now;
    }
}

void StreamLoop::serve(quint64 id)
{
    const auto entry = m_entries.find(id);
    if (entry != m_entries.end() && entry->second.source->ready())
        enqueue(id);
}

void StreamLoop::expire()
{
    const Moment now = steady_clock::now();
    while (!m_deadlines.empty() && m_deadlines.begin()->first <= now) {
        const quint64 id = m_deadlines.begin()->second;
        m_deadlines.erase(m_deadlines.begin());
        if (const auto entry = m_entries.find(id); entry != m_entries.end()) {
            entry->second.deadline.reset();
            entry->second.source->deadlinePassed();
        }
    }
}

bool StreamLoop::mayServe(quint64 id, bool isOwnRequest)
{
    if (m_served < deepestServing || (isOwnRequest && m_waitsForReply))
        return true;
    if (const auto entry = m_entries.find(id); entry != m_entries.end() && !entry->second.isParked) {
        watch(id, entry->second, static_cast<short>(entry->second.events & ~POLLIN));
        entry->second.isParked = true;
        m_parked.push_back(id);
    }
    return false;
}

void StreamLoop::endServing()
{
    --m_served;
    for (const quint64 id : std::exchange(m_parked, {})) {
        if (const auto entry = m_entries.find(id); entry != m_entries.end()) {
            entry->second.isParked = false;
            serviceLater(id);
        }
    }
}

// ---- the event loop of the thread

void StreamLoop::attachToEventLoop()
{
    if (m_watch || !QAbstractEventDispatcher::instance())
        return;
    m_watch = std::make_unique<DescriptorWatch>([this] {
        turn(0, nullptr);
        rearm();
    });
    m_watch->watch(m_epoll.get(), POLLIN);
    for (auto &[id, entry] : m_entries) { // watched before there was an event loop
        if (entry.isListener)
            watchListener(id, entry);
    }
}

std::optional<StreamLoop::Moment> StreamLoop::nextMoment() const
{
    if (!m_order.isEmpty())
        return Moment::min();
    return m_deadlines.empty() ? std::nullopt : std::optional<Moment>(m_deadlines.begin()->first);
}

int StreamLoop::timeoutUntil(Moment latest) const
{
    const Moment until = std::min(latest, nextMoment().value_or(latest));
    const auto now = steady_clock::now();
    if (until <= now)
        return 0;
    const auto left = std::chrono::ceil<milliseconds>(until - now).count();
    return static_cast<int>(std::min<decltype(left)>(left, INT_MAX));
}

// When some are left over for the next turn, the timer alone brings it: the event loop is to look at the rest
// of what it has between two turns.
void StreamLoop::rearm()
{
    if (!m_watch)
        return;
    m_isBusy = !m_order.isEmpty();
    m_watch->watch(m_epoll.get(), m_isBusy ? 0 : POLLIN);
    m_watch->setDeadline(nextMoment());
}

void StreamLoop::callFromLoop(std::function<void()> action)
{
    if (m_watch) {
        if (QAbstractEventDispatcher *const dispatcher = QAbstractEventDispatcher::instance())
            QMetaObject::invokeMethod(dispatcher, std::move(action), Qt::QueuedConnection);
        return;
    }
    m_calls.push_back(std::move(action));
    runCallsOfQuietThread();
}

void StreamLoop::runCallsOfQuietThread()
{
    while (m_waits == 0 && !m_calls.empty()) {
        const auto calls = std::exchange(m_calls, {});
        for (const auto &call : calls)
            call();
    }
}

} // namespace dozely
