// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/NSTextFieldCell.h"

#include "DozelyKit/interface/drawing/LaidOutText_p.h"
#include "DozelyKit/interface/drawing/NSFont.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"
#include "DozelyKit/interface/views/ViewPalette_p.h"

#include <QFontMetricsF>
#include <QLineEdit>
#include <QPainter>

#include <algorithm>
#include <optional>

using namespace dozely;

namespace
{
constexpr double margin = 2; // between the frame and the text, left and right
} // namespace

struct NSTextFieldCell::Private {
    QVariant value;
    std::optional<QFont> font;
    QColor textColor;       // invalid: the palette's
    QColor backgroundColor; // invalid: the palette's
    bool enabled = true;
    bool highlighted = false;
    bool drawsBackground = false;
};

NSTextFieldCell::NSTextFieldCell() : d(std::make_unique<Private>()) {}

NSTextFieldCell::~NSTextFieldCell() = default;

std::shared_ptr<NSTextFieldCell> NSTextFieldCell::copy() const
{
    auto cell = std::make_shared<NSTextFieldCell>();
    copyStateTo(*cell);
    return cell;
}

void NSTextFieldCell::copyStateTo(NSTextFieldCell &cell) const
{
    *cell.d = *d;
}

void NSTextFieldCell::setObjectValue(const QVariant &value)
{
    d->value = value;
}

QVariant NSTextFieldCell::objectValue() const
{
    return d->value;
}

QString NSTextFieldCell::stringValue() const
{
    return d->value.toString();
}

bool NSTextFieldCell::isEnabled() const
{
    return d->enabled;
}

void NSTextFieldCell::setEnabled(bool enabled)
{
    d->enabled = enabled;
}

bool NSTextFieldCell::isHighlighted() const
{
    return d->highlighted;
}

void NSTextFieldCell::setHighlighted(bool highlighted)
{
    d->highlighted = highlighted;
}

QFont NSTextFieldCell::font() const
{
    return d->font ? *d->font : NSFont::userFontOfSize(NSFont::smallSystemFontSize());
}

void NSTextFieldCell::setFont(const QFont &font)
{
    d->font = font;
}

void NSTextFieldCell::setTextColor(const QColor &color)
{
    d->textColor = color;
}

QColor NSTextFieldCell::textColor() const
{
    return d->textColor.isValid() ? d->textColor : ViewPalette::textColor(nullptr);
}

bool NSTextFieldCell::drawsBackground() const
{
    return d->drawsBackground;
}

void NSTextFieldCell::setDrawsBackground(bool draws)
{
    d->drawsBackground = draws;
}

void NSTextFieldCell::setBackgroundColor(const QColor &color)
{
    d->backgroundColor = color;
}

QColor NSTextFieldCell::backgroundColor() const
{
    return backgroundColorInView(nullptr);
}

QColor NSTextFieldCell::backgroundColorInView(const QWidget *view) const
{
    return d->backgroundColor.isValid() ? d->backgroundColor
                                        : ViewPalette::of(view).color(QPalette::Active, QPalette::Base);
}

QSizeF NSTextFieldCell::cellSize() const
{
    const QSizeF text = LaidOutText(stringValue(), font()).size();
    return {text.width() + 2 * margin, text.height()};
}

double NSTextFieldCell::rowHeight() const
{
    return cellSize().height();
}

QString NSTextFieldCell::accessibilityLabel() const
{
    return stringValue();
}

void NSTextFieldCell::drawWithFrameInView(const QRectF &frame, QWidget *view)
{
    if (const NSGraphicsContext *context = NSGraphicsContext::currentContext(); context && d->drawsBackground)
        context->graphicsPort()->fillRect(frame, backgroundColorInView(view));
    drawInteriorWithFrameInView(frame, view);
}

void NSTextFieldCell::drawInteriorWithFrameInView(const QRectF &frame, QWidget *view)
{
    const NSGraphicsContext *context = NSGraphicsContext::currentContext();
    const double room = frame.width() - 2 * margin;
    if (!context || !d->value.isValid() || room <= 0)
        return;
    QColor colour = d->textColor.isValid() ? d->textColor : ViewPalette::textColor(view);
    if (!d->enabled)
        colour = ViewPalette::grayColor(view);
    else if (d->highlighted)
        colour = ViewPalette::of(view).color(QPalette::Active, QPalette::HighlightedText);
    QString line = stringValue();
    line.replace('\n', ' ');
    const QFont font = this->font();
    const LaidOutText text(QFontMetricsF(font).elidedText(line, Qt::ElideRight, room), font);
    const bool atTheRight = ViewPalette::layoutDirection(view) == Qt::RightToLeft;
    const double x = frame.x() + margin + (atTheRight ? room - text.size().width() : 0);
    text.drawAtPoint(*context, {x, frame.y() + (frame.height() - text.size().height()) * 0.5}, colour);
}

QRectF NSTextFieldCell::editingFrameForCellFrame(const QRectF &frame, const QWidget *) const
{
    return frame;
}

void NSTextFieldCell::editWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor,
                                          QObject *delegate, QEvent *event)
{
    Q_UNUSED(event)
    editor->setParent(view);
    if (delegate)
        editor->installEventFilter(delegate);
    editor->setFont(font());
    editor->setText(stringValue());
    editor->setGeometry(frame.toAlignedRect());
    editor->show();
    editor->setFocus();
}

void NSTextFieldCell::selectWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor,
                                            QObject *delegate, int start, int length)
{
    // Not a derived class's, which would take its part off the frame a second time.
    NSTextFieldCell::editWithFrameInView(frame, view, editor, delegate, nullptr);
    editor->setSelection(start, length);
}
