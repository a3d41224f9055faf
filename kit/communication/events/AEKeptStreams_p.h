// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/MessageStream_p.h"

#include <QObject>

#include <chrono>
#include <map>
#include <memory>
#include <optional>

namespace dozely
{

/// The streams of the main thread that were used lately, by the number of the process at their other end: for
/// a second after the first use, for half a minute after each later one, at most 16. A receiver has room for
/// 64 streams of a user, which programs that send it one event now and then must not fill.
class AEKeptStreams
{
public:
    using Stream = std::shared_ptr<MessageStream>;

    static AEKeptStreams &ofMainThread();

    /// The stream to the process, which counts as used now; null when none is kept.
    Stream to(qint32 process);

    /// One that is kept for the process gives way to it, or the one that was used longest ago.
    void keep(qint32 process, const Stream &stream);

    /// Lets go of the stream, not of one that has taken its place.
    void forget(qint32 process, const Stream &stream);

    void clear();

private:
    struct Kept {
        Stream stream;
        std::chrono::milliseconds lastUse;
        bool wasUsedAgain = false;

        std::chrono::milliseconds end() const;
        bool isDone(std::chrono::milliseconds now) const;
    };
    void lookLater();

    std::map<qint32, Kept> m_streams;
    std::unique_ptr<QObject> m_look =
        std::make_unique<QObject>();                     ///< Lives as long as the one to come counts.
    std::optional<std::chrono::milliseconds> m_nextLook; ///< When it comes.
};

} // namespace dozely
