// SPDX-License-Identifier: MIT
#include "hosts/application/when/NextDates.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/application/when/DateInWords.h"
#include "hosts/application/when/Timing.h"
#include "hosts/common/calendar/WallTimeSeries.h"

#include <QEvent>

#include <algorithm>

using namespace dozely;

namespace
{
QDateTime now()
{
    return Port<Clock>::current()->currentDate();
}
} // namespace

NextDates::NextDates(QWidget *parent) : QLabel(parent), m_over(Port<Clock>::current()->makeAbsoluteTimer())
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAccessibleName(tr("Next dates"));
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(m_over.get(), &AbsoluteTimer::due, this, &NextDates::showDates);
    connect(m_over.get(), &AbsoluteTimer::clockChanged, this, &NextDates::showDates);
}

void NextDates::setSchedule(const QDateTime &date, const QString &timeZone,
                            const std::optional<Recurrence> &recurrence)
{
    m_shown = Shown{date, timeZone, recurrence};
    showDates();
}

void NextDates::clearSchedule()
{
    m_shown.reset();
    showDates();
}

void NextDates::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LocaleChange || event->type() == QEvent::LanguageChange)
        showDates();
}

NextDates::Dates NextDates::datesOf(const Recurrence &recurrence, const QTimeZone &zone)
{
    Dates result;
    const auto series = OccurrenceSeries::of(recurrence, zone);
    const auto wallTimes = WallTimeSeries::of(recurrence, zone);
    if (!series || !wallTimes)
        return result;
    for (auto date = series->after(now()); date && result.dates.size() < NextDates::mostDates;
         date = series->after(*date)) {
        result.dates += *date;
        const QDateTime shown = date->toTimeZone(zone);
        const auto meant = wallTimes->from(*date);
        if (meant && wallTimes->momentOf(*meant) == *date && meant->time != shown.time())
            result.meant.insert(*date, meant->time);
    }
    return result;
}

void NextDates::showDates()
{
    m_over->stop();
    m_lines.clear();
    if (m_shown) {
        const QTimeZone zone = Timing::zoneOf(m_shown->timeZone);
        const Dates next = m_shown->recurrence     ? datesOf(*m_shown->recurrence, zone)
                           : m_shown->date > now() ? Dates{{m_shown->date}, {}}
                                                   : Dates();
        m_lines = linesOf(next, zone);
        if (next.dates.isEmpty())
            m_lines = {m_shown->recurrence ? tr("Nothing comes of it any more.") : tr("That is past.")};
        else
            waitUntilOver(next.dates.constFirst());
    }
    setText(m_lines.join('\n'));
    setAccessibleDescription(m_lines.join('\n'));
}

void NextDates::waitUntilOver(const QDateTime &first)
{
    constexpr qint64 minute = 60;
    const QTimeZone here = machineTimeZone();
    const QDate tomorrow = now().toTimeZone(here).date().addDays(1);
    const QDateTime midnight = dateAtWallTime(tomorrow, QTime(0, 0), here).toUTC();
    m_over->start(std::min(midnight, std::max(first, now().addSecs(minute))));
}

QStringList NextDates::linesOf(const Dates &next, const QTimeZone &zone) const
{
    QStringList lines;
    QDateTime before = now();
    for (const QDateTime &date : next.dates) {
        QString line = lineOf(date, zone);
        if (next.meant.contains(date))
            line = tr("%1: clocks skip %2", "a date and a time")
                       .arg(line, DateInWords::of(next.meant.value(date), locale()));
        else if (const QString hint = hintAt(date, before, zone); !hint.isEmpty())
            line = tr("%1: %2", "a date, and what is to be known of it").arg(line, hint);
        lines += line;
        before = date;
    }
    return lines;
}

QString NextDates::lineOf(const QDateTime &date, const QTimeZone &zone) const
{
    const QTimeZone here = machineTimeZone();
    const QString words = DateInWords::of(date, now(), here, locale());
    if (zone.offsetFromUtc(date) == here.offsetFromUtc(date))
        return words;
    return tr("%1 (%2 in %3)", "a date, and its time in another zone")
        .arg(words, DateInWords::of(date.toTimeZone(zone).time(), locale()), QString::fromUtf8(zone.id()));
}

QString NextDates::hintAt(const QDateTime &date, const QDateTime &before, const QTimeZone &zone) const
{
    const int change = zone.offsetFromUtc(date) - zone.offsetFromUtc(before);
    return change > 0   ? tr("clocks are set forward before it")
           : change < 0 ? tr("clocks are set back before it")
                        : QString();
}
