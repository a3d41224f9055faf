// SPDX-License-Identifier: MIT
#include "hosts/application/when/EndChoice.h"

#include "hosts/application/when/DayField.h"
#include "hosts/application/when/WheelGuard.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QSpinBox>

EndChoice::EndChoice(QWidget *parent)
    : QWidget(parent),
      m_choice(new QComboBox(this)),
      m_until(DayField::make(this, tr("Last day"))),
      m_count(new QSpinBox(this))
{
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_choice);
    layout->addWidget(m_until);
    layout->addWidget(m_count);
    layout->addStretch();
    m_choice->addItem(tr("Never"));
    m_choice->addItem(tr("On a day"));
    m_choice->addItem(tr("After a number of times"));
    m_choice->setAccessibleName(tr("Ends"));
    m_count->setRange(1, Timing::mostCount);
    m_count->setAccessibleName(tr("How many times"));
    for (QWidget *const field : std::initializer_list<QWidget *>{m_choice, m_count})
        WheelGuard::guard(field);
    setFocusProxy(m_choice);
    connect(m_choice, &QComboBox::currentIndexChanged, this, [this] {
        showDetail();
        Q_EMIT changed();
    });
    connect(m_until, &QDateEdit::dateChanged, this, &EndChoice::changed);
    connect(m_count, &QSpinBox::valueChanged, this, &EndChoice::changed);
    showDetail();
}

Timing::Ending EndChoice::ending() const
{
    const auto end = static_cast<Timing::End>(m_choice->currentIndex());
    return {end, end == Timing::End::OnDay ? m_until->date() : QDate(),
            end == Timing::End::AfterTimes ? m_count->value() : 0};
}

void EndChoice::setEnding(const Timing::Ending &ending, const QDate &proposal)
{
    constexpr int usualCount = 10;
    const QSignalBlocker quietChoice(m_choice);
    const QSignalBlocker quietDay(m_until);
    const QSignalBlocker quietCount(m_count);
    m_choice->setCurrentIndex(static_cast<int>(ending.end));
    m_until->setDate(ending.until.isValid() ? ending.until : proposal);
    m_count->setValue(ending.count > 0 ? ending.count : usualCount);
    showDetail();
}

void EndChoice::showDetail()
{
    const auto end = static_cast<Timing::End>(m_choice->currentIndex());
    m_until->setVisible(end == Timing::End::OnDay);
    m_count->setVisible(end == Timing::End::AfterTimes);
}
