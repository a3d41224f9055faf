// SPDX-License-Identifier: MIT
#include "hosts/application/when/PatternRows.h"

#include "hosts/application/when/MonthChoice.h"
#include "hosts/application/when/ToggleGrid.h"
#include "hosts/application/when/WheelGuard.h"
#include "hosts/application/when/YearChoice.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSpinBox>

using Kind = Timing::Kind;

namespace
{
constexpr int daysOfWeek = 7;

/// In the locale's order.
QList<ToggleGrid::Item> weekdayItems(const QLocale &locale)
{
    const int first = locale.firstDayOfWeek() - 1;
    QList<ToggleGrid::Item> items;
    for (int i = 0; i < daysOfWeek; ++i) {
        const int day = (first + i) % daysOfWeek;
        items +=
            {day, locale.standaloneDayName(day + 1, QLocale::ShortFormat), locale.standaloneDayName(day + 1)};
    }
    return items;
}
} // namespace

PatternRows::PatternRows(QFormLayout *form)
    : QObject(form->parentWidget()),
      m_form(form),
      m_every(new QWidget(form->parentWidget())),
      m_interval(new QSpinBox(m_every)),
      m_unit(new QLabel(m_every)),
      m_distance(new QComboBox(m_every)),
      m_weekdays(
          new ToggleGrid(daysOfWeek, weekdayItems(form->parentWidget()->locale()), form->parentWidget())),
      m_month(new MonthChoice(form->parentWidget())),
      m_year(new YearChoice(form->parentWidget())),
      m_rule(new QLineEdit(form->parentWidget()))
{
    makeEvery();
    m_weekdays->setAccessibleName(tr("Days of the week"));
    makeRule();
    form->addRow(tr("Every"), m_every);
    form->addRow(tr("On"), m_weekdays);
    form->addRow(tr("On"), m_month);
    form->addRow(tr("On"), m_year);
    form->addRow(tr("Rule"), m_rule);
    connect(m_weekdays, &ToggleGrid::changed, this, [this] {
        m_hasWeekdays = true;
        Q_EMIT changed();
    });
    connect(m_month, &MonthChoice::changed, this, [this] {
        m_hasMonth = true;
        Q_EMIT changed();
    });
    connect(m_year, &YearChoice::changed, this, [this] {
        m_hasYear = true;
        Q_EMIT changed();
    });
    showRows();
}

void PatternRows::makeEvery()
{
    auto *const line = new QHBoxLayout(m_every);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_interval);
    line->addWidget(m_unit);
    line->addWidget(m_distance);
    line->addStretch();
    m_every->setFocusProxy(m_interval);
    WheelGuard::guard(m_interval);
    WheelGuard::guard(m_distance);
    m_interval->setAccessibleName(tr("Every"));
    m_interval->setRange(1, Timing::mostInterval);
    m_distance->addItem(tr("minutes"));
    m_distance->addItem(tr("hours"));
    m_distance->setAccessibleName(tr("Unit"));
    connect(m_interval, &QSpinBox::valueChanged, this, [this] {
        nameUnit();
        Q_EMIT changed();
    });
    connect(m_distance, &QComboBox::currentIndexChanged, this, [this] {
        nameUnit();
        Q_EMIT changed();
    });
}

void PatternRows::makeRule()
{
    m_rule->setMaxLength(Recurrence::maximumRuleLength);
    m_rule->setPlaceholderText("FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1");
    m_rule->setLayoutDirection(Qt::LeftToRight); // it is no text of a language
    m_rule->setAccessibleName(tr("Rule"));
    m_rule->setAccessibleDescription(tr("A recurrence rule as iCalendar (RFC 5545) has it"));
    m_rule->setToolTip(tr("A recurrence rule as iCalendar (RFC 5545) has it"));
    connect(m_rule, &QLineEdit::textChanged, this, [this] {
        m_hasRule = true;
        Q_EMIT changed();
    });
}

void PatternRows::nameUnit()
{
    const bool isOne = m_interval->value() == 1;
    switch (m_kind) {
    case Kind::Daily:
        m_unit->setText(isOne ? tr("day") : tr("days"));
        break;
    case Kind::Weekly:
        m_unit->setText(isOne ? tr("week") : tr("weeks"));
        break;
    case Kind::Monthly:
        m_unit->setText(isOne ? tr("month") : tr("months"));
        break;
    case Kind::Yearly:
        m_unit->setText(isOne ? tr("year") : tr("years"));
        break;
    default:
        m_unit->setText(m_distance->currentText());
        break;
    }
    m_interval->setAccessibleDescription(m_unit->text());
}

