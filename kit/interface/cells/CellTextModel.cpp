// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/CellTextModel.h"

#include "DozelyKit/interface/cells/CellDelegate.h"

namespace dozely
{

CellTextModel::CellTextModel(const CellDelegate &delegate, QObject *parent)
    : QIdentityProxyModel(parent), m_cell(delegate.cell()->copy()), m_role(delegate.valueRole())
{
}

CellTextModel::~CellTextModel() = default;

QVariant CellTextModel::data(const QModelIndex &index, int role) const
{
    const QVariant own = QIdentityProxyModel::data(index, role);
    if (role != Qt::AccessibleTextRole || !own.toString().isEmpty() ||
        !QIdentityProxyModel::data(index, Qt::DisplayRole).toString().isEmpty())
        return own;
    const QVariant value = QIdentityProxyModel::data(index, m_role);
    if (!value.isValid())
        return own;
    m_cell->setObjectValue(value);
    return m_cell->accessibilityLabel();
}

} // namespace dozely
