// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/AcceptedStreams_p.h"

#include "DozelyKit/communication/remoting/linux/PerThread_p.h"
#include "DozelyKit/communication/remoting/linux/StreamState_p.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/IdleMemory.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>

namespace dozely
{

namespace
{
constexpr size_t streamsOfUser = 64; // a user who connects without end harms himself only
constexpr size_t streamsOfAll = 1024;
// Three messages of the largest size; with the first piece of each of 64 streams that is 1 MiB a user.
constexpr qsizetype inputOfUser = 768 << 10;
constexpr qsizetype inputOfAll = 12 << 20;
constexpr qsizetype outputOfUser = 1 << 20;
constexpr qsizetype outputOfAll = 16 << 20;
constexpr qsizetype useOfStream = 16 << 10; // of memory, by all that comes and goes with it
constexpr qsizetype useWorthGivingBack = 4 << 20;
constexpr std::chrono::seconds lullBeforeGivingBack(10);
} // namespace

AcceptedStreams::AcceptedStreams() : m_input(inputOfUser, inputOfAll), m_output(outputOfUser, outputOfAll) {}

AcceptedStreams &AcceptedStreams::ofThisThread()
{
    return perThread<AcceptedStreams>();
}

AcceptedStreams::Stream *AcceptedStreams::oldestUnidentified(const std::vector<Stream *> &streams) const
{
    const auto found = std::find_if(streams.begin(), streams.end(),
                                    [](const Stream *stream) { return !stream->isAuthenticated(); });
    return found == streams.end() ? nullptr : *found;
}

bool AcceptedStreams::makeRoomFor(quint32 userId)
{
    const auto own = m_streams.find(userId);
    if (own != m_streams.end() && own->second.size() >= streamsOfUser) {
        Stream *const oldest = oldestUnidentified(own->second);
        if (!oldest)
            return false;
        oldest->refuse(); // it may be about to be let in, and is to try again
    }
    return m_count < streamsOfAll || makeRoomAmongAll(userId);
}

// Somebody with many user ids may fill all places. A user without a stream always gets one of theirs; who has
// some gets another only of a user with at least two more, else the two would take it from each other in
// turns.
bool AcceptedStreams::makeRoomAmongAll(quint32 userId)
{
    const auto most = std::max_element(m_streams.begin(), m_streams.end(), [](const auto &a, const auto &b) {
        return a.second.size() < b.second.size();
    });
    const auto own = m_streams.find(userId);
    if (own != m_streams.end() && most->second.size() < own->second.size() + 2)
        return false;
    if (Stream *const unidentified = oldestUnidentified(most->second))
        unidentified->refuse();
    else
        most->second.front()->drop();
    return true;
}

void AcceptedStreams::add(Stream *stream, quint32 userId)
{
    m_streams[userId].push_back(stream);
    ++m_count;
}

void AcceptedStreams::remove(Stream *stream, quint32 userId)
{
    const auto own = m_streams.find(userId);
    if (own == m_streams.end() || std::erase(own->second, stream) == 0)
        return;
    --m_count;
    if (own->second.empty())
        m_streams.erase(own);
    giveMemoryBackAfter(useOfStream);
}

bool AcceptedStreams::takeInput(Stream *stream, quint32 userId, qsizetype bytes)
{
    if (m_input.take(userId, bytes))
        return true;
    m_waiting.insert(stream->weak_from_this());
    return false;
}

void AcceptedStreams::giveInput(quint32 userId, qsizetype bytes)
{
    m_input.give(userId, bytes);
    giveMemoryBackAfter(bytes);
    for (const auto &waiting : std::exchange(m_waiting, {})) {
        if (const auto stream = waiting.lock())
            stream->serviceLater();
    }
}

// What messages of strangers became stays with the allocator in pieces, after an attack some 15 MiB.
void AcceptedStreams::giveMemoryBackAfter(qsizetype use)
{
    m_used += use;
    if (m_used < useWorthGivingBack || m_willGiveBack || !QCoreApplication::instance() ||
        QThread::currentThread() != QCoreApplication::instance()->thread())
        return;
    m_willGiveBack = true;
    Port<Clock>::current()->callAfter(lullBeforeGivingBack, QCoreApplication::instance(), [this] {
        m_willGiveBack = false;
        m_used = 0;
        IdleMemory::giveHeapBack();
    });
}

} // namespace dozely
