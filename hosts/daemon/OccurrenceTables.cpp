// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceTables.h"

using namespace dozely;

namespace
{
constexpr char occurrences[] = R"(
CREATE TABLE occurrences (
    identifier TEXT NOT NULL,
    date INTEGER NOT NULL,
    state TEXT NOT NULL CHECK (state IN ('asked', 'begun', 'done', 'skipped', 'not performed', 'removed',
                                         'interrupted', 'unknown', 'failed', 'missed', 'postponed')),
    asked_by INTEGER,
    begun INTEGER,
    lateness INTEGER,
    place TEXT CHECK (place IN ('daemon', 'session')),
    handed_to INTEGER,
    handed_over INTEGER,
    exit_status INTEGER,
    ended INTEGER,
    failure TEXT NOT NULL DEFAULT '',
    postponed_to INTEGER,
    first INTEGER,
    count INTEGER,
    has_more INTEGER,
    PRIMARY KEY (identifier, date)
) STRICT, WITHOUT ROWID;
)";

constexpr char indexes[] = R"(
CREATE INDEX not_over ON occurrences (state) WHERE state IN ('asked', 'begun', 'postponed');
CREATE INDEX handed_over ON occurrences (handed_over) WHERE handed_over IS NOT NULL;
CREATE INDEX asked_by ON occurrences (asked_by, date) WHERE asked_by IS NOT NULL;
)";

// The output of an action goes with its occurrence; a row that is only replaced keeps it.
constexpr char outputs[] = R"(
CREATE TABLE outputs (
    identifier TEXT NOT NULL,
    date INTEGER NOT NULL,
    output BLOB NOT NULL,
    PRIMARY KEY (identifier, date)
) STRICT;
)";
constexpr char forgetOutput[] = R"(
CREATE TRIGGER forget_output AFTER DELETE ON occurrences BEGIN
    DELETE FROM outputs WHERE identifier = OLD.identifier AND date = OLD.date;
END;
)";

constexpr char calendars[] = R"(
CREATE TABLE calendars (
    identifier TEXT NOT NULL PRIMARY KEY,
    settled INTEGER NOT NULL,
    is_paused INTEGER NOT NULL
) STRICT, WITHOUT ROWID;
)";
constexpr char version[] = "PRAGMA user_version = 3";

// A table whose states are checked is made anew when there are more of them.
constexpr char setAside[] = R"(
ALTER TABLE occurrences RENAME TO former;
DROP INDEX IF EXISTS not_over;
DROP INDEX IF EXISTS handed_over;
DROP INDEX IF EXISTS asked_by;
DROP TRIGGER IF EXISTS forget_output;
)";
constexpr char fillFromFirst[] = R"(
INSERT INTO occurrences SELECT identifier, date, state, asked_by, begun, lateness, place, handed_to, handed_over,
                               exit_status, NULL, '', NULL, NULL, NULL, NULL FROM former;
DROP TABLE former;
)";
constexpr char fillFromSecond[] = R"(
INSERT INTO occurrences SELECT identifier, date, state, asked_by, begun, lateness, place, handed_to, handed_over,
                               exit_status, ended, failure, NULL, NULL, NULL, NULL FROM former;
DROP TABLE former;
)";

constexpr qint64 firstVersion = 1;
constexpr qint64 secondVersion = 2;
constexpr qint64 thisVersion = 3;

Result<void> runAll(const Sqlite &database, std::initializer_list<const char *> statements)
{
    for (const char *const statement : statements) {
        if (auto done = database.run(statement); !done)
            return done;
    }
    return {};
}
} // namespace

Result<void> OccurrenceTables::make(const Sqlite &database,
                                    const std::optional<QDateTime> &nothingKnownBefore)
{
    if (auto made =
            runAll(database, {occurrences, indexes, outputs, forgetOutput, calendars,
                              "CREATE TABLE knowledge (nothing_known_before INTEGER) STRICT", version});
        !made)
        return made;
    auto insertion = database.prepare("INSERT INTO knowledge VALUES (?1)");
    return insertion
        .bind(1, nothingKnownBefore ? std::optional(nothingKnownBefore->toMSecsSinceEpoch()) : std::nullopt)
        .run();
}

Result<void> OccurrenceTables::bringUpToDate(const Sqlite &database)
{
    auto search = database.prepare("PRAGMA user_version");
    const auto isThere = search.next();
    if (!isThere)
        return isThere.error();
    const auto former = search.number(0);
    (void)search.next();
    if (former == thisVersion)
        return {};
    if (former == secondVersion)
        return database.transaction([&] {
            return runAll(database,
                          {setAside, occurrences, fillFromSecond, indexes, forgetOutput, calendars, version});
        });
    if (former != firstVersion)
        return Error{"its format is not known", Sqlite::damaged};
    return database.transaction([&] {
        return runAll(database, {setAside, occurrences, fillFromFirst, indexes, outputs, forgetOutput,
                                 calendars, version});
    });
}
