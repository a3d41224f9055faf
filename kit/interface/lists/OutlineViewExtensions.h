// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QModelIndexList>

class QTreeView;

/// Selection in trees. An item is the index of a row's first column. Only what can be reached by opened
/// parents has a row: items below a closed one are neither found nor told.
namespace zandorSoftwaresExtensions
{
/// The item of the selected row; with several selected rows, of the one selected last. Invalid when none is.
DOZELYINTERFACE_EXPORT QModelIndex selectedItem(const QTreeView *view);

/// The items of all selected rows, from top to bottom.
DOZELYINTERFACE_EXPORT QModelIndexList allSelectedItems(const QTreeView *view);

/// Selects the rows of the items, one after the other, each beside what is selected already when `extending`.
/// Otherwise each replaces what was selected, so that the last one found remains; with none found, nothing is
/// selected.
DOZELYINTERFACE_EXPORT void selectItemsByExtendingSelection(QTreeView *view, const QModelIndexList &items,
                                                            bool extending);
} // namespace zandorSoftwaresExtensions
