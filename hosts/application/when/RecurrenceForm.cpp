// SPDX-License-Identifier: MIT
#include "hosts/application/when/RecurrenceForm.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/application/when/DayField.h"
#include "hosts/application/when/EndChoice.h"
#include "hosts/application/when/ExceptionList.h"
#include "hosts/application/when/FaultLabel.h"
#include "hosts/application/when/PatternRows.h"
#include "hosts/application/when/TimesOfDay.h"
#include "hosts/application/when/TimingRemark.h"
#include "hosts/application/when/WheelGuard.h"
#include "hosts/application/when/ZoneChoice.h"
#include "hosts/common/calendar/OccurrenceSeries.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>

using namespace dozely;

using Kind = Timing::Kind;

namespace
{
QDateTime nextFullHour()
{
    constexpr qint64 hour = 3600;
    const qint64 now = Port<Clock>::current()->currentDate().toSecsSinceEpoch();
    return QDateTime::fromSecsSinceEpoch((now / hour + 1) * hour, Qt::UTC);
}
} // namespace

RecurrenceForm::RecurrenceForm(QWidget *parent)
    : QWidget(parent), m_writer({nextFullHour(), {}, {}}), m_form(new QFormLayout(this))
{
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    makeRows();
    setFocusProxy(m_kind);
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this] {
        changeKind();
        showVerdict();
        Q_EMIT changed();
    });
    connect(m_day, &QDateEdit::dateChanged, this, &RecurrenceForm::tell);
    connect(m_pattern, &PatternRows::changed, this, &RecurrenceForm::tell);
    connect(m_times, &TimesOfDay::changed, this, &RecurrenceForm::tell);
    connect(m_begin, &QDateEdit::dateChanged, this, &RecurrenceForm::tell);
    connect(m_end, &EndChoice::changed, this, &RecurrenceForm::tell);
    connect(m_zone, &ZoneChoice::changed, this, &RecurrenceForm::tell);
    connect(m_exceptions, &ExceptionList::changed, this, &RecurrenceForm::tell);
    connect(m_exceptions, &ExceptionList::dayChosen, this,
            [this](const QDate &day) { m_exceptions->leaveOut(day, m_writer.occurrencesOn(day, timing())); });
    setRecurrence({}, {}, {});
}

void RecurrenceForm::makeRows()
{
    // Made in the order in which they stand, which is that in which the keyboard goes through them.
    m_kind = new QComboBox(this);
    WheelGuard::guard(m_kind);
    m_kind->setAccessibleName(tr("Takes place"));
    for (const auto &[text, kind] : {std::pair(tr("Once"), Kind::Once),
                                     {tr("Every day"), Kind::Daily},
                                     {tr("On weekdays, Monday to Friday"), Kind::Weekdays},
                                     {tr("Every week"), Kind::Weekly},
                                     {tr("Every month"), Kind::Monthly},
                                     {tr("Every year"), Kind::Yearly},
                                     {tr("Every so many minutes or hours"), Kind::Distance},
                                     {tr("By a rule, for experts"), Kind::Expert}})
        m_kind->addItem(text, static_cast<int>(kind));
    m_kind->setMaxVisibleItems(m_kind->count());
    m_form->addRow(tr("Takes place"), m_kind);
    m_day = DayField::make(this, tr("Date"));
    m_form->addRow(tr("Date"), m_day);
    m_pattern = new PatternRows(m_form);
    m_verdict = new FaultLabel(this);
    m_form->addRow(QString(), m_verdict);
    m_times = new TimesOfDay(this);
    m_form->addRow(tr("Time"), m_times);
    m_begin = DayField::make(this, tr("From"));
    m_form->addRow(tr("From"), m_begin);
    m_end = new EndChoice(this);
    m_form->addRow(tr("Ends"), m_end);
    m_zone = new ZoneChoice(this);
    m_zone->setAccessibleName(tr("Time zone"));
    m_form->addRow(tr("Time zone"), m_zone);
    m_exceptions = new ExceptionList(this);
    m_form->addRow(tr("Exceptions"), m_exceptions);
}

