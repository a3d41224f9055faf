// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

/// Days as people write them: the half of DateTerms that has no time in it. A plain value.
class DayTerms
{
public:
    /// `now` is in the zone by whose clocks days begin; what leaves something open is to come, or past.
    DayTerms(const QDateTime &now, bool isToCome);

    /// Every day that a text in small letters can mean, none for what means none. `time` is the time of that
    /// day, where one is told: with it today counts as long as that is to come, or once it is past. An empty
    /// text is the nearest day for that time.
    QList<QDate> daysIn(const QString &text, const std::optional<QTime> &time) const;

private:
    QList<QDate> daysOf(const QString &text, const std::optional<QTime> &time) const;
    QList<QDate> numberedDays(const QString &text, const std::optional<QTime> &time) const;
    QList<QDate> namedDays(const QString &text, const std::optional<QTime> &time) const;
    QList<QDate> weekdaysIn(const QString &text, const std::optional<QTime> &time) const;
    QList<QDate> dayOfMonth(int year, int month, int day, const std::optional<QTime> &time) const;
    bool isOnTheRightSide(const QDate &day, const std::optional<QTime> &time) const;

    QDateTime m_now;
    bool m_isToCome;
};
