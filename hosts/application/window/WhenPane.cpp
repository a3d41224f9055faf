// SPDX-License-Identifier: MIT
#include "hosts/application/window/WhenPane.h"

#include "hosts/application/when/NextDates.h"
#include "hosts/application/when/RecurrenceForm.h"

#include <QVBoxLayout>

WhenPane::WhenPane(QWidget *parent) : QWidget(parent), m_form(new RecurrenceForm), m_next(new NextDates)
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(14);
    layout->addWidget(m_form);
    auto *const dates = new QVBoxLayout;
    dates->setSpacing(4);
    auto *const title = new QLabel(tr("Next dates"));
    title->setForegroundRole(QPalette::PlaceholderText);
    dates->addWidget(title);
    dates->addWidget(m_next);
    layout->addLayout(dates);
    setFocusProxy(m_form);
    connect(m_form, &RecurrenceForm::changed, this, &WhenPane::take);
}

void WhenPane::show(const ScheduleTimes &times)
{
    if (m_shown == times)
        return;
    m_shown = times;
    m_form->setRecurrence(times.date, times.timeZone, times.recurrence);
    showNext();
}

QString WhenPane::fault() const
{
    return m_form->fault();
}

void WhenPane::showNext()
{
    if (m_form->isValid())
        m_next->setSchedule(m_form->date(), m_form->timeZone(), m_form->recurrence());
    else
        m_next->clearSchedule();
}

void WhenPane::take()
{
    showNext();
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
