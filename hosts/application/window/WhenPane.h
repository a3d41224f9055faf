// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/book/ScheduleTimes.h"

#include <QWidget>

class RecurrenceForm;

/// Where a schedule's times are edited: the form for that, between a schedule's values.
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

    RecurrenceForm *m_form;
    std::optional<ScheduleTimes> m_shown;
};
