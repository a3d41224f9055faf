// SPDX-License-Identifier: MIT
#pragma once

#include <QSortFilterProxyModel>

/// Rows of a history that hold some words, and where wanted only those that are trouble. THREADING: the main
/// thread.
class HistoryFilter : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit HistoryFilter(QObject *parent = nullptr);

    /// Each word is to stand somewhere in the row.
    void setWords(const QString &words);
    void setTroubleOnly(bool isTroubleOnly);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    QStringList m_words;
    bool m_isTroubleOnly = false;
};
