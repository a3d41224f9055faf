// SPDX-License-Identifier: MIT
#include "hosts/admin/RecurrenceOptions.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DateOptions.h"
#include "hosts/common/calendar/DateWords.h"
#include "hosts/common/calendar/ExcludedDates.h"
#include "hosts/common/calendar/FriendlyTerms.h"

#include <QLocale>

#include <algorithm>

using namespace dozely;

namespace
{
const QTime midnight(0, 0);

/// Puts a recurrence together: what is named goes before what was, and what is new begins from now on.
class Maker
{
public:
    Maker(const AdminOptions &options, const RuleOptions::Former &former, const QTimeZone &zone)
        : m_options(options),
          m_former(former),
          m_zone(zone),
          m_start(StartOptions::read(options, zone)),
          m_rule(RuleOptions::read(options, former, m_start, zone)),
          m_remarks(m_start.remarks + m_rule.remarks)
    {
    }

    RecurrenceOptions::Made make()
    {
        if (!m_rule.isNew && m_start.from)
            settleDays();
        Recurrence recurrence = m_former.recurrence.valueOrEmpty();
        const QList<WallTime> formerExceptions = std::exchange(recurrence.excludedDates, {});
        recurrence.rule = m_rule.parts.toString();
        recurrence.localStart = m_rule.parts.isOfDays() ? startOfDays() : startOfElapsed();
        const auto begun = begunAnew(recurrence, m_zone, m_start.notBefore);
        if (!begun)
            refuse(AdminText::tr("It cannot repeat so: %1.").arg(AdminText::reason(begun.error())));
        recurrence = *begun;
        keepExceptions(recurrence, formerExceptions);
        return {recurrence, m_remarks};
    }

private:
    bool isNamed(const QString &option) const { return m_options.isSet(option); }

    /// Has the rule itself say what it left to its start, which is to be another one.
    void settleDays()
    {
        const QDate day = m_former.recurrence->localStart.day;
        const QString frequency = m_rule.parts.value("FREQ").toUpper();
        const auto has = [this](const char *part) { return m_rule.parts.has(part); };
        if (has("BYDAY") || has("BYMONTHDAY") || has("BYYEARDAY") || has("BYWEEKNO"))
            return;
        if (frequency == "WEEKLY")
            m_rule.parts.set("BYDAY", QLocale::c().dayName(day.dayOfWeek()).left(2).toUpper());
        if (frequency == "YEARLY" && !has("BYMONTH"))
            m_rule.parts.set("BYMONTH", QString::number(day.month()));
        if (frequency == "MONTHLY" || frequency == "YEARLY")
            m_rule.parts.set("BYMONTHDAY", QString::number(day.day()));
    }

    /// From when on a rule of days counts.
    WallTime startOfDays() const
    {
        if (!m_rule.isNew && !m_start.from)
            return {m_former.recurrence->localStart.day, m_rule.time};
        QDate day = m_start.notBefore.toTimeZone(m_zone).date();
        if (!m_rule.isNew)
            return {day, m_rule.time};
        if (dateAtWallTime(day, m_rule.lastTime, m_zone) < m_start.notBefore)
            day = day.addDays(1);
        checkDay(day);
        return {day, m_rule.time};
    }

    /// Whether every month or year has the day that it was begun on.
    void checkDay(const QDate &day) const
    {
        constexpr int lastOfEveryMonth = 28;
        const bool isOpen =
            isNamed("every") && !m_rule.parts.has("BYMONTHDAY") && day.day() > lastOfEveryMonth;
        if (isOpen && m_rule.parts.value("FREQ") == "MONTHLY") {
            refuse(AdminText::tr("Every month from %1 on can be day %2 of those months that have one, --on "
                                 "%2, or the last of each, --on last.")
                       .arg(DateWords::of(day))
                       .arg(day.day()));
        }
        if (isOpen && m_rule.parts.value("FREQ") == "YEARLY" && day.month() == 2) {
            const QString rule = "--rule \"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=%1\"";
            refuse(
                AdminText::tr(
                    "Every year from %1 on can be that day of leap years, %2, or the last of February, %3.")
                    .arg(DateWords::of(day), rule.arg(day.day()), rule.arg(-1)));
        }
    }

