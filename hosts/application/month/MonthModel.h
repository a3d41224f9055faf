// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/month/MonthOccurrence.h"

#include <QAbstractTableModel>
#include <QFontMetrics>
#include <QHash>
#include <QList>
#include <QLocale>

/// The six weeks around a month: a row a week, in the locale's order of days, and what takes place on each,
/// by the machine's clocks. THREADING: the main thread.
class MonthModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    static constexpr int weeks = 6;
    static constexpr int daysOfWeek = 7;

    explicit MonthModel(const QLocale &locale, QObject *parent = nullptr);

    /// Shows the month of a day.
    void setMonth(const QDate &day);
    QDate firstOfMonth() const { return m_month; }
    QDate firstDay() const { return m_first; }
    QDate lastDay() const { return m_first.addDays(weeks * daysOfWeek - 1); }

    /// In any order, of any days.
    void setOccurrences(const QList<MonthOccurrence> &occurrences);

    /// What takes place on a day, in the order of the moments.
    QList<MonthOccurrence> occurrencesOn(const QDate &day) const { return m_byDay.value(day); }

    QDate dayAt(const QModelIndex &index) const;

    /// Not valid for a day that is not shown.
    QModelIndex indexOf(const QDate &day) const;

    /// "22:00 Backup": an occurrence in one line.
    QString lineOf(const MonthOccurrence &occurrence) const;

    /// The same where it has room of so many points; where that is little, without the time.
    QString lineOf(const MonthOccurrence &occurrence, int width, const QFontMetrics &metrics) const;

    /// The same for who hears it, with what became of it.
    QString spokenLineOf(const MonthOccurrence &occurrence) const;

    const QLocale &locale() const { return m_locale; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString spoken(const QDate &day) const;
    QTime timeOf(const MonthOccurrence &occurrence) const;

    QLocale m_locale;
    QDate m_month;
    QDate m_first;
    QHash<QDate, QList<MonthOccurrence>> m_byDay;
};
