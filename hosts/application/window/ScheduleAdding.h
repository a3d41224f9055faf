// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionSides.h"
#include "hosts/application/book/ScheduleBook.h"

#include <QObject>

/// Adds schedules for the person to fill in. What one begins with, its action's configuration side says,
/// which may have to be tried first. THREADING: the main thread.
class ScheduleAdding : public QObject
{
    Q_OBJECT
public:
    /// Book and sides outlive it; `user` is whose the schedules are.
    ScheduleAdding(ScheduleBook &book, ActionSides &sides, quint32 user);
    ~ScheduleAdding() override;

    /// With the usual action.
    void add();

    /// What a ready wish says.
    void addWish(const QVariantMap &wish);

Q_SIGNALS:
    /// The book has it, under this key.
    void added(const QString &key);

private:
    void finish();

    ScheduleBook &m_book;
    ActionSides &m_sides;
    const quint32 m_user;
    QString m_action;   // of the one to add, which is being tried
    QVariantMap m_wish; // where it is one
};
