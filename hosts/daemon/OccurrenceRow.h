// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/record/Sqlite.h"
#include "hosts/daemon/OccurrenceRecord.h"

/// One row of the table of occurrences, and the statements that are about rows.
namespace OccurrenceRow
{
/// Statements with all columns as parameters, for bind.
/// @{
extern const char *const insertOrReplace;
extern const char *const insertOrIgnore;
/// @}

/// Says how a row would be inserted, and fails where the table is another one.
extern const char *const explainInsertion;

/// ?1 identifier, ?2 how many stay, ?3 a date that stays too, and ?4 a date later than which all stay.
extern const char *const trimSchedule;

/// ?1 who asked, ?2 how many stay.
extern const char *const trimAsker;

/// ?1 identifier, ?2 the date before which nothing that is over stays, but for ?3 and ?4 as above.
extern const char *const removeOld;

/// ?1 identifier, ?2 date, ?3 output; nothing for an occurrence that is gone.
extern const char *const insertOutput;

/// ?1 identifier, ?2 of how many occurrences the output stays.
extern const char *const trimOutputs;

/// For a daemon that did not begin any of it itself.
extern const char *const interruptBegun;

SqliteStatement &bind(SqliteStatement &statement, const OccurrenceRecord::Key &key,
                      const OccurrenceEntry &entry);

/// The row at which a statement that selects all columns stands. An error named Sqlite::damaged for one that
/// means nothing.
dozely::Result<std::pair<OccurrenceRecord::Key, OccurrenceEntry>> read(const SqliteStatement &statement);
} // namespace OccurrenceRow
