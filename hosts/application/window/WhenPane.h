// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/book/ScheduleTimes.h"

#include <QWidget>

class NextDates;
class RecurrenceForm;

/// Where a schedule's times are edited, with the dates that come of them.
class WhenPane : public QWidget
{
    Q_OBJECT
public:
    explicit WhenPane(QWidget *parent = nullptr);

    /// Shows the times; what is edited stays untouched where it is just these.
    void show(const ScheduleTimes &times);

    /// Why what is picked cannot be, a sentence; empty when it can.
    QString fault() const;

Q_SIGNALS:
    /// Somebody picked other times, which can be.
    void edited(const ScheduleTimes &times);

private:
    void take();

    void showNext();

    RecurrenceForm *m_form;
    NextDates *m_next;
    std::optional<ScheduleTimes> m_shown;
};
