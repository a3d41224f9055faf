// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/bus/SchedulerClient.h"

#include <QLabel>
#include <QToolButton>
#include <QWidget>

/// One line that tells how it is with the daemon, the user's agent and the clock that wakes the machine; what
/// can be done about a fault stands in the tool tip. A button each tries out alerts and waking.
class StatusLine : public QWidget
{
    Q_OBJECT
public:
    /// `client` outlives it.
    explicit StatusLine(SchedulerClient &client, QWidget *parent = nullptr);

Q_SIGNALS:
    void alertTestWanted();
    void wakingTestWanted();

private:
    enum class Mood { Good, Bad, Unknown };
    void refresh();
    void showService();
    void showAgent();
    void showClock();
    static void tell(QLabel &label, Mood mood, const QString &text, const QString &remedy);

    SchedulerClient &m_client;
    QLabel *m_service;
    QLabel *m_agent;
    QLabel *m_clock;
    QToolButton *m_testAlert;
    QToolButton *m_testWaking;
};
