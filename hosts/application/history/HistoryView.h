// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"

#include <QVariantMap>
#include <QWidget>

#include <memory>

class HistoryFilter;
class HistoryModel;
class QLabel;
class QTableView;

/// What became of occurrences, newest first: when, which schedule, the outcome and how late it was in words,
/// and why. It shows what it is given. THREADING: the main thread.
class HistoryView : public QWidget
{
    Q_OBJECT
public:
    explicit HistoryView(QWidget *parent = nullptr);

    /// OUTCOMEs of com.dozely.Scheduler1, in any order.
    void setOutcomes(const QList<QVariantMap> &outcomes);

Q_SIGNALS:
    /// Somebody wants to see the log of an occurrence, from when it began until it ended. One that never
    /// began has its date for both; one that goes on has no end.
    void logWanted(const QString &identifier, const QDateTime &begun, const QDateTime &ended);

private:
    void makeFilter();
    void makeTable();
    void showCount();
    void waitForMidnight();
    void wantLog(const QModelIndex &index);

    HistoryModel *m_model;
    HistoryFilter *m_filter;
    QTableView *m_table = nullptr;
    QLabel *m_none = nullptr;
    std::unique_ptr<dozely::AbsoluteTimer> m_midnight;
};
