// SPDX-License-Identifier: MIT
#pragma once

#include <QGroupBox>

class ZDRBezelView;

/// Buttons in all their states, and a pie that can be set and counts down, on the panel that they were made
/// for.
class ControlsGroup : public QGroupBox
{
    Q_OBJECT
public:
    explicit ControlsGroup(QWidget *parent = nullptr);

private:
    ZDRBezelView *makeButtons();
    ZDRBezelView *makePies();
};
