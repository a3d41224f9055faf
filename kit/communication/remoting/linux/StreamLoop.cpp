// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/StreamLoop_p.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <climits>
#include <poll.h>

namespace dozely
{

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace
{
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

quint64 StreamLoop::add(int descriptor, short events, Source *source)
{
    attachToEventLoop();
    const quint64 id = ++m_lastId;
    Entry &entry = m_entries[id];
    entry.source = source;
    entry.descriptor = descriptor;
    entry.events = events;
    notify(id, entry);
    return id;
}

void StreamLoop::setEvents(quint64 id, short events)
{
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end() || entry->second.events == events)
        return;
    entry->second.events = events;
    notify(id, entry->second);
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
    m_entries.erase(id);
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
    if (m_timer) {
        if (QAbstractEventDispatcher *const dispatcher = QAbstractEventDispatcher::instance())
            QMetaObject::invokeMethod(dispatcher, std::move(action), Qt::QueuedConnection);
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

void StreamLoop::turn(int timeoutMilliseconds)
{
    std::vector<pollfd> polled;
    std::vector<quint64> ids;
    polled.reserve(m_entries.size());
    ids.reserve(m_entries.size());
    for (const auto &[id, entry] : m_entries) {
        polled.push_back({entry.descriptor, entry.events, 0});
        ids.push_back(id);
    }
    if (::poll(polled.data(), polled.size(), timeoutMilliseconds) < 0)
        polled.clear(); // a signal
    std::vector<quint64> ready;
    for (size_t i = 0; i < polled.size(); ++i) {
        if (polled[i].revents)
            ready.push_back(ids[i]);
    }
    serve(ready);
}

// Sources are looked up by id: one that another of them removed is not there any more.
void StreamLoop::serve(const std::vector<quint64> &ready)
{
    ++m_depth;
    for (const quint64 id : ready) {
        const auto entry = m_entries.find(id);
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
    if (m_timer || !QAbstractEventDispatcher::instance())
        return;
    m_timer = std::make_unique<DescriptorWatch>([this] {
        serve({});
        rearm();
    });
    for (auto &[id, entry] : m_entries) // watched before there was an event loop
        notify(id, entry);
}

// Has the event loop watch the descriptor for what the entry asks for.
void StreamLoop::notify(quint64 id, Entry &entry)
{
    if (!m_timer)
        return;
    if (!entry.watch) {
        entry.watch = std::make_unique<DescriptorWatch>([this, id] {
            serve({id});
            rearm();
        });
    }
    entry.watch->watch(entry.descriptor, entry.events);
}

void StreamLoop::rearm()
{
    if (m_timer && m_depth == 0)
        m_timer->setDeadline(nextMoment());
}

} // namespace dozely
