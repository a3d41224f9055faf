// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/month/MonthOccurrence.h"

#include <QDate>
#include <QWidget>

#include <optional>

class DayModel;
class MonthModel;
class OccurrenceActions;
class QLabel;
class QListView;

/// All that takes place on a day, and what can be done with it. Escape leaves it. THREADING: the main thread.
class DayList : public QWidget
{
    Q_OBJECT
public:
    /// The month's model is to outlive the list.
    explicit DayList(const MonthModel &month, QWidget *parent = nullptr);

    /// Shows a day, or the same anew. What was chosen stays so where it is still there, and the list
    /// where it was read.
    void setDay(const QDate &day);

    /// The keyboard goes to the list.
    void open();

    OccurrenceActions &actions() { return *m_actions; }

Q_SIGNALS:
    /// Somebody wants to leave the list.
    void left();

    /// Somebody wants to see the schedule.
    void occurrenceOpened(const MonthOccurrence &occurrence);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeButtons();
    std::optional<MonthOccurrence> chosen() const;

    const MonthModel &m_month;
    QDate m_day;
    DayModel *m_model;
    QLabel *m_title;
    QListView *m_list;
    OccurrenceActions *m_actions;
};
