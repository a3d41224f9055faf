// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"

#include <QVariantMap>

#include <memory>

namespace dozely
{

/// The file of the power events, "/var/lib/dozely/power-events.plist" below the root folder, which all
/// programs share (docs/file-formats.md).
///
/// An object of this class holds the lock beside it: while it lives, nobody else changes events or alarm. A
/// file that is no store is moved aside under a name of its own and reported; entries that are no events are
/// kept as they are. Codes are 0 or errno values.
class DOZELYKIT_AUTOTEST_EXPORT PowerEventStore
{
public:
    struct Content {
        QList<PowerEventScheduler::Event> events;
        std::optional<qint64>
            armed;            ///< What the clock's alarm was last set to for one of them, by that clock.
        QVariantList foreign; ///< Entries of the file that are no events.
        QVariantMap rest;     ///< Other keys of the file.
        /// That of the file, which stays: not all that one form carries is carried by the other.
        PropertyList::Format form = PropertyList::Format::Xml;
        bool operator==(const Content &) const = default;
    };

    static QString path();
    static bool exists();

    /// A store, or why there is none.
    struct Opening {
        std::unique_ptr<PowerEventStore> store;
        int failure = 0;
    };

    /// Takes the lock and reads. Fails when another program keeps the lock for five seconds, this one may not
    /// change the file, or somebody else may have written it.
    static Opening open();

    /// What the file holds, without lock; empty when it cannot be read. Changes nothing.
    static Content peek();

    PowerEventStore(const PowerEventStore &) = delete;
    PowerEventStore &operator=(const PowerEventStore &) = delete;

    const Content &content() const { return m_content; }

    /// Replaces the file when `content` is not what it holds. Blocks until the disk has it.
    int save(const Content &content);

private:
    PowerEventStore(GuardedFile file, GuardedFile::Lock lock);
    int load();

    GuardedFile m_file;
    GuardedFile::Lock m_lock;
    Content m_content;
};

} // namespace dozely
