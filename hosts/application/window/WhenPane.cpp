// SPDX-License-Identifier: MIT
#include "hosts/application/window/WhenPane.h"

#include "hosts/application/when/RecurrenceForm.h"

#include <QVBoxLayout>

WhenPane::WhenPane(QWidget *parent) : QWidget(parent), m_form(new RecurrenceForm)
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_form);
    setFocusProxy(m_form);
    connect(m_form, &RecurrenceForm::changed, this, &WhenPane::take);
}

void WhenPane::show(const ScheduleTimes &times)
{
    if (m_shown == times)
        return;
    m_shown = times;
    m_form->setRecurrence(times.date, times.timeZone, times.recurrence);
}

QString WhenPane::fault() const
{
    return m_form->fault();
}

void WhenPane::take()
{
    if (!m_form->isValid())
        return;
    ScheduleTimes times{m_form->date(), m_form->timeZone(), m_form->recurrence()};
    // As they will come back from a schedule's values, so that they are known again.
    times = ScheduleTimes::of(times.toValues());
    if (m_shown == times)
        return;
    m_shown = times;
    Q_EMIT edited(times);
}
