// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/bus/SchedulerClient.h"

#include <QWidget>

class HistoryView;
class LogPane;

/// What became of occurrences, as the daemon tells it, and below it the log of one; asked for while it can be
/// seen. THREADING: the main thread.
class HistoryPage : public QWidget
{
    Q_OBJECT
public:
    /// `client` outlives it.
    explicit HistoryPage(SchedulerClient &client, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void read();
    void readSoon();

    SchedulerClient &m_client;
    HistoryView *m_history;
    LogPane *m_log;
    bool m_isOld = true;
};
