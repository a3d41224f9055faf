// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionSides.h"
#include "hosts/application/book/ScheduleBook.h"

#include <QAbstractListModel>
#include <QHash>
#include <QTimer>

/// The schedules of a book as a list, a row an entry, each asked for when it is to be seen. Checking an item
/// enables its schedule.
///
/// THREADING: the main thread. Book and sides outlive it.
class ScheduleListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role {
        CellRole = Qt::UserRole, ///< The dictionary that WDConfiguratorCell draws.
        KeyRole,                 ///< The entry's key.
        NextRole,                ///< QDateTime; invalid: it does not take place.
        WantedRole,              ///< Whether it is to be shown at all.
    };

    ScheduleListModel(ScheduleBook &book, ActionSides &sides, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// When an entry takes place next, in words.
    QString timeOf(const BookEntry &entry) const;

private:
    QDateTime nextAt(int row) const;
    QVariantMap cellOf(const BookEntry &entry) const;
    QString spokenOf(const BookEntry &entry) const;
    void tellAll(const QList<int> &roles);
    void waitForTomorrow();

    ScheduleBook &m_book;
    ActionSides &m_sides;
    mutable QHash<int, QDateTime> m_next; // by row, as far as they were asked for: sorting asks often
    QTimer m_midnight;                    // when "tomorrow" becomes "today"
};
