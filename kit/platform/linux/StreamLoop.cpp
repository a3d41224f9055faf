// SPDX-License-Identifier: MIT
#include "platform/linux/StreamLoop_p.h"

#include "platform/NSException.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <array>
#include <climits>
#include <poll.h>
#include <sys/epoll.h>
#include <unistd.h>

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace
{
uint32_t epollEvents(short events)
{
    return (events & POLLIN ? uint32_t{EPOLLIN} : 0) | (events & POLLOUT ? uint32_t{EPOLLOUT} : 0);
}

bool isMainThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}
} // namespace

StreamLoop &StreamLoop::ofThisThread()
{
    if (isMainThread()) {
        // Never destroyed: at the end of the process the application object is gone before thread-local
        // objects.
        static StreamLoop *const mainLoop = new StreamLoop;
        return *mainLoop;
    }
    static thread_local StreamLoop loop;
    return loop;
}

StreamLoop::StreamLoop() : m_epoll(::epoll_create1(EPOLL_CLOEXEC))
{
    if (m_epoll < 0)
        throw NSException(NSObjectInaccessibleException, QStringLiteral("no more descriptors"));
}

StreamLoop::~StreamLoop()
{
    ::close(m_epoll);
}

quint64 StreamLoop::add(int descriptor, short events, Source *source)
{
    attachToEventLoop();
    const quint64 id = ++m_lastId;
    epoll_event event{};
    event.events = epollEvents(events);
    event.data.u64 = id;
    if (::epoll_ctl(m_epoll, EPOLL_CTL_ADD, descriptor, &event) != 0)
        throw NSException(NSObjectInaccessibleException, QStringLiteral("a descriptor cannot be watched"));
    m_entries.emplace(id, Entry{source, descriptor, events, false, {}});
    return id;
}

void StreamLoop::setEvents(quint64 id, short events)
{
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end() || entry->second.events == events)
        return;
    entry->second.events = events;
    epoll_event event{};
    event.events = epollEvents(events);
    event.data.u64 = id;
    ::epoll_ctl(m_epoll, EPOLL_CTL_MOD, entry->second.descriptor, &event);
}

void StreamLoop::setDeadline(quint64 id, std::optional<Moment> deadline)
{
    if (const auto entry = m_entries.find(id); entry != m_entries.end()) {
        entry->second.deadline = deadline;
        rearm();
    }
}

void StreamLoop::serviceLater(quint64 id)
{
    if (const auto entry = m_entries.find(id); entry != m_entries.end()) {
        entry->second.again = true;
        rearm();
    }
}

void StreamLoop::remove(quint64 id)
{
    if (const auto entry = m_entries.find(id); entry != m_entries.end()) {
        ::epoll_ctl(m_epoll, EPOLL_CTL_DEL, entry->second.descriptor, nullptr);
        m_entries.erase(entry);
    }
}

bool StreamLoop::waitUntil(const std::function<bool()> &done, const std::function<Moment()> &deadline)
{
    ++m_depth;
    bool inTime = true;
    while (!done()) {
        const Moment latest = deadline();
        if (steady_clock::now() >= latest) {
            inTime = false;
            break;
        }
        turn(timeoutUntil(latest));
    }
    --m_depth;
    rearm();
    runCallsOfQuietThread();
    return inTime;
}

void StreamLoop::callFromLoop(std::function<void()> action)
{
    if (m_notifier) {
        QMetaObject::invokeMethod(m_notifier.get(), std::move(action), Qt::QueuedConnection);
        return;
    }
    m_calls.push_back(std::move(action));
    runCallsOfQuietThread();
}

void StreamLoop::runCallsOfQuietThread()
{
    while (m_depth == 0 && !m_calls.empty()) {
        const auto calls = std::exchange(m_calls, {});
        for (const auto &call : calls)
            call();
    }
}

// Sources are looked up by id for each event: one that an earlier event of the same batch removed is not
// there.
void StreamLoop::turn(int timeoutMilliseconds)
{
    std::array<epoll_event, 32> events;
    ++m_depth;
    const int count =
        ::epoll_wait(m_epoll, events.data(), static_cast<int>(events.size()), timeoutMilliseconds);
    for (int i = 0; i < count; ++i) {
        const auto entry = m_entries.find(events[static_cast<size_t>(i)].data.u64);
        if (entry != m_entries.end()) {
            entry->second.again = false;
            entry->second.source->ready();
        }
    }
    expire(steady_clock::now());
    --m_depth;
}

void StreamLoop::expire(Moment now)
{
    std::vector<quint64> again;
    std::vector<quint64> late;
    for (const auto &[id, entry] : m_entries) {
        if (entry.again)
            again.push_back(id);
        if (entry.deadline && *entry.deadline <= now)
            late.push_back(id);
    }
    for (const quint64 id : again) {
        const auto entry = m_entries.find(id);
        if (entry != m_entries.end() && std::exchange(entry->second.again, false))
            entry->second.source->ready();
    }
    for (const quint64 id : late) {
        const auto entry = m_entries.find(id);
        if (entry != m_entries.end() && entry->second.deadline && *entry->second.deadline <= now) {
            entry->second.deadline.reset();
            entry->second.source->deadlinePassed();
        }
    }
}

std::optional<StreamLoop::Moment> StreamLoop::nextMoment() const
{
    std::optional<Moment> next;
    for (const auto &[id, entry] : m_entries) {
        if (entry.again)
            return Moment::min();
        if (entry.deadline && (!next || *entry.deadline < *next))
            next = entry.deadline;
    }
    return next;
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

void StreamLoop::attachToEventLoop()
{
    if (m_notifier || !QAbstractEventDispatcher::instance())
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_epoll, QSocketNotifier::Read);
    m_timer = std::make_unique<QTimer>();
    m_timer->setSingleShot(true);
    const auto serve = [this] {
        turn(0);
        rearm();
    };
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_timer.get(), serve);
    QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this, serve] {
        m_timerMoment.reset();
        serve();
    });
}

// The timer is left alone when it fires soon enough: most deadlines are met and never looked at again.
void StreamLoop::rearm()
{
    if (!m_timer || m_depth > 0)
        return;
    const std::optional<Moment> next = nextMoment();
    if (!next) {
        if (std::exchange(m_timerMoment, std::nullopt))
            m_timer->stop();
        return;
    }
    if (m_timerMoment && *m_timerMoment <= *next)
        return;
    m_timerMoment = next;
    m_timer->start(milliseconds(timeoutUntil(*next)));
}
