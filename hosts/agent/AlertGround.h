// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QWidget>

/// What alerts are drawn on: below the translucent bezel an opaque layer, since there is no blur behind the
/// window that would keep the text apart from what is there; and an edge, for dark surroundings.
namespace AlertGround
{
/// Whether this palette is one of high contrast: text and ground as far apart as they can be.
bool isHighContrast(const QPalette &palette);

/// The layer. The bezel above darkens it to what people see.
void paint(QPainter &painter, const QRect &bounds, bool isHighContrast);

/// What people see of it.
QColor seenColor(bool isHighContrast);

/// For what can be read on it.
QColor textColor(bool isHighContrast);
} // namespace AlertGround

/// A view that fills an alert's bezel and draws the edge.
class AlertPanel : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *event) override;
};
