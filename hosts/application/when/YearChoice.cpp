// SPDX-License-Identifier: MIT
#include "hosts/application/when/YearChoice.h"

#include "hosts/application/when/DateInWords.h"
#include "hosts/application/when/WheelGuard.h"

#include <QComboBox>
#include <QDate>
#include <QHBoxLayout>
#include <QLocale>
#include <QSpinBox>

YearChoice::YearChoice(QWidget *parent)
    : QWidget(parent), m_month(new QComboBox(this)), m_day(new QSpinBox(this))
{
    constexpr int months = 12;
    for (int month = 1; month <= months; ++month)
        m_month->addItem(locale().standaloneMonthName(month));
    WheelGuard::guard(m_month);
    WheelGuard::guard(m_day);
    m_month->setMaxVisibleItems(months);
    m_month->setAccessibleName(tr("Month"));
    m_day->setAccessibleName(tr("Day of the month"));
    const bool isDayFirst = DateInWords::isDayFirst(locale());
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(isDayFirst ? static_cast<QWidget *>(m_day) : m_month);
    layout->addWidget(isDayFirst ? static_cast<QWidget *>(m_month) : m_day);
    layout->addStretch();
    if (isDayFirst)
        setTabOrder(m_day, m_month);
    setFocusProxy(isDayFirst ? static_cast<QWidget *>(m_day) : m_month);
    limitDay();
    connect(m_month, &QComboBox::currentIndexChanged, this, [this] {
        limitDay();
        Q_EMIT changed();
    });
    connect(m_day, &QSpinBox::valueChanged, this, &YearChoice::changed);
}

int YearChoice::month() const
{
    return m_month->currentIndex() + 1;
}

int YearChoice::day() const
{
    return m_day->value();
}

void YearChoice::setDay(int month, int day)
{
    const QSignalBlocker quietMonth(m_month);
    const QSignalBlocker quietDay(m_day);
    m_month->setCurrentIndex(month - 1);
    limitDay();
    m_day->setValue(day);
}

void YearChoice::limitDay()
{
    constexpr int leapYear = 2024;
    const QSignalBlocker quiet(m_day); // the month's change is told once
    m_day->setRange(1, QDate(leapYear, month(), 1).daysInMonth());
}
