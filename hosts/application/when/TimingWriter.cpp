// SPDX-License-Identifier: MIT
#include "hosts/application/when/TimingWriter.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/application/when/DateInWords.h"
#include "hosts/application/when/TimingRules.h"
#include "hosts/common/calendar/ExcludedDates.h"
#include "hosts/common/words/RuleFaultWords.h"

#include <algorithm>

using namespace dozely;

using Kind = Timing::Kind;

namespace
{
const QTime midnight(0, 0);
const QTime lastSecond(23, 59, 59);

QString inWords(const QList<QTime> &times)
{
    QStringList texts;
    for (const QTime &time : times)
        texts += DateInWords::of(time, QLocale());
    return texts.join(", ");
}

QDateTime now()
{
    return Port<Clock>::current()->currentDate();
}
} // namespace

TimingWriter::TimingWriter(Schedule origin)
    : m_origin(std::move(origin)), m_shown(Timing::of(m_origin.date, m_origin.timeZone, m_origin.recurrence))
{
}

Result<TimingWriter::Schedule> TimingWriter::written(const Timing &timing) const
{
    if (timing == m_shown) {
        const auto fault = m_origin.recurrence
                               ? OccurrenceSeries::of(*m_origin.recurrence, Timing::zoneOf(timing.timeZone))
                               : Result<OccurrenceSeries>(Error{});
        if (m_origin.recurrence && !fault)
            return Error{RuleFaultWords::of(fault.error())};
        return m_origin;
    }
    if (const auto fault = faultOf(timing))
        return Error{*fault};
    if (timing.pattern.kind == Kind::Once)
        return once(timing);

    const QTimeZone zone = Timing::zoneOf(timing.timeZone);
    auto recurrence = begun(timing);
    if (!recurrence)
        return recurrence.error();
    const auto series = OccurrenceSeries::of(*recurrence, zone);
    if (!series)
        return Error{RuleFaultWords::of(series.error())};
    const auto first = series->first();
    if (!first)
        return Error{tr("With these exceptions nothing is left of it.")};
    return Schedule{*first, timing.timeZone, *recurrence};
}

Result<TimingWriter::Schedule> TimingWriter::once(const Timing &timing) const
{
    const QDateTime date =
        dateAtWallTime(timing.begin, timing.times.constFirst(), Timing::zoneOf(timing.timeZone)).toUTC();
    if (date < now())
        return Error{tr("That moment is past.")};
    return Schedule{date, timing.timeZone, {}};
}

std::optional<QString> TimingWriter::faultOf(const Timing &timing) const
{
    const Timing::Pattern &pattern = timing.pattern;
    const QTimeZone zone = Timing::zoneOf(timing.timeZone);
    if (!zone.isValid() || (!timing.timeZone.isEmpty() && !isTimeZoneName(timing.timeZone)))
        return tr("There is no time zone \"%1\".").arg(timing.timeZone);
    if (pattern.kind == Kind::Weekly && pattern.weekdays.none())
        return tr("Choose a day of the week.");
    if (pattern.kind == Kind::Monthly && pattern.ordinal == 0 && pattern.monthDays.none())
        return tr("Choose a day of the month.");
    if (const QList<QTime> others = RuleParts::alsoMeantBy(timing.times); !others.isEmpty()) {
        return tr("One schedule cannot mean %1 without %2, too. Let the times have equal minutes, or add a "
                  "second schedule.")
            .arg(inWords(timing.times), inWords(others));
    }
    const bool endsOnDay = timing.ending.end == Timing::End::OnDay;
    if (endsOnDay && timing.ending.until < std::max(timing.begin, now().toTimeZone(zone).date()))
        return tr("It ends before it begins.");
    if (std::max(timing.excludedDates.size(), timing.extraDates.size()) > Recurrence::maximumDates)
        return tr("There can be at most %1 exceptions.").arg(Recurrence::maximumDates);
    return {};
}

bool TimingWriter::isSamePattern(const Timing &timing) const
{
    Timing others = timing;
    others.excludedDates = m_shown.excludedDates;
    others.extraDates = m_shown.extraDates;
    if (others == m_shown)
        return true;
    // One that only became a rule for experts, which says the same.
    return m_origin.recurrence && timing.pattern.kind == Kind::Expert &&
           timing.pattern.rule == m_origin.recurrence->rule && timing.timeZone == m_origin.timeZone &&
           WallTime{timing.begin, timing.times.constFirst()} == m_origin.recurrence->localStart;
}

Recurrence TimingWriter::withoutDates(const Timing &timing) const
{
    Recurrence recurrence = m_origin.recurrence.value_or(Recurrence());
    recurrence.excludedDates.clear();
    recurrence.localStart = {timing.begin, timing.times.constFirst()};
    recurrence.rule = ruleOf(timing);
    return recurrence;
}

QString TimingWriter::ruleOf(const Timing &timing) const
{
    if (timing.pattern.kind == Kind::Once)
        return {};
    if (timing.pattern.kind == Kind::Expert)
        return timing.pattern.rule;
    RuleParts parts;
    if (m_origin.recurrence && m_shown.pattern.kind != Kind::Expert)
        parts = RuleParts(m_origin.recurrence->rule);
    const QTime start = timing.times.constFirst();
    const auto said = [&] { return RecurrenceRule::parse(parts.toString()); };
    if (const auto rule = said(); !rule || TimingRules::patternOf(*rule, timing.begin) != timing.pattern)
        TimingRules::write(timing.pattern, parts);
    if (const auto rule = said(); !rule || TimingRules::timesOf(*rule, start) != timing.times)
        (void)parts.setTimes(timing.times); // where they cannot be meant, written() says so
    if (const auto rule = said(); !rule || TimingRules::endingOf(*rule) != timing.ending)
        TimingRules::write(timing.ending, parts);
    return parts.toString();
}

Result<Recurrence> TimingWriter::begun(const Timing &timing) const
{
    const QTimeZone zone = Timing::zoneOf(timing.timeZone);
    if (isSamePattern(timing) && m_origin.recurrence) {
        Recurrence recurrence = *m_origin.recurrence;
        recurrence.excludedDates = timing.excludedDates;
        recurrence.extraDates = timing.extraDates;
        return recurrence;
    }
    Recurrence recurrence = withoutDates(timing);
    recurrence.extraDates = timing.extraDates;
    // Of a first day that stays, with its times, nothing takes place that did not so far.
    const bool isSameBegin =
        m_origin.recurrence && timing.begin == m_shown.begin && timing.times == m_shown.times;
    const QTime begin = !timing.isOfDays() ? timing.times.constFirst()
                        : isSameBegin      ? m_origin.recurrence->localStart.time
                                           : midnight;
    const QDateTime notBefore = std::max(now(), dateAtWallTime(timing.begin, begin, zone).toUTC());
    auto made = begunAnew(recurrence, zone, notBefore);
    if (!made)
        return Error{RuleFaultWords::of(made.error())};
    made->excludedDates = ExcludedDates::keptOf(timing.excludedDates, *made, zone).kept;
    return made;
}

QList<WallTime> TimingWriter::occurrencesOn(const QDate &day, const Timing &timing) const
{
    if (timing.pattern.kind == Kind::Once)
        return {};
    const auto series = WallTimeSeries::of(withoutDates(timing), Timing::zoneOf(timing.timeZone));
    if (!series)
        return {};
    return ExcludedDates::between(*series, {day, midnight}, {day, lastSecond}, Recurrence::maximumDates + 1);
}
