// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertLabel.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int longestText = 400; // of a plug-in that would fill the screen
constexpr int narrowest = 12;    // characters

/// Lays the lines out below each other; their height.
double layOut(QTextLayout &layout, double width)
{
    double height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

void prepare(QTextLayout &layout, const QLabel &label)
{
    QTextOption option(label.layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    option.setTextDirection(label.layoutDirection());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.setText(label.text().replace('\n', QChar::LineSeparator));
    layout.setFont(label.font());
}
} // namespace

AlertLabel::AlertLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void AlertLabel::showText(const QString &text)
{
    setText(text.size() <= longestText ? text : text.left(longestText - 1) + QChar(0x2026));
    setHidden(text.isEmpty());
}

int AlertLabel::heightForWidth(int width) const
{
    QTextLayout layout;
    prepare(layout, *this);
    return static_cast<int>(std::ceil(layOut(layout, width)));
}

QSize AlertLabel::sizeHint() const
{
    const int width = std::max(minimumSizeHint().width(), 30 * fontMetrics().averageCharWidth());
    return {width, heightForWidth(width)};
}

QSize AlertLabel::minimumSizeHint() const
{
    return {narrowest * fontMetrics().averageCharWidth(), fontMetrics().height()};
}

void AlertLabel::paintEvent(QPaintEvent *)
{
    QTextLayout layout;
    prepare(layout, *this);
    layOut(layout, width());
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    layout.draw(&painter, {});
}
