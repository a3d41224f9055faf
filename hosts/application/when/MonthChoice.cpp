// SPDX-License-Identifier: MIT
#include "hosts/application/when/MonthChoice.h"

#include "hosts/application/when/ToggleGrid.h"
#include "hosts/application/when/WheelGuard.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLocale>
#include <QRadioButton>
#include <QVBoxLayout>

namespace
{
constexpr int last = 0; // its bit in a pattern
constexpr int daysOfWeek = 7;
constexpr int daysOfMonth = 31;
} // namespace

QList<ToggleGrid::Item> MonthChoice::items() const
{
    QList<ToggleGrid::Item> items;
    for (int day = 1; day <= daysOfMonth; ++day)
        items += {day, locale().toString(day), tr("Day %1 of the month").arg(locale().toString(day))};
    items += {last, tr("Last day"), tr("The last day of the month"), 3};
    return items;
}

MonthChoice::MonthChoice(QWidget *parent)
    : QWidget(parent),
      m_byDays(new QRadioButton(tr("Days of the month"), this)),
      m_days(new ToggleGrid(daysOfWeek, items(), this)),
      m_byWeekday(new QRadioButton(tr("A day of the week"), this)),
      m_detail(new QWidget(this)),
      m_ordinal(new QComboBox(m_detail)),
      m_weekday(new QComboBox(m_detail))
{
    m_days->setAccessibleName(tr("Days of the month"));
    m_ordinal->addItem(tr("The first"), 1);
    m_ordinal->addItem(tr("The second"), 2);
    m_ordinal->addItem(tr("The third"), 3);
    m_ordinal->addItem(tr("The fourth"), 4);
    m_ordinal->addItem(tr("The last"), -1);
    m_ordinal->setAccessibleName(tr("Which one of the month"));
    const int first = locale().firstDayOfWeek() - 1;
    for (int i = 0; i < daysOfWeek; ++i) {
        const int day = (first + i) % daysOfWeek;
        m_weekday->addItem(locale().standaloneDayName(day + 1), day);
    }
    m_weekday->setAccessibleName(tr("Day of the week"));

    auto *const line = new QHBoxLayout(m_detail);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_ordinal);
    line->addWidget(m_weekday);
    line->addStretch();
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_byDays);
    layout->addWidget(m_days);
    layout->addWidget(m_byWeekday);
    layout->addWidget(m_detail);
    WheelGuard::guard(m_ordinal);
    WheelGuard::guard(m_weekday);
    m_byDays->setChecked(true);
    setFocusProxy(m_byDays);
    showDetail();

    connect(m_byDays, &QRadioButton::toggled, this, &MonthChoice::showDetail);
    connect(m_byDays, &QRadioButton::clicked, this, &MonthChoice::changed);
    connect(m_byWeekday, &QRadioButton::clicked, this, &MonthChoice::changed);
    connect(m_days, &ToggleGrid::changed, this, &MonthChoice::changed);
    connect(m_ordinal, &QComboBox::activated, this, &MonthChoice::changed);
    connect(m_weekday, &QComboBox::activated, this, &MonthChoice::changed);
}

void MonthChoice::writeTo(Timing::Pattern &pattern) const
{
    if (m_byWeekday->isChecked()) {
        pattern.ordinal = m_ordinal->currentData().toInt();
        pattern.weekday = m_weekday->currentData().toInt();
        return;
    }
    for (const int day : m_days->chosen())
        pattern.monthDays.set(static_cast<size_t>(day));
}

void MonthChoice::readFrom(const Timing::Pattern &pattern)
{
    if (pattern.ordinal != 0) {
        m_ordinal->setCurrentIndex(m_ordinal->findData(pattern.ordinal));
        m_weekday->setCurrentIndex(m_weekday->findData(pattern.weekday));
        m_byWeekday->setChecked(true);
    } else if (pattern.monthDays.any()) {
        QList<int> days;
        for (int day = 0; day <= daysOfMonth; ++day)
            days += pattern.monthDays[static_cast<size_t>(day)] ? QList<int>{day} : QList<int>();
        m_days->choose(days);
        m_byDays->setChecked(true);
    }
}

void MonthChoice::propose(const QDate &day)
{
    constexpr int mostWhole = 4; // times that each month has a day of the week
    const int ordinal = (day.day() - 1) / daysOfWeek + 1;
    m_days->choose({day.day()});
    m_ordinal->setCurrentIndex(m_ordinal->findData(ordinal > mostWhole ? -1 : ordinal));
    m_weekday->setCurrentIndex(m_weekday->findData(day.dayOfWeek() - 1));
    m_byDays->setChecked(true);
}

void MonthChoice::showDetail()
{
    m_days->setVisible(m_byDays->isChecked());
    m_detail->setVisible(!m_byDays->isChecked());
}
