// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/history/HistoryOutcome.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QLocale>

/// Outcomes as rows, in words. THREADING: the main thread.
class HistoryModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { When, Name, State, Lateness, Why, Columns };
    static constexpr int sortRole = Qt::UserRole;        ///< What a column is sorted by.
    static constexpr int troubleRole = Qt::UserRole + 1; ///< Whether a row is isTrouble().

    explicit HistoryModel(const QLocale &locale, QObject *parent = nullptr);

    void setOutcomes(const QList<HistoryOutcome> &outcomes);
    const HistoryOutcome &at(int row) const { return m_outcomes.at(row); }

    /// Another day has begun, which changes the words for dates.
    void renameDates();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString words(const HistoryOutcome &outcome, int column) const;
    QVariant sortedBy(const HistoryOutcome &outcome, int column) const;

    QLocale m_locale;
    const QIcon m_trouble;
    QList<HistoryOutcome> m_outcomes;
};
