// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/schedules/Schedule.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

/// The file of schedules, "/Library/Preferences/com.dozely.plist" below the root folder. docs/file-formats.md
/// describes it. Only `edit` writes; reading never does.
namespace ScheduleStore
{
/// What a store holds: the good entries in their order, and what is wrong with the others.
struct Content {
    bool exists = false; ///< Whether there is a store; one that does not exist is empty.
    QList<Schedule> schedules;
    QStringList faults;              ///< One sentence for each bad entry, naming it.
    QSet<QString> faultyIdentifiers; ///< Of those bad entries that have a readable one.
    bool hasUnknown = false;         ///< Whether one has none.
};

/// Name of the error that there is a store and it cannot be understood; of one to be changed also that it is
/// not to be trusted.
inline constexpr char damaged[] = "store damaged";

/// The store's full path.
QString path();

/// The schedules in the bytes of a store; an error when they are no store at all.
dozely::Result<Content> parse(const QByteArray &data);

/// Reads and parses the store; an error when it cannot be read or is no store. A store that somebody else
/// than the system's owner may write is not parsed, and the error is named GuardedFile::untrusted.
dozely::Result<Content> read();

/// Changes the store under its lock: reads it, lets `change` alter the schedules, and replaces the file. Keys
/// and entries that are not understood, bad entries included, stay as they are, as does the file's format; a
/// new store is written as XML. Nothing is written when `change` returns false or changes nothing. Gives what
/// `change` returned; an error when the store could not be read, locked within `lockLimit` (named
/// GuardedFile::busy) or written.
/// Blocks.
dozely::Result<bool> edit(const std::function<bool(QList<Schedule> &schedules)> &change,
                          std::chrono::milliseconds lockLimit = std::chrono::seconds(5));

/// `data` (a store, or nothing for a new one) with `schedules` in place of the good entries.
dozely::Result<QByteArray> rewritten(const std::optional<QByteArray> &data, const QList<Schedule> &schedules);
} // namespace ScheduleStore
