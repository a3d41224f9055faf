// SPDX-License-Identifier: MIT
#include "hosts/application/window/ScheduleListOrder.h"

#include "hosts/application/window/ScheduleListModel.h"

ScheduleListOrder::ScheduleListOrder(QAbstractItemModel *schedules, QObject *parent)
    : QSortFilterProxyModel(parent)
{
    m_collator.setNumericMode(true);
    setSourceModel(schedules);
    setSortRole(ScheduleListModel::NextRole);
    sort(0);
}

void ScheduleListOrder::search(const QString &text)
{
    m_searched = text.trimmed();
    invalidateFilter();
}

bool ScheduleListOrder::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const QModelIndex index = sourceModel()->index(row, 0, parent);
    if (!index.data(ScheduleListModel::WantedRole).toBool())
        return false;
    // The action is asked for only where the name does not do: it costs more.
    return m_searched.isEmpty() || index.data().toString().contains(m_searched, Qt::CaseInsensitive) ||
           index.data(ScheduleListModel::CellRole)
               .toMap()
               .value("Action")
               .toString()
               .contains(m_searched, Qt::CaseInsensitive);
}

bool ScheduleListOrder::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const QDateTime one = left.data(ScheduleListModel::NextRole).toDateTime();
    const QDateTime other = right.data(ScheduleListModel::NextRole).toDateTime();
    if (one.isValid() != other.isValid())
        return one.isValid();
    if (one != other)
        return one < other;
    return m_collator.compare(left.data().toString(), right.data().toString()) < 0;
}
