// SPDX-License-Identifier: MIT
#include "hosts/common/record/RecordedOutcomes.h"

#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QFileInfo>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds patience(5);

/// The version of the format from which on there are failures and outputs.
constexpr qint64 versionWithFailures = 2;

/// That from which on there are postponed ones and runs of missed ones.
constexpr qint64 versionWithRuns = 3;

QDateTime dateOf(std::optional<qint64> milliseconds)
{
    return milliseconds ? QDateTime::fromMSecsSinceEpoch(*milliseconds, Qt::UTC) : QDateTime();
}

/// Of a row that begins with these columns, by the version of the format.
constexpr char columns[] = "state, begun, lateness, exit_status, ended, failure";
constexpr char formerColumns[] = "state, begun, lateness, exit_status, NULL, ''";
const char *columnsOf(qint64 version)
{
    return version >= versionWithFailures ? columns : formerColumns;
}

RecordedOutcome outcomeIn(const SqliteStatement &row)
{
    return {row.text(0),   dateOf(row.number(1)), row.number(2),
            row.number(3), dateOf(row.number(4)), row.text(5)};
}

/// Of a row of RecordedOutcomes::query.
RecordedOccurrence occurrenceIn(const SqliteStatement &row)
{
    RecordedOccurrence occurrence{row.text(6), dateOf(row.number(7)), outcomeIn(row), {}, {}, {}};
    if (occurrence.outcome.state == "postponed")
        occurrence.postponedTo = dateOf(row.number(8));
    occurrence.first = dateOf(row.number(9));
    occurrence.count = row.number(10);
    occurrence.isCountExact = row.number(11).value_or(0) == 0;
    return occurrence;
}
} // namespace

Result<RecordedOutcomes> RecordedOutcomes::open()
{
    RecordedOutcomes outcomes;
    const QFileInfo file(RootFolder::join("/var/lib/dozely/occurrences.db"));
    if (!file.exists() && !file.isSymLink())
        return outcomes;
    if (!file.isReadable())
        return Error{QString("You may not read %1").arg(file.filePath()), notPermitted};
    QList<quint32> owners{NSProcessInfo::effectiveUserID()};
    if (const auto owner = RootFolder::owner())
        owners += *owner;
    if (const auto trusted = isTrustedPath(file.filePath(), owners); !trusted)
        return trusted.error();
    auto database = Sqlite::open(file.filePath(), Sqlite::File::ReadOnly, patience);
    if (!database)
        return database.error();
    auto version = database->prepare("PRAGMA user_version");
    const auto isThere = version.next();
    if (!isThere)
        return isThere.error();
    outcomes.m_version = version.number(0).value_or(0);
    (void)version.next();
    outcomes.m_database = *std::move(database);
    return outcomes;
}

Result<std::optional<RecordedOutcome>> RecordedOutcomes::find(const QString &identifier,
                                                              const QDateTime &date) const
{
    if (!m_database)
        return std::optional<RecordedOutcome>();
    const QByteArray text = QByteArray("SELECT ") + columnsOf(m_version) +
                            " FROM occurrences WHERE identifier = ?1 AND date = ?2";
    auto search = m_database->prepare(text.constData());
    const auto isThere = search.bind(1, identifier).bind(2, date.toMSecsSinceEpoch()).next();
    if (!isThere)
        return isThere.error();
    if (!*isThere)
        return std::optional<RecordedOutcome>();
    return std::optional(outcomeIn(search));
}

/// The search for rows as occurrenceIn reads them.
QByteArray RecordedOutcomes::query(const char *more) const
{
    const bool hasRuns = m_version >= versionWithRuns;
    return QByteArray("SELECT ") + columnsOf(m_version) + ", identifier, date, " +
           (hasRuns ? "postponed_to, first, count, has_more" : "NULL, NULL, NULL, NULL") +
           " FROM occurrences " + more;
}

Result<QList<RecordedOccurrence>> RecordedOutcomes::all(SqliteStatement &search) const
{
    QList<RecordedOccurrence> found;
    for (;;) {
        const auto isThere = search.next();
        if (!isThere)
            return isThere.error();
        if (!*isThere)
            return found;
        found += occurrenceIn(search);
    }
}

Result<std::optional<RecordedOccurrence>> RecordedOutcomes::findLatest(const QString &identifier,
                                                                       const QDateTime &date) const
{
    if (!m_database)
        return std::optional<RecordedOccurrence>();
    auto search = m_database->prepare(
        query("WHERE identifier = ?1 AND date <= ?2 ORDER BY date DESC LIMIT 1").constData());
    const auto found = all(search.bind(1, identifier).bind(2, date.toMSecsSinceEpoch()));
    if (!found)
        return found.error();
    return found->isEmpty() ? std::optional<RecordedOccurrence>() : found->constFirst();
}

Result<QList<RecordedOccurrence>> RecordedOutcomes::latest(const std::optional<QString> &identifier,
                                                           qint64 most) const
{
    if (!m_database)
        return QList<RecordedOccurrence>();
    auto search = m_database->prepare(
        query("WHERE ?1 IS NULL OR identifier = ?1 ORDER BY date DESC, identifier LIMIT ?2").constData());
    if (identifier)
        search.bind(1, *identifier);
    return all(search.bind(2, most));
}

Result<QList<RecordedOccurrence>> RecordedOutcomes::toCome(const QDateTime &date) const
{
    if (!m_database)
        return QList<RecordedOccurrence>();
    auto search = m_database->prepare(query("WHERE date > ?1 OR state = 'postponed'").constData());
    return all(search.bind(1, date.toMSecsSinceEpoch()));
}

Result<std::optional<RecordedOutput>> RecordedOutcomes::findOutput(const QString &identifier,
                                                                   const std::optional<QDateTime> &date) const
{
    if (!m_database)
        return std::optional<RecordedOutput>();
    const QByteArray text =
        QByteArray("SELECT ") + columnsOf(m_version) + ", date, " +
        (m_version >= versionWithFailures
             ? "(SELECT output FROM outputs WHERE outputs.identifier = ?1 AND outputs.date = "
               "occurrences.date)"
             : "NULL") +
        " FROM occurrences WHERE identifier = ?1 AND begun IS NOT NULL AND state NOT IN ('asked', 'begun', "
        "'postponed') "
        "AND (?2 IS NULL OR date = ?2) ORDER BY begun DESC, date DESC LIMIT 1";
    auto search = m_database->prepare(text.constData());
    const auto isThere = search.bind(1, identifier)
                             .bind(2, date ? std::optional<qint64>(date->toMSecsSinceEpoch()) : std::nullopt)
                             .next();
    if (!isThere)
        return isThere.error();
    if (!*isThere)
        return std::optional<RecordedOutput>();
    return std::optional(RecordedOutput{dateOf(search.number(6)), outcomeIn(search), search.bytes(7)});
}

Result<bool> RecordedOutcomes::isInUse(const QString &identifier) const
{
    if (!m_database)
        return false;
    auto search = m_database->prepare("SELECT 1 FROM occurrences "
                                      "WHERE identifier = ?1 AND state IN ('asked', 'begun', 'postponed')");
    return search.bind(1, identifier).next();
}
