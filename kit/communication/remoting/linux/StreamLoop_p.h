// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/linux/DescriptorWatch_p.h"

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace dozely
{

/// The descriptors of one thread's streams and listeners. In a thread with an event loop they are served from
/// that loop; a thread that waits for a reply serves them from waitUntil, and nothing else.
///
/// Both poll the descriptors themselves: an epoll descriptor for all of them would cost each stream its
/// registration and each message a second call of the kernel, and a thread has few of them.
class StreamLoop
{
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// Something with a descriptor. It may be destroyed from within any of its functions.
    class Source
    {
    public:
        virtual ~Source() = default;
        /// The descriptor has something to read or to write, or serviceLater was asked for.
        virtual void ready() = 0;
        /// The moment given to setDeadline has come; the deadline is gone.
        virtual void deadlinePassed() = 0;
    };

    static StreamLoop &ofThisThread();

    /// Watches `descriptor` for these poll events (POLLIN, POLLOUT); the result names it from then on. The
    /// descriptor stays the caller's.
    quint64 add(int descriptor, short events, Source *source);
    void setEvents(quint64 id, short events);
    void setDeadline(quint64 id, std::optional<Moment> deadline);
    /// The source has more to do although its descriptor may be quiet.
    void serviceLater(quint64 id);
    void remove(quint64 id);

    /// Serves this thread's sources until `done` holds or the deadline, asked anew before each wait, has
    /// passed; false in the latter case.
    bool waitUntil(const std::function<bool()> &done, const std::function<Moment()> &deadline);

    /// Runs `action` from the event loop; in a thread without one, as soon as nothing waits any more.
    void callFromLoop(std::function<void()> action);

private:
    struct Entry {
        Source *source;
        int descriptor;
        short events;
        bool again = false;
        std::optional<Moment> deadline;
        std::unique_ptr<DescriptorWatch> watch = {}; ///< Null in a thread without an event loop.
    };

    StreamLoop() = default;
    void turn(int timeoutMilliseconds);
    /// These sources, and those whose moment has come.
    void serve(const std::vector<quint64> &ready);
    void expire(Moment now);
    int timeoutUntil(Moment latest) const;
    std::optional<Moment> nextMoment() const;
    void attachToEventLoop();
    void notify(quint64 id, Entry &entry);
    void rearm();
    void runCallsOfQuietThread();

    int m_depth = 0;
    quint64 m_lastId = 0;
    std::unordered_map<quint64, Entry> m_entries;
    std::unique_ptr<DescriptorWatch> m_timer; ///< There is an event loop, and we are attached to it.
    std::vector<std::function<void()>> m_calls;
};

} // namespace dozely
