// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/record/Sqlite.h"

#include <QDateTime>

#include <optional>

/// The tables of the record of occurrences; what docs/file-formats.md says of them.
namespace OccurrenceTables
{
/// Makes them in an empty database. `nothingKnownBefore` as OccurrenceDatabase has it. Within a transaction.
dozely::Result<void> make(const Sqlite &database, const std::optional<QDateTime> &nothingKnownBefore);

/// Brings those of an earlier version up to this one. An error named Sqlite::damaged for a version that is
/// not known.
dozely::Result<void> bringUpToDate(const Sqlite &database);
} // namespace OccurrenceTables