    /// From when on a rule of hours and less counts. One that is not told begins a step from now: what is due
    /// at once would be late before it is known.
    WallTime startOfElapsed() const
    {
        constexpr qint64 minute = 60'000; // milliseconds
        if (m_start.from)
            return WallTime::of(m_start.from->toTimeZone(m_zone));
        if (!m_rule.isNew)
            return m_former.recurrence->localStart;
        const QString frequency = m_rule.parts.value("FREQ").toUpper();
        if (isNamed("rule")) { // whose own parts say the rest
            const qint64 unit = frequency == "SECONDLY" ? 1000 : minute;
            const qint64 next = (m_start.now.toMSecsSinceEpoch() / unit + 1) * unit;
            return WallTime::of(QDateTime::fromMSecsSinceEpoch(next, m_zone));
        }
        const qint64 unit = frequency == "HOURLY" ? 60 * minute : frequency == "MINUTELY" ? minute : 1000;
        const qint64 step = std::max<qint64>(1, m_rule.parts.value("INTERVAL").toLongLong()) * unit;
        constexpr qint64 second = 1000;
        const qint64 next = (m_start.now.toMSecsSinceEpoch() + step + second - 1) / second * second;
        return WallTime::of(QDateTime::fromMSecsSinceEpoch(next, m_zone));
    }

    /// Those exceptions that are some of the new rule, too.
    void keepExceptions(Recurrence &recurrence, const QList<WallTime> &former)
    {
        const auto [kept, gone] = ExcludedDates::keptOf(former, recurrence, m_zone);
        recurrence.excludedDates = kept;
        for (const WallTime &exception : gone) {
            m_remarks +=
                AdminText::tr("The exception of %1 at %2 is gone: nothing takes place then any more.")
                    .arg(DateWords::of(exception.day), DateWords::of(exception.time));
        }
    }

    const AdminOptions &m_options;
    const RuleOptions::Former &m_former;
    const QTimeZone m_zone;
    const StartOptions m_start;
    RuleOptions m_rule;
    QStringList m_remarks;
};
} // namespace

namespace
{
/// What an exception names: a day, or a moment, by wall times.
struct Span {
    WallTime first;
    WallTime last;
};

Span spanOf(const QString &text, const QTimeZone &zone)
{
    const FriendlyTerms::Date date = DateOptions::written(text, zone);
    if (date.offset) {
        const WallTime moment = WallTime::of(DateOptions::inZone(date, text, zone).date.toTimeZone(zone));
        return {moment, moment};
    }
    return {{date.day, date.time.value_or(midnight)}, {date.day, date.time.value_or(QTime(23, 59, 59))}};
}
} // namespace

bool RecurrenceOptions::areSet(const AdminOptions &options)
{
    const QStringList names{"every", "on", "rule", "at", "from", "until", "count", "endless"};
    return std::any_of(names.cbegin(), names.cend(),
                       [&](const QString &name) { return options.isSet(name); });
}

RecurrenceOptions::Made RecurrenceOptions::read(const AdminOptions &options, const Former &former,
                                                const QTimeZone &zone)
{
    return Maker(options, former, zone).make();
}

void RecurrenceOptions::takeBackExceptions(const AdminOptions &options, Recurrence &recurrence,
                                           const QTimeZone &zone)
{
    for (const QString &text : options.values("no-except")) {
        const Span span = spanOf(text, zone);
        const auto removed = recurrence.excludedDates.removeIf(
            [&](const WallTime &date) { return !(date < span.first) && !(span.last < date); });
        if (removed == 0)
            refuse(AdminText::tr("There is no exception on %1.").arg(text));
    }
}

QList<WallTime> RecurrenceOptions::exceptions(const AdminOptions &options, const Recurrence &recurrence,
                                              const QTimeZone &zone)
{
    const auto series = accepted(WallTimeSeries::of(recurrence, zone));
    QList<WallTime> exceptions;
    for (const QString &text : options.values("except")) {
        const Span span = spanOf(text, zone);
        const QList<WallTime> dates =
            ExcludedDates::between(series, span.first, span.last, Recurrence::maximumDates + 1);
        if (dates.isEmpty())
            refuse(AdminText::tr("Nothing takes place on %1 that could be left out.").arg(text));
        exceptions += dates;
        if (exceptions.size() > Recurrence::maximumDates)
            refuse(AdminText::tr("There can be at most %1 exceptions.").arg(Recurrence::maximumDates));
    }
    return exceptions;
}
