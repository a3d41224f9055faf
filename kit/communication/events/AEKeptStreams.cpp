// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEKeptStreams_p.h"

#include "DozelyKit/core/foundation/Clock.h"

#include <algorithm>

namespace dozely
{

using std::chrono::milliseconds;

namespace
{
constexpr size_t mostKept = 16;
constexpr milliseconds keptAfterFirstUse = std::chrono::seconds(1);
constexpr milliseconds keptAfterLaterUse = std::chrono::seconds(30);
} // namespace

AEKeptStreams &AEKeptStreams::ofMainThread()
{
    static auto *const kept = new AEKeptStreams; // an event may still be sent while the process ends
    return *kept;
}

milliseconds AEKeptStreams::Kept::end() const
{
    return lastUse + (wasUsedAgain ? keptAfterLaterUse : keptAfterFirstUse);
}

bool AEKeptStreams::Kept::isDone(milliseconds now) const
{
    return !stream->isOpen() || now >= end();
}

AEKeptStreams::Stream AEKeptStreams::to(qint32 process)
{
    const auto found = m_streams.find(process);
    if (found == m_streams.end())
        return nullptr;
    // While this thread was busy no timer ran, and the receiver closes what stays silent for long: on an old
    // stream an event could be lost that a fresh one carries.
    const auto now = Port<Clock>::current()->steadyTime();
    if (found->second.isDone(now)) {
        m_streams.erase(found);
        return nullptr;
    }
    found->second.lastUse = now;
    found->second.wasUsedAgain = true;
    return found->second.stream;
}

void AEKeptStreams::keep(qint32 process, const Stream &stream)
{
    if (m_streams.size() >= mostKept)
        m_streams.erase(
            std::min_element(m_streams.begin(), m_streams.end(), [](const auto &a, const auto &b) {
                return a.second.lastUse < b.second.lastUse;
            }));
    m_streams[process] = {stream, Port<Clock>::current()->steadyTime()};
    lookLater();
}

void AEKeptStreams::forget(qint32 process, const Stream &stream)
{
    const auto found = m_streams.find(process);
    if (found != m_streams.end() && found->second.stream == stream)
        m_streams.erase(found);
}

void AEKeptStreams::clear()
{
    m_streams.clear();
    m_look = std::make_unique<QObject>(); // none is to come any more
    m_nextLook.reset();
}

void AEKeptStreams::lookLater()
{
    if (m_streams.empty())
        return;
    milliseconds first = milliseconds::max();
    for (const auto &[process, kept] : m_streams)
        first = std::min(first, kept.end());
    if (m_nextLook && *m_nextLook <= first)
        return;
    if (std::exchange(m_nextLook, first))
        m_look = std::make_unique<QObject>(); // the later one is not to come any more
    Port<Clock>::current()->callAfter(first - Port<Clock>::current()->steadyTime(), m_look.get(), [this] {
        m_nextLook.reset();
        const auto now = Port<Clock>::current()->steadyTime();
        std::erase_if(m_streams, [now](const auto &kept) { return kept.second.isDone(now); });
        lookLater();
    });
}

} // namespace dozely
