// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>

#include <chrono>
#include <dirent.h>
#include <memory>

namespace dozely
{

/// Removes one entry that may be a tree of any size and depth, a slice at a time.
///
/// A walk that goes down needs a descriptor or a stack frame a level. This one never goes down: a folder
/// found within a folder is moved up into the top one under a name of its own, and those are emptied one
/// after the other. Each folder moves once, so the work grows with the number of entries alone. No link is
/// followed.
///
/// THREADING: one thread at a time. BLOCKING: until the moment that a slice is given, and for the system call
/// that has begun by then.
class DOZELYKIT_AUTOTEST_EXPORT TreeRemover
{
public:
    using Moment = std::chrono::steady_clock::time_point;
    enum class State {
        Working,
        Gone,  ///< Nothing is there any more, or never was.
        Stays, ///< Something could not be removed.
    };

    /// For the entry `name` of the folder `parent`.
    TreeRemover(Descriptor parent, const QByteArray &name);

    /// Goes on until the moment has come or nothing is left to do.
    State work(Moment until);

    /// Removes the entry if it is not a folder with something in it; true also when there is nothing.
    static bool removeSingle(int parent, const char *name);

    /// Goes on to the end; true when the entry is gone. Blocks for as long as that takes.
    bool finish() { return work(Moment::max()) == State::Gone; }

private:
    struct CloseListing {
        void operator()(DIR *listing) const { ::closedir(listing); }
    };

    State begin();
    bool open(int parent, const QByteArray &name);
    void removeFromFolder(const char *entry);
    bool openNext();
    QByteArray nameOfMoved(quint64 index) const { return m_prefix + QByteArray::number(index); }

    const Descriptor m_parent;
    const QByteArray m_name;
    const QByteArray m_prefix; ///< Random, so that nobody can have taken the names before.
    Descriptor m_top;
    std::unique_ptr<DIR, CloseListing> m_folder; ///< The folder that is being emptied.
    QByteArray m_folderName;                     ///< Empty for the top one.
    quint64 m_moved = 0;
    quint64 m_next = 0; ///< Of those moved, the next one to empty.
    State m_state = State::Working;
};

} // namespace dozely
