// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceRow.h"

using namespace dozely;

const char *const OccurrenceRow::insertOrReplace = "INSERT OR REPLACE INTO occurrences VALUES (?1, ?2, ?3, "
                                                   "?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, "
                                                   "?16)";
const char *const OccurrenceRow::insertOrIgnore = "INSERT OR IGNORE INTO occurrences VALUES (?1, ?2, ?3, ?4, "
                                                  "?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, "
                                                  "?16)";

const char *const OccurrenceRow::explainInsertion = "EXPLAIN INSERT INTO occurrences VALUES (?1, ?2, ?3, ?4, "
                                                    "?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, "
                                                    "?16)";

const char *const OccurrenceRow::trimSchedule =
    "DELETE FROM occurrences WHERE identifier = ?1 AND state NOT IN ('asked', 'begun', 'postponed') "
    "AND date IS NOT ?3 AND (?4 IS NULL OR date <= ?4) AND date <= (SELECT date FROM occurrences "
    "WHERE identifier = ?1 AND date IS NOT ?3 AND (?4 IS NULL OR date <= ?4) "
    "AND state NOT IN ('asked', 'begun', 'postponed') ORDER BY date DESC LIMIT 1 OFFSET ?2)";

const char *const OccurrenceRow::trimAsker =
    "DELETE FROM occurrences WHERE asked_by = ?1 AND state NOT IN ('asked', 'begun', 'postponed') AND date "
    "<= "
    "(SELECT date FROM occurrences WHERE asked_by = ?1 AND state NOT IN ('asked', 'begun', 'postponed') "
    "ORDER BY date DESC LIMIT 1 OFFSET ?2)";

const char *const OccurrenceRow::removeOld =
    "DELETE FROM occurrences WHERE identifier = ?1 AND date < ?2 AND date IS NOT ?3 "
    "AND (?4 IS NULL OR date <= ?4) AND state NOT IN ('asked', 'begun', 'postponed')";

const char *const OccurrenceRow::insertOutput =
    "INSERT OR REPLACE INTO outputs SELECT ?1, ?2, ?3 WHERE EXISTS "
    "(SELECT 1 FROM occurrences WHERE identifier = ?1 AND date = ?2)";

const char *const OccurrenceRow::trimOutputs =
    "DELETE FROM outputs WHERE identifier = ?1 AND date <= (SELECT date FROM outputs WHERE identifier = ?1 "
    "ORDER BY date DESC LIMIT 1 OFFSET ?2)";

const char *const OccurrenceRow::interruptBegun =
    "UPDATE occurrences SET state = 'interrupted', handed_to = NULL, handed_over = NULL "
    "WHERE state = 'begun'";

namespace
{
std::optional<qint64> milliseconds(const QDateTime &date)
{
    return date.isValid() ? std::optional(date.toMSecsSinceEpoch()) : std::nullopt;
}

QDateTime dateOf(std::optional<qint64> milliseconds)
{
    return milliseconds ? QDateTime::fromMSecsSinceEpoch(*milliseconds, Qt::UTC) : QDateTime();
}

std::optional<qint64> widened(std::optional<quint32> user)
{
    return user ? std::optional<qint64>(*user) : std::nullopt;
}

bool isUser(std::optional<qint64> number)
{
    return !number || (*number >= 0 && *number <= 0xffffffffLL);
}

std::optional<quint32> userOf(std::optional<qint64> number)
{
    return number ? std::optional(static_cast<quint32>(*number)) : std::nullopt;
}
} // namespace

SqliteStatement &OccurrenceRow::bind(SqliteStatement &statement, const OccurrenceRecord::Key &key,
                                     const OccurrenceEntry &entry)
{
    statement.bind(1, key.first)
        .bind(2, milliseconds(key.second))
        .bind(3, OccurrenceRecord::nameOf(entry.state))
        .bind(4, widened(entry.askedBy))
        .bind(5, milliseconds(entry.begun))
        .bind(6, entry.lateness);
    if (entry.place == ActingPlace::Unknown)
        statement.bind(7, std::optional<qint64>());
    else
        statement.bind(7, QString(entry.place == ActingPlace::Daemon ? "daemon" : "session"));
    return statement.bind(8, widened(entry.handedTo))
        .bind(9, milliseconds(entry.handedOver))
        .bind(10, entry.exitStatus)
        .bind(11, milliseconds(entry.ended))
        .bind(12, entry.failure)
        .bind(13, milliseconds(entry.postponedTo))
        .bind(14, entry.run ? milliseconds(entry.run->first) : std::nullopt)
        .bind(15, entry.run ? std::optional(entry.run->count) : std::nullopt)
        .bind(16, entry.run ? std::optional<qint64>(entry.run->isCountExact ? 0 : 1) : std::nullopt);
}

Result<std::pair<OccurrenceRecord::Key, OccurrenceEntry>>
OccurrenceRow::read(const SqliteStatement &statement)
{
    const auto state = OccurrenceRecord::stateNamed(statement.text(2));
    const auto askedBy = statement.number(3);
    const auto handedTo = statement.number(7);
    const auto handedOver = statement.number(8);
    if (!state || !isUser(askedBy) || !isUser(handedTo) || handedTo.has_value() != handedOver.has_value())
        return Error{"it holds an occurrence that cannot be read", Sqlite::damaged};
    OccurrenceEntry entry{*state, userOf(handedTo), dateOf(handedOver), userOf(askedBy)};
    entry.begun = dateOf(statement.number(4));
    entry.lateness = statement.number(5);
    const QString place = statement.text(6);
    entry.place = place == "daemon"    ? ActingPlace::Daemon
                  : place == "session" ? ActingPlace::Session
                                       : ActingPlace::Unknown;
    entry.exitStatus = statement.number(9);
    entry.ended = dateOf(statement.number(10));
    entry.failure = statement.text(11);
    entry.postponedTo = dateOf(statement.number(12));
    if (*state == OccurrenceState::Postponed && !entry.postponedTo.isValid())
        return Error{"it holds an occurrence that is postponed to no date", Sqlite::damaged};
    if (const auto count = statement.number(14))
        entry.run = {dateOf(statement.number(13)), *count, statement.number(15).value_or(0) == 0};
    return std::pair(OccurrenceRecord::Key(statement.text(0), dateOf(statement.number(1))), entry);
}