Timing::Pattern PatternRows::pattern() const
{
    Timing::Pattern pattern{.kind = m_kind};
    if (m_form->isRowVisible(m_every))
        pattern.interval = m_interval->value();
    if (m_kind == Kind::Distance)
        pattern.isHours = m_distance->currentIndex() == 1;
    if (m_kind == Kind::Weekly) {
        for (const int day : m_weekdays->chosen())
            pattern.weekdays.set(static_cast<size_t>(day));
        const bool isShown = m_shown.kind == Kind::Weekly && m_shown.interval > 1;
        if (pattern.interval > 1) // what is every second week depends on where weeks begin
            pattern.weekStart = isShown ? m_shown.weekStart : m_weekdays->locale().firstDayOfWeek() - 1;
    }
    if (m_kind == Kind::Monthly)
        m_month->writeTo(pattern);
    if (m_kind == Kind::Yearly) {
        pattern.month = m_year->month();
        pattern.day = m_year->day();
    }
    if (m_kind == Kind::Expert) {
        const QString prefix = "RRULE:";
        const bool isShown = m_rule->text() == m_shown.rule; // as it is, blanks and all
        QString rule = isShown ? m_rule->text() : m_rule->text().trimmed();
        if (!isShown && rule.startsWith(prefix, Qt::CaseInsensitive))
            rule.remove(0, prefix.size());
        pattern.rule = rule;
    }
    return pattern;
}

void PatternRows::setPattern(const Timing::Pattern &pattern, const QDate &day)
{
    const QSignalBlocker quiet(this);
    m_shown = pattern;
    m_kind = pattern.kind;
    m_hasRule = m_hasWeekdays = m_hasMonth = m_hasYear = false;
    propose(day);
    m_interval->setValue(pattern.interval);
    m_distance->setCurrentIndex(pattern.isHours ? 1 : 0);
    if (pattern.kind == Kind::Weekly) {
        QList<int> days;
        for (int i = 0; i < daysOfWeek; ++i)
            days += pattern.weekdays[static_cast<size_t>(i)] ? QList<int>{i} : QList<int>();
        m_weekdays->choose(days);
    }
    m_month->readFrom(pattern);
    if (pattern.kind == Kind::Yearly)
        m_year->setDay(pattern.month, pattern.day);
    m_rule->setText(pattern.rule);
    m_rule->setCursorPosition(0);
    m_hasWeekdays = pattern.kind == Kind::Weekly;
    m_hasMonth = pattern.kind == Kind::Monthly;
    m_hasYear = pattern.kind == Kind::Yearly;
    m_hasRule = pattern.kind == Kind::Expert;
    nameUnit();
    showRows();
}

void PatternRows::setKind(Timing::Kind kind, const QDate &day)
{
    constexpr int usualMinutes = 15;
    const QSignalBlocker quiet(this);
    m_kind = kind;
    propose(day);
    m_interval->setValue(kind == m_shown.kind ? m_shown.interval : kind == Kind::Distance ? usualMinutes : 1);
    nameUnit();
    showRows();
}

void PatternRows::proposeRule(const QString &rule)
{
    if (m_hasRule)
        return;
    const QSignalBlocker quiet(this);
    m_rule->setText(rule);
    m_hasRule = false;
}

void PatternRows::propose(const QDate &day)
{
    if (!m_hasWeekdays)
        m_weekdays->choose({day.dayOfWeek() - 1});
    if (!m_hasMonth)
        m_month->propose(day);
    if (!m_hasYear)
        m_year->setDay(day.month(), day.day());
}

void PatternRows::showRows()
{
    const bool hasInterval = m_kind == Kind::Daily || m_kind == Kind::Weekly || m_kind == Kind::Monthly ||
                             m_kind == Kind::Yearly || m_kind == Kind::Distance;
    m_form->setRowVisible(m_every, hasInterval);
    m_form->setRowVisible(m_weekdays, m_kind == Kind::Weekly);
    m_form->setRowVisible(m_month, m_kind == Kind::Monthly);
    m_form->setRowVisible(m_year, m_kind == Kind::Yearly);
    m_form->setRowVisible(m_rule, m_kind == Kind::Expert);
    m_unit->setVisible(m_kind != Kind::Distance);
    m_distance->setVisible(m_kind == Kind::Distance);
}
