// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/window/ScheduleListModel.h"
#include "hosts/application/window/ScheduleListOrder.h"

#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QWidget>

/// The schedules of a book in a list, with a field to search them, and buttons to add and remove.
class ScheduleListPane : public QWidget
{
    Q_OBJECT
public:
    /// Book and sides outlive it.
    ScheduleListPane(ScheduleBook &book, ActionSides &sides, QWidget *parent = nullptr);

    /// The key of the current schedule; empty: none.
    QString currentKey() const;
    void setCurrentKey(const QString &key);

    /// Makes a schedule the current one where none is.
    void ensureCurrent();

    /// How many there are, whatever is searched for.
    int count() const;

    QLineEdit &searchField() { return *m_search; }
    QListView &list() { return *m_list; }

Q_SIGNALS:
    void currentChanged(const QString &key);
    void addingWanted();
    void removalWanted();

private:
    ScheduleListModel *m_schedules;
    ScheduleListOrder *m_order;
    QLineEdit *m_search;
    QListView *m_list;
    QPushButton *m_remove;
};
