// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/bus/SchedulerClient.h"

#include <QWidget>

class MonthView;

/// The month with every occurrence, as the daemon tells it; asked for while it can be seen.
///
/// THREADING: the main thread.
class CalendarPage : public QWidget
{
    Q_OBJECT
public:
    /// `client` outlives it.
    explicit CalendarPage(SchedulerClient &client, QWidget *parent = nullptr);

Q_SIGNALS:
    /// Somebody wants to see the schedule with this identifier.
    void openWanted(const QString &identifier);

    /// The daemon refused what was wanted of an occurrence: a sentence.
    void refused(const QString &sentence);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void read();
    void readSoon();
    void connectWishes();

    SchedulerClient &m_client;
    MonthView *m_month;
    bool m_isOld = true;
    int m_question = 0; // the latest one; answers of others are too late
};
