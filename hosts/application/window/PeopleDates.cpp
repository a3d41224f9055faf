// SPDX-License-Identifier: MIT
#include "hosts/application/window/PeopleDates.h"

#include <QCoreApplication>
#include <QLocale>

namespace
{
constexpr int daysThatHaveNames = 6; // a week ahead, the name of a day would be today's

/// What the language calls a day of another week.
QString dayOf(QDate day, QDate today)
{
    const QLocale locale;
    //: a day without its year, as QDate::toString has it
    const QString format = day.year() == today.year()
                               ? QCoreApplication::translate("PeopleDates", "d MMM")
                               //: a day with its year, as QDate::toString has it
                               : QCoreApplication::translate("PeopleDates", "d MMM yyyy");
    return locale.toString(day, format);
}
} // namespace

QString PeopleDates::of(const QDateTime &date, const QDateTime &now)
{
    if (!date.isValid())
        return {};
    const QLocale locale;
    const QDateTime local = date.toLocalTime();
    const QDate today = now.toLocalTime().date();
    const QString time = locale.toString(local.time(), QLocale::ShortFormat);
    const qint64 days = today.daysTo(local.date());
    if (days == 0)
        return QCoreApplication::translate("PeopleDates", "today %1").arg(time);
    if (days == 1)
        return QCoreApplication::translate("PeopleDates", "tomorrow %1").arg(time);
    //: a day and a time: "Thursday 06:55"
    const QString both = QCoreApplication::translate("PeopleDates", "%1 %2");
    if (days > 1 && days <= daysThatHaveNames)
        return both.arg(locale.standaloneDayName(local.date().dayOfWeek()), time);
    return both.arg(dayOf(local.date(), today), time);
}
