// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/month/MonthOccurrence.h"

#include <QAbstractListModel>

class MonthModel;

/// The occurrences of one day, a row each. THREADING: the main thread.
class DayModel : public QAbstractListModel
{
    Q_OBJECT
public:
    /// The month's model is to outlive it.
    explicit DayModel(const MonthModel &month, QObject *parent = nullptr);

    /// Shows what the month has on a day now.
    void setDay(const QDate &day);

    const QList<MonthOccurrence> &occurrences() const { return m_occurrences; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    const MonthModel &m_month;
    QList<MonthOccurrence> m_occurrences;
};
