// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionSides.h"

#include <QVBoxLayout>
#include <QWidget>

/// What stands in the place of the editor while there is no schedule: wishes that many people have, and the
/// way to one of one's own.
class StartPage : public QWidget
{
    Q_OBJECT
public:
    /// `sides` outlives it.
    explicit StartPage(ActionSides &sides, QWidget *parent = nullptr);

Q_SIGNALS:
    void addingWanted();
    /// One of the wishes: the values of a schedule.
    void wishChosen(const QVariantMap &wish);

private:
    void addTexts(QVBoxLayout &column);
    void addButtons(QVBoxLayout &column, ActionSides &sides);
};
