// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/CellDelegate.h"

#include "DozelyKit/interface/drawing/NSGraphicsContext.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace dozely
{

CellDelegate::CellDelegate(std::shared_ptr<NSTextFieldCell> cell, QObject *parent)
    : QStyledItemDelegate(parent), m_cell(std::move(cell))
{
}

CellDelegate::~CellDelegate() = default;

std::shared_ptr<NSTextFieldCell> CellDelegate::cell() const
{
    return m_cell;
}

void CellDelegate::setValueRole(int role)
{
    m_role = role;
}

int CellDelegate::valueRole() const
{
    return m_role;
}

void CellDelegate::setRowHeight(int height)
{
    m_rowHeight = height;
}

void CellDelegate::prepare(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    m_cell->setObjectValue(index.data(m_role));
    m_cell->setEnabled(option.state.testFlag(QStyle::State_Enabled));
    m_cell->setHighlighted(option.state.testFlag(QStyle::State_Selected));
}

void CellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    QStyleOptionViewItem panel = option;
    panel.showDecorationSelected = true;
    panel.backgroundBrush = qvariant_cast<QBrush>(index.data(Qt::BackgroundRole));
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &panel, painter, option.widget);

    prepare(option, index);
    {
        const NSGraphicsContext context(painter);
        m_cell->drawWithFrameInView(option.rect, const_cast<QWidget *>(option.widget));
    }
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
    }
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    prepare(option, index);
    return {static_cast<int>(std::ceil(m_cell->cellSize().width())),
            std::max(m_rowHeight, static_cast<int>(std::ceil(m_cell->rowHeight())))};
}

QWidget *CellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    prepare(option, index);
    auto *editor = new QLineEdit(parent);
    editor->setFrame(false);
    m_cell->selectWithFrameInView(option.rect, parent, editor, nullptr, 0,
                                  static_cast<int>(m_cell->stringValue().length()));
    return editor;
}

void CellDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *field = static_cast<QLineEdit *>(editor);
    const QString text = index.data(m_role).toString();
    if (field->text() != text)
        field->setText(text);
}

void CellDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    model->setData(index, static_cast<QLineEdit *>(editor)->text(), m_role);
}

void CellDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                        const QModelIndex &) const
{
    editor->setGeometry(m_cell->editingFrameForCellFrame(option.rect, option.widget).toAlignedRect());
}

} // namespace dozely
