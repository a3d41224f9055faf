// SPDX-License-Identifier: MIT
#include "hosts/application/history/HistoryOutcome.h"

#include <QStringList>

namespace
{
QDateTime dateIn(const QVariantMap &map, const char *key)
{
    return QDateTime::fromString(map.value(key).toString(), Qt::ISODateWithMs).toUTC();
}

std::optional<qint64> numberIn(const QVariantMap &map, const char *key)
{
    bool isNumber = false;
    const qint64 number = map.value(key).toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}
} // namespace

HistoryOutcome HistoryOutcome::fromMap(const QVariantMap &map)
{
    HistoryOutcome outcome;
    outcome.identifier = map.value("identifier").toString();
    outcome.name = map.value("name").toString();
    outcome.date = dateIn(map, "date");
    outcome.state = map.value("state").toString();
    outcome.first = dateIn(map, "first");
    outcome.count = numberIn(map, "count");
    outcome.isCountExact = map.value("isCountExact", true).toBool();
    outcome.postponedTo = dateIn(map, "postponedTo");
    outcome.begun = dateIn(map, "begun");
    outcome.ended = dateIn(map, "ended");
    outcome.lateness = numberIn(map, "lateness");
    if (const auto status = numberIn(map, "exitStatus"))
        outcome.exitStatus = static_cast<int>(*status);
    outcome.failure = map.value("failure").toString();
    return outcome;
}

bool HistoryOutcome::isTrouble() const
{
    static const QStringList troubles{"failed",        "skipped", "missed",
                                      "not performed", "unknown", "interrupted"};
    return troubles.contains(state);
}
