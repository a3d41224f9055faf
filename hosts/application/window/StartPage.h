// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// What stands in the place of the editor while there is no schedule.
class StartPage : public QWidget
{
    Q_OBJECT
public:
    explicit StartPage(QWidget *parent = nullptr);

Q_SIGNALS:
    void addingWanted();
};
