// SPDX-License-Identifier: MIT
#include "hosts/application/when/DateInWords.h"

#include <QRegularExpression>

namespace
{
/// The long form of a day, which names the day of the week, without that.
QString dayFormat(const QLocale &locale)
{
    static const QRegularExpression weekday(R"([\s,،]*dddd[,،]?\s*)");
    return locale.dateFormat(QLocale::LongFormat).remove(weekday);
}
} // namespace

QString DateInWords::of(const QDateTime &moment, const QDateTime &now, const QTimeZone &zone,
                        const QLocale &locale)
{
    if (!moment.isValid() || !zone.isValid())
        return {};
    constexpr qint64 lastNamed = 6; // a week ahead the name would be that of today
    const QDateTime there = moment.toTimeZone(zone);
    const QString time = of(there.time(), locale);
    switch (const qint64 days = now.toTimeZone(zone).date().daysTo(there.date())) {
    case -1:
        return tr("yesterday %1", "and a time").arg(time);
    case 0:
        return tr("today %1", "and a time").arg(time);
    case 1:
        return tr("tomorrow %1", "and a time").arg(time);
    default:
        if (days > 0 && days <= lastNamed)
            return tr("%1 %2", "a day of the week and a time")
                .arg(locale.standaloneDayName(there.date().dayOfWeek()), time);
        return tr("%1, %2", "a day and a time").arg(of(there.date(), locale), time);
    }
}

QString DateInWords::of(QDate day, const QLocale &locale)
{
    return locale.toString(day, dayFormat(locale));
}

bool DateInWords::isDayFirst(const QLocale &locale)
{
    static const QRegularExpression day("(^|[^d])d{1,2}([^d]|$)");
    const QString format = locale.dateFormat(QLocale::LongFormat);
    return format.indexOf(day) < format.indexOf('M');
}

QString DateInWords::of(QTime time, const QLocale &locale)
{
    return locale.toString(time, format(time, locale));
}

QString DateInWords::format(QTime time, const QLocale &locale)
{
    const bool hasForms = locale.language() != QLocale::C;
    QString format = hasForms ? locale.timeFormat(QLocale::ShortFormat) : QString("HH:mm");
    if (time.second() == 0)
        return format;
    static const QRegularExpression minutes("(\\W)mm");
    return format.replace(minutes, "\\1mm\\1ss");
}
