// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/linux/TurnOrder_p.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/DescriptorWatch.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace dozely
{

/// The descriptors of one thread's streams and listeners. In a thread with an event loop they are served from
/// that loop; a thread that waits for a reply serves them from waitUntil, and nothing else.
///
/// FAIRNESS: what has something to do takes turns by TurnOrder, one request a turn, for at most 2 ms; then
/// the event loop looks at its timers, its signals and what is due before it goes on. Listeners are looked at
/// by the event loop itself, whatever the streams do.
///
/// NESTING: serving a request may run an event loop or wait for a reply, and so serve others within it, at
/// most eight deep. Deadlines hold at any depth.
class StreamLoop
{
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// Something with a descriptor. It may be destroyed from within any of its functions.
    class Source
    {
    public:
        virtual ~Source() = default;
        /// The descriptor has something to read or to write, or a turn was asked for. Does one bounded piece
        /// of work, no more than one request; true when there is more at hand.
        virtual bool ready() = 0;
        /// The moment given to setDeadline has come; the deadline is gone.
        virtual void deadlinePassed() = 0;
    };

    static StreamLoop &ofThisThread();

    /// Watches `descriptor` for these poll events (POLLIN, POLLOUT); the result names it from then on. Its
    /// turns are on the account of `user`. The descriptor stays the caller's. Raises NSException when the
    /// kernel has no room to watch it.
    quint64 add(int descriptor, short events, Source *source, std::optional<quint32> user = {});
    quint64 addListener(int descriptor, Source *source);
    /// With no events at all not even the end of the stream is told. Raises NSException as add, when there
    /// were none before.
    void setEvents(quint64 id, short events);
    void setDeadline(quint64 id, std::optional<Moment> deadline);
    /// The source has more to do although its descriptor may be quiet.
    void serviceLater(quint64 id);
    void remove(quint64 id);

    /// Serves this thread's sources until `done` holds or the deadline, asked anew before each wait, has
    /// passed.
    void waitUntil(const std::function<bool()> &done, const std::function<Moment()> &deadline);

    /// Runs `action` from the event loop; in a thread without one, as soon as nothing waits any more.
    void callFromLoop(std::function<void()> action);

    /// Whether one more request may be served within those that are. If not, the source is to wait: nothing
    /// is read of it until one of them has ended, and then it gets a turn. What this process asks itself
    /// while it waits for the answer is served at any depth: it would wait for ever.
    bool mayServe(quint64 id, bool isOwnRequest);

    /// Counts a request for as long as it is served.
    class Serving
    {
    public:
        explicit Serving(StreamLoop &loop) : m_loop(loop) { ++m_loop.m_served; }
        ~Serving() { m_loop.endServing(); }
        Serving(const Serving &) = delete;
        Serving &operator=(const Serving &) = delete;

    private:
        StreamLoop &m_loop;
    };

private:
    struct Entry {
        Source *source;
        int descriptor;
        short events;
        TurnOrder::User user;
        bool isListener = false;
        bool isWaiting = false; ///< For its turn.
        bool isParked = false;  ///< Until a request that is served has ended.
        std::optional<Moment> deadline = {};
        std::unique_ptr<DescriptorWatch> watch = {}; ///< Of a listener in a thread with an event loop.
    };
    using Done = std::function<bool()>;

    quint64 insert(Entry entry);
    void watch(quint64 id, Entry &entry, short events);
    void attachToEventLoop();
    void watchListener(quint64 id, Entry &entry);
    void enqueue(quint64 id);
    void turn(int timeoutMilliseconds, const Done &done);
    void collect(int timeoutMilliseconds);
    void waitWithListeners(int timeoutMilliseconds);
    void serveInTurn(const Done &done);
    void serve(quint64 id);
    void expire();
    void endServing();
    std::optional<Moment> nextMoment() const;
    int timeoutUntil(Moment latest) const;
    void rearm();
    void runCallsOfQuietThread();

    int m_waits = 0;  ///< waitUntil within waitUntil.
    int m_served = 0; ///< Requests within requests.
    quint64 m_lastId = 0;
    Descriptor m_epoll;
    size_t m_listeners = 0;
    std::unordered_map<quint64, Entry> m_entries;
    std::set<std::pair<Moment, quint64>> m_deadlines;
    TurnOrder m_order;
    std::vector<quint64> m_parked;
    std::unique_ptr<DescriptorWatch> m_watch; ///< There is an event loop, and we are attached to it.
    bool m_waitsForReply = false;             ///< The present turn is that of a wait, not of an event loop.
    bool m_isBusy = false; ///< Some are left over for the next turn, which the timer brings.
    std::vector<std::function<void()>> m_calls;
};

} // namespace dozely
