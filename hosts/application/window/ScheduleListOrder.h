// SPDX-License-Identifier: MIT
#pragma once

#include <QCollator>
#include <QSortFilterProxyModel>

/// What of a ScheduleListModel a list shows, and in which order: what takes place next comes first, the rest
/// by name; those alone whose name or action has what is searched for.
class ScheduleListOrder : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit ScheduleListOrder(QAbstractItemModel *schedules, QObject *parent = nullptr);

    /// Empty: everything.
    void search(const QString &text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    QCollator m_collator;
    QString m_searched;
};
