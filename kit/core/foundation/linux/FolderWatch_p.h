// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/DescriptorWatch.h"
#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QSet>

#include <cstdint>

namespace dozely
{

/// Tells what comes and goes in a folder, by the word of the kernel (inotify); also when the folder itself
/// comes, goes or is replaced, as long as the folder above it stays.
///
/// The first change is told at once, then none for a tenth of a second: whoever changes the folder a thousand
/// times a second causes ten calls. What happened meanwhile comes with the next one; nothing is forgotten,
/// but names may be.
///
/// Without inotify, or where neither the folder nor the one above it can be watched, nothing is told: whoever
/// needs to know looks himself from time to time, and calls renew when he does.
///
/// THREADING: belongs to the thread that made it, which needs an event loop; the handler is called from that
/// loop alone and may do anything, destroy this object included. BLOCKING: never.
class DOZELYKIT_AUTOTEST_EXPORT FolderWatch
{
public:
    static constexpr std::chrono::milliseconds pause{100};
    static constexpr qsizetype mostNames = 256;

    struct Change {
        QSet<QByteArray> names; ///< Of entries that came, went, or were replaced.
        bool mayBeMore = false; ///< There were too many to name: any entry may have changed.
        bool isAnother = false; ///< The folder came, went, or is another one now.
    };
    using Handler = std::function<void(const Change &)>;

    /// `path`, absolute and without a slash at its end, need not exist.
    FolderWatch(const QByteArray &path, Handler handler);
    ~FolderWatch();
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;

    /// Watches what now is at the path, and above it; does nothing when that is watched already.
    void renew();

    /// Whether the folder itself is watched.
    bool isWatching() const { return m_folder >= 0; }

private:
    void wake();
    Change read();
    void take(int watch, uint32_t events, const QByteArray &name, Change &change) const;

    const QByteArray m_path;
    const Handler m_handler;
    Descriptor m_inotify;
    int m_folder = -1; ///< Watch descriptors; -1 for none.
    int m_above = -1;
    bool m_isResting = false;
    DescriptorWatch m_watch; ///< Lets go of the descriptor before that is closed.
};

} // namespace dozely
