// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/cells/NSTextFieldCell.h"

#include <QIdentityProxyModel>

namespace dozely
{

class CellDelegate;

/// A model whose items say what a cell draws of them: screen readers ask the model, not the delegate, and
/// would read nothing of an item that is no text.
///
///     auto *told = new CellTextModel(*delegate, list);
///     told->setSourceModel(model);
///     list->setModel(told); // its indexes are not those of the model below
///
/// An item that says something itself (Qt::AccessibleTextRole, or a text to display) goes on saying that.
///
/// THREADING: the main thread.
class DOZELYINTERFACE_EXPORT CellTextModel : public QIdentityProxyModel
{
    Q_OBJECT
public:
    /// With a copy of the delegate's cell, and the role that the delegate takes values from now.
    explicit CellTextModel(const CellDelegate &delegate, QObject *parent = nullptr);
    ~CellTextModel() override;

    /// That of the model below; for Qt::AccessibleTextRole what the cell says (accessibilityLabel).
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    std::shared_ptr<NSTextFieldCell> m_cell;
    int m_role;
};

} // namespace dozely
