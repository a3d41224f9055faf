// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/Recurrence.h"

#include <QStringList>

using namespace dozely;

namespace
{
const QStringList knownKeys{"Rule", "Local Start", "Extra Dates", "Excluded Dates"};

/// A clause about one key of the dictionary.
Error fault(const QString &key, const QString &what)
{
    return Error{QString("\"%1\" of \"Recurrence Rule\" %2").arg(key, what)};
}

Result<QString> readText(const QVariantMap &map, const QString &key)
{
    if (!map.contains(key))
        return Error{QString("\"Recurrence Rule\" has no \"%1\"").arg(key)};
    const QVariant value = map.value(key);
    if (value.metaType() != QMetaType::fromType<QString>())
        return fault(key, "is not a string");
    return value.toString();
}

Result<QList<WallTime>> readDates(const QVariantMap &map, const QString &key)
{
    QList<WallTime> dates;
    if (!map.contains(key))
        return dates;
    const QVariant value = map.value(key);
    if (value.metaType() != QMetaType::fromType<QVariantList>())
        return fault(key, "is not an array");
    const QVariantList list = value.toList();
    if (list.size() > Recurrence::maximumDates)
        return fault(key, QString("has more than %1 dates").arg(Recurrence::maximumDates));
    for (const QVariant &entry : list) {
        const bool isText = entry.metaType() == QMetaType::fromType<QString>();
        const std::optional<WallTime> date = isText ? WallTime::fromString(entry.toString()) : std::nullopt;
        if (!date)
            return fault(key, "has an entry that is no date and time such as 2026-03-14T06:55:00");
        dates.append(*date);
    }
    return dates;
}

QVariantList written(const QList<WallTime> &dates)
{
    QVariantList list;
    for (const WallTime &date : dates)
        list.append(date.toString());
    return list;
}
} // namespace

Result<Recurrence> Recurrence::fromDictionary(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<QVariantMap>())
        return Error{"\"Recurrence Rule\" is not a dictionary"};
    const QVariantMap map = value.toMap();
    const Result<QString> rule = readText(map, "Rule");
    if (!rule)
        return rule.error();
    if (rule->size() > maximumRuleLength)
        return fault("Rule", QString("has more than %1 characters").arg(maximumRuleLength));
    const Result<QString> start = readText(map, "Local Start");
    if (!start)
        return start.error();
    const std::optional<WallTime> localStart = WallTime::fromString(*start);
    if (!localStart)
        return fault("Local Start", "is no date and time such as 2026-03-14T06:55:00");
    const Result<QList<WallTime>> extraDates = readDates(map, "Extra Dates");
    if (!extraDates)
        return extraDates.error();
    const Result<QList<WallTime>> excludedDates = readDates(map, "Excluded Dates");
    if (!excludedDates)
        return excludedDates.error();
    Recurrence recurrence{*rule, *localStart, *extraDates, *excludedDates, {}};
    for (auto key = map.cbegin(); key != map.cend(); ++key) {
        if (!knownKeys.contains(key.key()))
            recurrence.otherKeys.insert(key.key(), key.value());
    }
    return recurrence;
}

QVariantMap Recurrence::toDictionary() const
{
    QVariantMap map = otherKeys;
    map.insert("Rule", rule);
    map.insert("Local Start", localStart.toString());
    if (!extraDates.isEmpty())
        map.insert("Extra Dates", written(extraDates));
    if (!excludedDates.isEmpty())
        map.insert("Excluded Dates", written(excludedDates));
    return map;
}
