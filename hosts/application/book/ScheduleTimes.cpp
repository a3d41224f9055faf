// SPDX-License-Identifier: MIT
#include "hosts/application/book/ScheduleTimes.h"

#include "hosts/application/book/ScheduleKeys.h"

#include <QStringList>

namespace
{
constexpr QLatin1StringView ruleKey("rule");
constexpr QLatin1StringView localStartKey("localStart");
constexpr QLatin1StringView extraDatesKey("extraDates");
constexpr QLatin1StringView excludedDatesKey("excludedDates");

QList<WallTime> timesIn(const QVariant &texts)
{
    QList<WallTime> times;
    for (const QString &text : texts.toStringList()) {
        if (const auto time = WallTime::fromString(text))
            times += *time;
    }
    return times;
}

QStringList textsOf(const QList<WallTime> &times)
{
    QStringList texts;
    for (const WallTime &time : times)
        texts += time.toString();
    return texts;
}
} // namespace

ScheduleTimes ScheduleTimes::of(const QVariantMap &values)
{
    ScheduleTimes times;
    times.date = QDateTime::fromString(values.value(ScheduleKey::date).toString(), Qt::ISODate);
    times.timeZone = values.value(ScheduleKey::timeZone).toString();
    const QVariantMap repeats = values.value(ScheduleKey::repeats).toMap();
    if (repeats.isEmpty())
        return times;
    Recurrence recurrence;
    recurrence.rule = repeats.value(ruleKey).toString();
    recurrence.localStart =
        WallTime::fromString(repeats.value(localStartKey).toString()).value_or(WallTime());
    recurrence.extraDates = timesIn(repeats.value(extraDatesKey));
    recurrence.excludedDates = timesIn(repeats.value(excludedDatesKey));
    times.recurrence = recurrence;
    return times;
}

QVariantMap ScheduleTimes::toValues() const
{
    QVariantMap values{{ScheduleKey::date, date.toUTC().toString(Qt::ISODate)},
                       {ScheduleKey::timeZone, timeZone},
                       {ScheduleKey::repeats, QVariant()}};
    if (!recurrence)
        return values;
    QVariantMap repeats{{ruleKey, recurrence->rule}, {localStartKey, recurrence->localStart.toString()}};
    if (!recurrence->extraDates.isEmpty())
        repeats.insert(extraDatesKey, textsOf(recurrence->extraDates));
    if (!recurrence->excludedDates.isEmpty())
        repeats.insert(excludedDatesKey, textsOf(recurrence->excludedDates));
    values.insert(ScheduleKey::repeats, repeats);
    return values;
}
