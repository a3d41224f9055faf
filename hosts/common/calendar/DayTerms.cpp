// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/DayTerms.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/common/calendar/FriendlyTerms.h"

#include <QLocale>
#include <QRegularExpression>

using namespace dozely;

namespace
{
constexpr int anyYear = 0;

/// The number of the one of `count` names that begins so, from 1; 0 when none does.
int numberOf(const QString &beginning, int count, qsizetype shortest,
             QString (QLocale::*nameOf)(int, QLocale::FormatType) const)
{
    for (int i = 1; i <= count; ++i) {
        if (beginning.size() >= shortest &&
            (QLocale::c().*nameOf)(i, QLocale::LongFormat).toLower().startsWith(beginning))
            return i;
    }
    return 0;
}

int weekdayNamed(const QString &word)
{
    constexpr int days = 7;
    return numberOf(word, days, 2, &QLocale::dayName);
}

int monthNamed(const QString &word)
{
    constexpr int months = 12;
    return numberOf(word, months, 3, &QLocale::monthName);
}
} // namespace

DayTerms::DayTerms(const QDateTime &now, bool isToCome) : m_now(now), m_isToCome(isToCome) {}

QList<QDate> DayTerms::daysIn(const QString &text, const std::optional<QTime> &time) const
{
    QList<QDate> days = daysOf(text, time);
    const qsizetype blank = text.indexOf(' ');
    const int weekday = weekdayNamed(text.left(blank));
    if (blank < 0 || weekday == 0)
        return days;
    const QString date = text.mid(blank + 1);
    days = numberedDays(date, time) + namedDays(date, time); // "fri 3.4.": those that are one
    days.removeIf([&](const QDate &day) { return day.dayOfWeek() != weekday; });
    return days;
}

QList<QDate> DayTerms::daysOf(const QString &text, const std::optional<QTime> &time) const
{
    const QDate today = m_now.date();
    if (text.isEmpty() && !time)
        return {};
    if (text.isEmpty()) {
        const int away = isOnTheRightSide(today, time) ? 0 : m_isToCome ? 1 : -1;
        return {today.addDays(away)};
    }
    if (text == "today")
        return {today};
    if (text == "tomorrow")
        return {today.addDays(1)};
    if (text == "yesterday")
        return {today.addDays(-1)};
    return numberedDays(text, time) + namedDays(text, time) + weekdaysIn(text, time);
}

QList<QDate> DayTerms::numberedDays(const QString &text, const std::optional<QTime> &time) const
{
    static const QRegularExpression isoForm(R"(\A\d{4}-\d\d-\d\d\z)");
    static const QRegularExpression form(R"(\A(\d{1,2})([/.-])(\d{1,2})\2(\d{4}|\d{2})\z)");
    static const QRegularExpression shortForm(R"(\A(\d{1,2})(?:\.(\d{1,2})\.?|/(\d{1,2}))\z)");
    constexpr int century = 2000;
    if (isoForm.match(text).hasMatch()) {
        const QDate day = QDate::fromString(text, Qt::ISODate);
        return day.isValid() ? QList<QDate>{day} : QList<QDate>();
    }
    if (const auto match = shortForm.match(text); match.hasMatch()) {
        const int first = match.captured(1).toInt();
        const int second = (match.captured(2) + match.captured(3)).toInt();
        return dayOfMonth(anyYear, second, first, time) + dayOfMonth(anyYear, first, second, time);
    }
    const auto match = form.match(text);
    if (!match.hasMatch())
        return {};
    const int first = match.captured(1).toInt();
    const int second = match.captured(3).toInt();
    const int third = match.captured(4).toInt();
    const bool isShort = match.captured(4).size() == 2;
    const int year = isShort ? century + third : third;
    QList<QDate> days = dayOfMonth(year, second, first, time) + dayOfMonth(year, first, second, time);
    return isShort ? days + dayOfMonth(century + first, second, third, time) : days;
}

QList<QDate> DayTerms::namedDays(const QString &text, const std::optional<QTime> &time) const
{
    static const QRegularExpression dayFirst(R"(\A(\d{1,2})(?:st|nd|rd|th|\.)? ([a-z]+)(?: (\d{4}))?\z)");
    static const QRegularExpression monthFirst(R"(\A([a-z]+) (\d{1,2})(?:st|nd|rd|th)?(?: (\d{4}))?\z)");
    auto match = dayFirst.match(text);
    if (match.hasMatch())
        return dayOfMonth(match.captured(3).toInt(), monthNamed(match.captured(2)), match.captured(1).toInt(),
                          time);
    match = monthFirst.match(text);
    if (match.hasMatch())
        return dayOfMonth(match.captured(3).toInt(), monthNamed(match.captured(1)), match.captured(2).toInt(),
                          time);
    return {};
}

QList<QDate> DayTerms::weekdaysIn(const QString &text, const std::optional<QTime> &time) const
{
    constexpr int week = 7;
    const bool isNext = text.startsWith("next ");
    const int weekday = weekdayNamed(isNext ? text.mid(5) : text);
    const QDate today = m_now.date();
    if (weekday == 0)
        return {};
    if (isNext) { // some mean the first that comes, others that of next week
        const int away = (weekday - today.dayOfWeek() + week) % week;
        return away == 0 ? QList<QDate>{today.addDays(week)}
                         : QList<QDate>{today.addDays(away), today.addDays(away + week)};
    }
    for (int away = 0; away <= week; ++away) {
        const QDate day = today.addDays(m_isToCome ? away : -away);
        if (day.dayOfWeek() == weekday && isOnTheRightSide(day, time))
            return {day};
    }
    return {};
}

/// The day with these numbers, in the nearest year in which there is one where none is told.
QList<QDate> DayTerms::dayOfMonth(int year, int month, int day, const std::optional<QTime> &time) const
{
    if (year != anyYear)
        return QDate::isValid(year, month, day) ? QList<QDate>{QDate(year, month, day)} : QList<QDate>();
    constexpr int untilEveryLeapYear = 8;
    for (int away = 0; away <= untilEveryLeapYear; ++away) {
        const QDate found(m_now.date().year() + (m_isToCome ? away : -away), month, day);
        if (found.isValid() && isOnTheRightSide(found, time))
            return {found};
    }
    return {};
}

bool DayTerms::isOnTheRightSide(const QDate &day, const std::optional<QTime> &time) const
{
    if (day != m_now.date() || !time)
        return m_isToCome ? day >= m_now.date() : day <= m_now.date();
    const QList<QDateTime> moments = FriendlyTerms::momentsOf(day, *time, m_now.timeZone());
    if (moments.isEmpty()) // skipped: as it will be
        return (dateAtWallTime(day, *time, m_now.timeZone()) >= m_now) == m_isToCome;
    return m_isToCome ? moments.constLast() >= m_now : moments.constFirst() <= m_now;
}
