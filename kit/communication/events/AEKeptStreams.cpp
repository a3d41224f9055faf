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
constexpr milliseconds keptFor = std::chrono::seconds(30);
} // namespace

AEKeptStreams &AEKeptStreams::ofMainThread()
{
    static auto *const kept = new AEKeptStreams; // an event may still be sent while the process ends
    return *kept;
}

bool AEKeptStreams::Kept::isDone(milliseconds now) const
{
    return !stream->isOpen() || now - lastUse >= keptFor;
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
    m_looks = std::make_unique<QObject>(); // none is to come any more
    m_isLooking = false;
}

void AEKeptStreams::lookLater()
{
    if (std::exchange(m_isLooking, true))
        return;
    Port<Clock>::current()->callAfter(keptFor, m_looks.get(), [this] {
        m_isLooking = false;
        const auto now = Port<Clock>::current()->steadyTime();
        std::erase_if(m_streams, [now](const auto &kept) { return kept.second.isDone(now); });
        if (!m_streams.empty())
            lookLater();
    });
}

} // namespace dozely
