// SPDX-License-Identifier: MIT
#include "hosts/application/month/DayModel.h"

#include "hosts/application/month/MonthModel.h"

#include <QFont>

DayModel::DayModel(const MonthModel &month, QObject *parent) : QAbstractListModel(parent), m_month(month) {}

void DayModel::setDay(const QDate &day)
{
    beginResetModel();
    m_occurrences = m_month.occurrencesOn(day);
    endResetModel();
}

int DayModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_occurrences.size());
}

QVariant DayModel::data(const QModelIndex &index, int role) const
{
    const MonthOccurrence &occurrence = m_occurrences.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return m_month.spokenLineOf(occurrence);
    case Qt::FontRole: {
        QFont font;
        font.setStrikeOut(occurrence.wasSkipped);
        return font;
    }
    default:
        return {};
    }
}