void RecurrenceForm::setRecurrence(const QDateTime &date, const QString &timeZone,
                                   const std::optional<Recurrence> &recurrence)
{
    const QSignalBlocker quiet(this);
    m_writer = TimingWriter({date.isValid() ? date.toUTC() : nextFullHour(), timeZone, recurrence});
    const Timing &shown = m_writer.shown();
    constexpr int usualLength = 30; // days from now to an end that is proposed
    const QDate today = Port<Clock>::current()->currentDate().toTimeZone(Timing::zoneOf(timeZone)).date();
    m_shownKind = shown.pattern.kind;
    {
        const QSignalBlocker quietKind(m_kind);
        m_kind->setCurrentIndex(m_kind->findData(static_cast<int>(m_shownKind)));
    }
    m_pattern->setPattern(shown.pattern, shown.begin);
    m_day->setDate(shown.begin);
    m_begin->setDate(shown.begin);
    m_shownBegin = m_begin->date();
    m_times->setTimes(shown.times);
    m_end->setEnding(shown.ending, today.addDays(usualLength));
    m_zone->setZone(shown.timeZone);
    m_exceptions->setDates(shown.excludedDates, shown.extraDates, today);
    m_settled = shown;
    showRows();
    showVerdict();
}

Timing RecurrenceForm::timing() const
{
    Timing timing;
    timing.pattern = m_pattern->pattern();
    timing.begin = m_shownKind == Kind::Once ? m_day->date() : m_begin->date();
    if (timing.begin == m_shownBegin) // which is another where the field cannot show so old a day
        timing.begin = m_writer.shown().begin;
    timing.times = m_times->times();
    timing.timeZone = m_zone->zone();
    if (m_shownKind != Kind::Once && m_shownKind != Kind::Expert)
        timing.ending = m_end->ending();
    if (m_shownKind != Kind::Once) {
        timing.excludedDates = m_exceptions->excluded();
        timing.extraDates = m_exceptions->extra();
    }
    return timing;
}

TimingWriter::Schedule RecurrenceForm::schedule() const
{
    const auto written = m_writer.written(timing());
    return written ? *written : m_writer.origin();
}

QDateTime RecurrenceForm::date() const
{
    return schedule().date;
}

QString RecurrenceForm::timeZone() const
{
    return schedule().timeZone;
}

std::optional<Recurrence> RecurrenceForm::recurrence() const
{
    return schedule().recurrence;
}

bool RecurrenceForm::isEdited() const
{
    return timing() != m_writer.shown();
}

QString RecurrenceForm::fault() const
{
    const auto written = m_writer.written(timing());
    return written ? QString() : written.error().text;
}

void RecurrenceForm::changeKind()
{
    const QSignalBlocker quiet(this); // told once, when all fields fit
    const Kind former = std::exchange(m_shownKind, static_cast<Kind>(m_kind->currentData().toInt()));
    if (former == Kind::Once && !m_writer.origin().recurrence)
        m_begin->setDate(m_day->date());
    if (m_shownKind == Kind::Once)
        m_day->setDate(nextDay());
    if (m_shownKind == Kind::Expert)
        m_pattern->proposeRule(m_settled.pattern.kind == Kind::Once ? "FREQ=DAILY"
                                                                    : m_writer.ruleOf(m_settled));
    m_pattern->setKind(m_shownKind, m_begin->date());
    showRows();
}

QDate RecurrenceForm::nextDay() const
{
    const auto schedule = m_writer.written(m_settled);
    const QTimeZone zone = Timing::zoneOf(m_settled.timeZone);
    if (!schedule || !schedule->recurrence)
        return m_settled.begin;
    const auto series = OccurrenceSeries::of(*schedule->recurrence, zone);
    const auto next = series ? series->after(Port<Clock>::current()->currentDate()) : std::nullopt;
    return next ? next->toTimeZone(zone).date() : m_settled.begin;
}

void RecurrenceForm::showRows()
{
    const bool isOnce = m_shownKind == Kind::Once;
    m_form->setRowVisible(m_day, isOnce);
    m_form->setRowVisible(m_begin, !isOnce);
    m_form->setRowVisible(m_end, !isOnce && m_shownKind != Kind::Expert);
    m_form->setRowVisible(m_exceptions, !isOnce);
    m_times->setSeveral(Timing::isOfDays(m_shownKind));
}

void RecurrenceForm::showVerdict()
{
    if (const QString wrong = fault(); !wrong.isEmpty())
        m_verdict->showFault(wrong);
    else
        m_verdict->showRemark(TimingRemark::on(timing(), locale()));
    m_form->setRowVisible(m_verdict, !m_verdict->text().isEmpty());
}

void RecurrenceForm::tell()
{
    if (signalsBlocked())
        return;
    m_settled = timing();
    showVerdict();
    Q_EMIT changed();
}
