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
    outcomes.m_database = *std::move(database);
    return outcomes;
}

Result<std::optional<RecordedOutcome>> RecordedOutcomes::find(const QString &identifier,
                                                              const QDateTime &date) const
{
    if (!m_database)
        return std::optional<RecordedOutcome>();
    auto search = m_database->prepare("SELECT state, begun, lateness, exit_status FROM occurrences "
                                      "WHERE identifier = ?1 AND date = ?2");
    const auto isThere = search.bind(1, identifier).bind(2, date.toMSecsSinceEpoch()).next();
    if (!isThere)
        return isThere.error();
    if (!*isThere)
        return std::optional<RecordedOutcome>();
    RecordedOutcome outcome{search.text(0), {}, search.number(2), search.number(3)};
    if (const auto begun = search.number(1))
        outcome.begun = QDateTime::fromMSecsSinceEpoch(*begun, Qt::UTC);
    return std::optional(outcome);
}

Result<bool> RecordedOutcomes::isInUse(const QString &identifier) const
{
    if (!m_database)
        return false;
    auto search = m_database->prepare("SELECT 1 FROM occurrences "
                                      "WHERE identifier = ?1 AND state IN ('asked', 'begun')");
    return search.bind(1, identifier).next();
}
