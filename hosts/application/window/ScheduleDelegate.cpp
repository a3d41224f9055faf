// SPDX-License-Identifier: MIT
#include "hosts/application/window/ScheduleDelegate.h"

#include "DozelyKit/interface/drawing/NSFont.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"
#include "hosts/application/window/ScheduleListModel.h"

#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace
{
constexpr int margin = 8;          // around what is drawn, in points
constexpr int gap = 6;             // between check mark and cell
constexpr int betweenTexts = 12;   // at least, between name and time
constexpr double besideTexts = 35; // what the cell itself needs beside its texts

QStyle *styleOf(const QStyleOptionViewItem &option)
{
    return option.widget ? option.widget->style() : nullptr;
}

/// A tint of the highlight on which the row's own text can be read: the cell does not change its colour.
void drawSelection(QPainter *painter, const QStyleOptionViewItem &option)
{
    const bool isSelected = option.state & QStyle::State_Selected;
    const bool isHovered = option.state & QStyle::State_MouseOver;
    if (!isSelected && !isHovered)
        return;
    QColor colour = option.palette.color(QPalette::Active, QPalette::Highlight);
    colour.setAlphaF(isSelected ? 0.28F : 0.1F);
    const QRectF rect = QRectF(option.rect).adjusted(3, 1, -3, -1);
    painter->setBrush(colour);
    const bool hasFocus = isSelected && option.state & QStyle::State_HasFocus;
    painter->setPen(hasFocus ? QPen(option.palette.color(QPalette::Highlight), 1) : QPen(Qt::NoPen));
    painter->drawRoundedRect(hasFocus ? rect.adjusted(0.5, 0.5, -0.5, -0.5) : rect, 6, 6);
}
} // namespace

ScheduleDelegate::ScheduleDelegate(QObject *parent)
    : CellDelegate(std::make_shared<WDConfiguratorCell>(), parent),
      m_row(std::make_shared<WDConfiguratorCell>())
{
    setValueRole(ScheduleListModel::CellRole);
}

QRect ScheduleDelegate::checkRect(const QStyleOptionViewItem &option)
{
    const QStyle *const style = styleOf(option);
    const int width = style ? style->pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget) : 16;
    const int height = style ? style->pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget) : 16;
    const QRect mark(option.rect.left() + margin + 2, option.rect.top() + (option.rect.height() - height) / 2,
                     width, height);
    return QStyle::visualRect(option.direction, option.rect, mark);
}

QVariantMap ScheduleDelegate::fitted(QVariantMap entry, double width) const
{
    const QFontMetricsF metrics(NSFont::userFontOfSize(NSFont::smallSystemFontSize()));
    const double room = width - besideTexts;
    const QString time = metrics.elidedText(entry.value("Time").toString(), Qt::ElideRight, room * 0.6);
    const double forName = room - metrics.horizontalAdvance(time) - betweenTexts;
    entry.insert("Time", time);
    entry.insert("Name", metrics.elidedText(entry.value("Name").toString(), Qt::ElideRight, forName));
    entry.insert("Action", metrics.elidedText(entry.value("Action").toString(), Qt::ElideRight, room));
    return entry;
}

void ScheduleDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    drawSelection(painter, option);
    painter->restore();

    QStyleOptionViewItem mark(option);
    mark.rect = checkRect(option);
    const bool isOn = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    mark.state.setFlag(QStyle::State_HasFocus, false);
    mark.state |= isOn ? QStyle::State_On : QStyle::State_Off;
    if (QStyle *const style = styleOf(option))
        style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &mark, painter, option.widget);

    const bool isMirrored = option.direction == Qt::RightToLeft;
    const QRect besideMark =
        isMirrored ? option.rect.adjusted(margin, 0, 0, 0)
                         .intersected(QRect(option.rect.topLeft(),
                                            QPoint(mark.rect.left() - gap, option.rect.bottom())))
                   : option.rect.adjusted(0, 0, -margin, 0)
                         .intersected(QRect(QPoint(mark.rect.right() + gap, option.rect.top()),
                                            option.rect.bottomRight()));
    const double height = m_row->rowHeight();
    const QRectF frame(besideMark.left(), besideMark.top() + (besideMark.height() - height) / 2,
                       besideMark.width(), height);
    painter->save();
    painter->setClipRect(besideMark);
    {
        const NSGraphicsContext context(painter);
        m_row->setEnabled(isOn && option.state & QStyle::State_Enabled);
        m_row->setObjectValue(fitted(index.data(valueRole()).toMap(), frame.width()));
        m_row->drawWithFrameInView(frame, const_cast<QWidget *>(option.widget));
    }
    painter->restore();
}

QSize ScheduleDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {0, qRound(m_row->rowHeight()) + 2 * margin};
}

bool ScheduleDelegate::editorEvent(QEvent *event, QAbstractItemModel *model,
                                   const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() == QEvent::KeyPress)
        return CellDelegate::editorEvent(event, model, option, index);
    if (event->type() != QEvent::MouseButtonRelease)
        return false;
    const auto *const mouse = static_cast<const QMouseEvent *>(event);
    // As large as the edge of the row: a check mark alone is hard to hit.
    const QRect place = checkRect(option).adjusted(-margin, -margin, gap / 2, margin);
    if (mouse->button() != Qt::LeftButton || !place.contains(mouse->position().toPoint()))
        return false;
    const bool isOn = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return model->setData(index, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}
