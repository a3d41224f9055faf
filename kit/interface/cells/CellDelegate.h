// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/cells/NSTextFieldCell.h"

#include <QStyledItemDelegate>

namespace dozely
{

/// Lets a view of Qt's draw and edit its items with a cell. The view's style draws what lies below: the
/// selection, the focus. The cell gets the item's value, whether it is enabled and whether it is selected,
/// right before it draws. What a screen reader reads comes from the model: CellTextModel.
///
///     auto *delegate = new CellDelegate(std::make_shared<WDConfiguratorCell>(), list);
///     delegate->setValueRole(Qt::UserRole); // where the model has the entries
///     delegate->setRowHeight(30);
///     list->setItemDelegate(delegate);
class DOZELYINTERFACE_EXPORT CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit CellDelegate(std::shared_ptr<NSTextFieldCell> cell, QObject *parent = nullptr);
    ~CellDelegate() override;

    std::shared_ptr<NSTextFieldCell> cell() const;

    /// The role of the items' data that becomes the object value; Qt::EditRole unless set.
    void setValueRole(int role);
    int valueRole() const;

    /// In points, at least: a row is as high as the cell needs (rowHeight) in any case.
    void setRowHeight(int height);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

private:
    void prepare(const QStyleOptionViewItem &option, const QModelIndex &index) const;

    std::shared_ptr<NSTextFieldCell> m_cell;
    int m_role = Qt::EditRole;
    int m_rowHeight = 0;
};

} // namespace dozely
