// SPDX-License-Identifier: MIT
#include "hosts/application/history/HistoryFilter.h"

#include "hosts/application/history/HistoryModel.h"

#include <algorithm>

HistoryFilter::HistoryFilter(QObject *parent) : QSortFilterProxyModel(parent)
{
    setSortRole(HistoryModel::sortRole);
    setSortLocaleAware(true);
}

void HistoryFilter::setWords(const QString &words)
{
    m_words = words.split(' ', Qt::SkipEmptyParts);
    invalidateFilter();
}

void HistoryFilter::setTroubleOnly(bool isTroubleOnly)
{
    m_isTroubleOnly = isTroubleOnly;
    invalidateFilter();
}

bool HistoryFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const QAbstractItemModel &model = *sourceModel();
    if (m_isTroubleOnly && !model.index(row, 0, parent).data(HistoryModel::troubleRole).toBool())
        return false;
    if (m_words.isEmpty())
        return true;
    QString text;
    for (int column = 0; column < model.columnCount(parent); ++column)
        text += model.index(row, column, parent).data().toString() + '\n';
    return std::all_of(m_words.cbegin(), m_words.cend(),
                       [&](const QString &word) { return text.contains(word, Qt::CaseInsensitive); });
}
