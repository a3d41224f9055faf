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

QDateTime dateOf(std::optional<qint64> milliseconds)
{
    return milliseconds ? QDateTime::fromMSecsSinceEpoch(*milliseconds, Qt::UTC) : QDateTime();
}

/// Of a row that begins with these columns.
constexpr char columns[] = "state, begun, lateness, exit_status, ended, failure";
constexpr char formerColumns[] = "state, begun, lateness, exit_status, NULL, ''";

RecordedOutcome outcomeIn(const SqliteStatement &row)
{
    return {row.text(0),   dateOf(row.number(1)), row.number(2),
            row.number(3), dateOf(row.number(4)), row.text(5)};
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
    outcomes.m_hasFailures = version.number(0).value_or(0) >= versionWithFailures;
    (void)version.next();
    outcomes.m_database = *std::move(database);
    return outcomes;
}

Result<std::optional<RecordedOutcome>> RecordedOutcomes::find(const QString &identifier,
                                                              const QDateTime &date) const
{
    if (!m_database)
        return std::optional<RecordedOutcome>();
    const QByteArray text = QByteArray("SELECT ") + (m_hasFailures ? columns : formerColumns) +
                            " FROM occurrences WHERE identifier = ?1 AND date = ?2";
    auto search = m_database->prepare(text.constData());
    const auto isThere = search.bind(1, identifier).bind(2, date.toMSecsSinceEpoch()).next();
    if (!isThere)
        return isThere.error();
    if (!*isThere)
        return std::optional<RecordedOutcome>();
    return std::optional(outcomeIn(search));
}

Result<std::optional<RecordedOutput>> RecordedOutcomes::findOutput(const QString &identifier,
                                                                   const std::optional<QDateTime> &date) const
{
    if (!m_database)
        return std::optional<RecordedOutput>();
    const QByteArray text =
        QByteArray("SELECT ") + (m_hasFailures ? columns : formerColumns) + ", date, " +
        (m_hasFailures ? "(SELECT output FROM outputs WHERE outputs.identifier = ?1 AND outputs.date = "
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
