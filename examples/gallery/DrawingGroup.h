// SPDX-License-Identifier: MIT
#pragma once

#include <QGroupBox>

/// Rounded paths, one for each reading of the corner mask, filled with gradients: linear, bilinear, and one
/// with an evaluate function of the gallery's own. Dots mark the nine points of the upper ones' rectangles.
class DrawingGroup : public QGroupBox
{
    Q_OBJECT
public:
    explicit DrawingGroup(QWidget *parent = nullptr);
};
