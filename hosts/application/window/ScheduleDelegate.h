// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/cells/CellDelegate.h"
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"

/// Draws a schedule of a ScheduleListModel: its check mark, at the side where reading begins, and the cell.
/// The cell lets texts run on over each other, so they are cut short here.
class ScheduleDelegate : public dozely::CellDelegate
{
    Q_OBJECT
public:
    explicit ScheduleDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

    /// Where the check mark is, in the coordinates of the row's view.
    static QRect checkRect(const QStyleOptionViewItem &option);

private:
    QVariantMap fitted(QVariantMap entry, double width) const;

    std::shared_ptr<WDConfiguratorCell> m_row;
};
