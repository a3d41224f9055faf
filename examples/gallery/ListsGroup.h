// SPDX-License-Identifier: MIT
#pragma once

#include <QGroupBox>

/// Lists drawn by cells: schedules, an outline of texts with images, and a table with a column of plain texts
/// whose rows can be dragged out as promised files.
class ListsGroup : public QGroupBox
{
    Q_OBJECT
public:
    explicit ListsGroup(QWidget *parent = nullptr);

private:
    QWidget *makeSchedules();
    QWidget *makeOutline();
    QWidget *makeTable();
};
