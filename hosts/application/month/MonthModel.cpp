// SPDX-License-Identifier: MIT
#include "hosts/application/month/MonthModel.h"

#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/application/when/DateInWords.h"

#include <algorithm>

using namespace dozely;

namespace
{
/// What the machine's clocks show.
QDateTime shownAt(const QDateTime &moment)
{
    return moment.toTimeZone(machineTimeZone());
}
} // namespace

MonthModel::MonthModel(const QLocale &locale, QObject *parent) : QAbstractTableModel(parent), m_locale(locale)
{
}

void MonthModel::setMonth(const QDate &day)
{
    const QDate month(day.year(), day.month(), 1);
    const int before = (month.dayOfWeek() - m_locale.firstDayOfWeek() + daysOfWeek) % daysOfWeek;
    beginResetModel();
    m_month = month;
    m_first = month.addDays(-before);
    endResetModel();
}

void MonthModel::setOccurrences(const QList<MonthOccurrence> &occurrences)
{
    const ZoneClock clock(machineTimeZone());
    QList<MonthOccurrence> sorted = occurrences;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto &a, const auto &b) { return a.moment < b.moment; });
    m_byDay.clear();
    for (const MonthOccurrence &occurrence : std::as_const(sorted)) {
        if (!occurrence.moment.isValid())
            continue;
        const qint64 shown = clock.wallTimeAt(occurrence.moment.toMSecsSinceEpoch());
        m_byDay[QDateTime::fromMSecsSinceEpoch(shown, Qt::UTC).date()] += occurrence;
    }
    Q_EMIT dataChanged(index(0, 0), index(weeks - 1, daysOfWeek - 1));
}

QDate MonthModel::dayAt(const QModelIndex &index) const
{
    return index.isValid() ? m_first.addDays(index.row() * daysOfWeek + index.column()) : QDate();
}

QModelIndex MonthModel::indexOf(const QDate &day) const
{
    const qint64 place = m_first.daysTo(day);
    if (!day.isValid() || place < 0 || place >= weeks * daysOfWeek)
        return {};
    return index(static_cast<int>(place) / daysOfWeek, static_cast<int>(place) % daysOfWeek);
}

QTime MonthModel::timeOf(const MonthOccurrence &occurrence) const
{
    return shownAt(occurrence.moment).time();
}

QString MonthModel::lineOf(const MonthOccurrence &occurrence) const
{
    return tr("%1 %2", "a time, and the name of a schedule")
        .arg(DateInWords::of(timeOf(occurrence), m_locale), occurrence.name.simplified());
}

QString MonthModel::lineOf(const MonthOccurrence &occurrence, int width, const QFontMetrics &metrics) const
{
    constexpr double leastForBoth = 2.2; // times the time
    const int time = metrics.horizontalAdvance(DateInWords::of(timeOf(occurrence), m_locale));
    return width < leastForBoth * time ? occurrence.name.simplified() : lineOf(occurrence);
}

QString MonthModel::spokenLineOf(const MonthOccurrence &occurrence) const
{
    const QString line = lineOf(occurrence);
    if (occurrence.wasSkipped)
        return tr("%1, skipped", "an occurrence").arg(line);
    return occurrence.isPostponed ? tr("%1, put off", "an occurrence").arg(line) : line;
}

int MonthModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : weeks;
}

int MonthModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : daysOfWeek;
}

QVariant MonthModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::DisplayRole)
        return m_locale.toString(dayAt(index).day());
    return role == Qt::AccessibleTextRole ? spoken(dayAt(index)) : QVariant();
}

QString MonthModel::spoken(const QDate &day) const
{
    constexpr qsizetype mostRead = 5;
    const QList<MonthOccurrence> occurrences = occurrencesOn(day);
    QStringList parts{m_locale.toString(day, QLocale::LongFormat)};
    for (const MonthOccurrence &occurrence : occurrences.mid(0, mostRead))
        parts += spokenLineOf(occurrence);
    if (occurrences.size() > mostRead)
        parts += tr("%1 more", "occurrences").arg(m_locale.toString(occurrences.size() - mostRead));
    if (occurrences.isEmpty())
        parts += tr("nothing", "takes place on a day");
    return parts.join("; ");
}

QVariant MonthModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    const int day = (m_locale.firstDayOfWeek() - 1 + section) % daysOfWeek + 1;
    if (role == Qt::DisplayRole)
        return m_locale.standaloneDayName(day, QLocale::ShortFormat);
    return role == Qt::AccessibleTextRole ? m_locale.standaloneDayName(day) : QVariant();
}
