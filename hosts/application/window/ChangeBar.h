// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/book/ScheduleBook.h"

#include <QPushButton>
#include <QToolButton>
#include <QWidget>

/// The buttons for what was changed: undo, redo, discard, apply. Their keys work in the whole window.
class ChangeBar : public QWidget
{
    Q_OBJECT
public:
    /// `book` outlives it.
    explicit ChangeBar(ScheduleBook &book, QWidget *parent = nullptr);

Q_SIGNALS:
    void applyWanted();

protected:
    void changeEvent(QEvent *event) override;

private:
    void refresh();

    ScheduleBook &m_book;
    QToolButton *m_undo;
    QToolButton *m_redo;
    QPushButton *m_discard;
    QPushButton *m_apply;
};
