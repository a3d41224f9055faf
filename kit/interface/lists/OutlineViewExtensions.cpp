// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/lists/OutlineViewExtensions.h"

#include <QItemSelectionModel>
#include <QTreeView>

#include <algorithm>
#include <vector>

namespace
{
/// Whether the item has a row: it is the view's, below its root, not hidden, and all its parents are open.
bool hasRow(const QTreeView *view, const QModelIndex &item)
{
    if (!item.isValid() || item.model() != view->model() || item == view->rootIndex())
        return false;
    for (QModelIndex index = item; index != view->rootIndex(); index = index.parent()) {
        const QModelIndex parent = index.parent();
        if (!index.isValid() || view->isRowHidden(index.row(), parent))
            return false;
        if (parent != view->rootIndex() && !view->isExpanded(parent))
            return false;
    }
    return true;
}

/// The rows on the way from the root to the item: compared in this order, items stand as they do in the view.
std::vector<int> wayTo(QModelIndex item)
{
    std::vector<int> rows;
    for (; item.isValid(); item = item.parent())
        rows.insert(rows.begin(), item.row());
    return rows;
}
} // namespace

QModelIndexList zandorSoftwaresExtensions::allSelectedItems(const QTreeView *view)
{
    if (!view->selectionModel())
        return {};
    std::vector<std::pair<std::vector<int>, QModelIndex>> found;
    for (const QItemSelectionRange &range : view->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const QModelIndex item = view->model()->index(row, 0, range.parent());
            if (hasRow(view, item))
                found.emplace_back(wayTo(item), item);
        }
    }
    std::sort(found.begin(), found.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    QModelIndexList items;
    for (const auto &[way, item] : found) {
        if (items.isEmpty() || items.last() != item) // several columns of one row
            items += item;
    }
    return items;
}

QModelIndex zandorSoftwaresExtensions::selectedItem(const QTreeView *view)
{
    const QModelIndexList items = allSelectedItems(view);
    const QModelIndex current = view->currentIndex().siblingAtColumn(0);
    if (items.contains(current))
        return current;
    return items.isEmpty() ? QModelIndex() : items.last();
}

void zandorSoftwaresExtensions::selectItemsByExtendingSelection(QTreeView *view, const QModelIndexList &items,
                                                                bool extending)
{
    QItemSelectionModel *selection = view->selectionModel();
    if (!selection)
        return;
    if (!extending)
        selection->clearSelection();
    const bool autoScroll = view->hasAutoScroll();
    view->setAutoScroll(false); // a new selection does not scroll
    for (const QModelIndex &item : items) {
        if (!hasRow(view, item))
            continue;
        const QModelIndex index = item.siblingAtColumn(0);
        selection->select(index, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
        selection->setCurrentIndex(
            index, (extending ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect) |
                       QItemSelectionModel::Rows);
    }
    view->setAutoScroll(autoScroll);
}
