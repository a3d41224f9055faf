// SPDX-License-Identifier: MIT
#include "hosts/admin/RecurrenceOptions.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/DateOptions.h"
#include "hosts/common/calendar/DateWords.h"
#include "hosts/common/calendar/FriendlyTerms.h"
#include "hosts/common/calendar/RuleParts.h"
#include "hosts/common/calendar/WallTimeSeries.h"

#include <QLocale>

#include <algorithm>

using namespace dozely;

namespace
{
const QTime midnight(0, 0);

[[noreturn]] void refuse(const QString &sentence)
{
    throw AdminError(ExitStatus::BadUsage, sentence);
}

template<class Value>
Value accepted(Result<Value> value)
{
    if (!value)
        refuse(value.error().text + ".");
    return *std::move(value);
}

FriendlyTerms::Date dateOf(const QString &text)
{
    return accepted(FriendlyTerms::date(text));
}

/// Puts a recurrence together: what is named goes before what was, and what is new begins from now on.
class Maker
{
public:
    Maker(const AdminOptions &options, const RecurrenceOptions::Former &former, const QTimeZone &zone)
        : m_options(options),
          m_former(former),
          m_zone(zone),
          m_now(Port<Clock>::current()->currentDate()),
          m_isNew(isNamed("every") || isNamed("rule"))
    {
        if (former.recurrence)
            m_formerParts = RuleParts(former.recurrence->rule);
    }

    RecurrenceOptions::Made make()
    {
        checkTogether();
        takePattern();
        takeDays();
        takeStart();
        if (m_parts.isOfDays())
            takeTimes();
        else if (isNamed("at"))
            refuse("--at is the time of day of what takes place on some days, and not of what goes on "
                   "around the clock.");
        takeEnd();
        if (!m_isNew && m_from)
            settleDays();
        Recurrence recurrence = m_former.recurrence.value_or(Recurrence());
        const QList<WallTime> formerExceptions = std::exchange(recurrence.excludedDates, {});
        recurrence.rule = m_parts.toString();
        recurrence.localStart = m_parts.isOfDays() ? startOfDays() : startOfElapsed();
        const auto begun = begunAnew(recurrence, m_zone, m_notBefore);
        if (!begun)
            refuse(QString("It cannot repeat so: %1.").arg(begun.error().text));
        recurrence = *begun;
        keepExceptions(recurrence, formerExceptions);
        return {recurrence, m_remarks};
    }

private:
    bool isNamed(const QString &option) const { return m_options.isSet(option); }

    void checkTogether() const
    {
        for (const char *option : {"every", "on", "rule", "from", "until", "count"}) {
            if (m_options.values(option).size() > 1)
                refuse(QString("--%1 is there twice.").arg(option));
        }
        if (isNamed("every") && isNamed("rule"))
            refuse("Say --every or --rule, not both.");
        if (isNamed("until") && isNamed("count"))
            refuse("Say --until or --count, not both.");
        if (!m_isNew && !m_former.recurrence)
            refuse("Say how often, by --every or --rule.");
    }

    void takePattern()
    {
        m_parts = m_formerParts;
        if (isNamed("every"))
            m_parts = RuleParts(accepted(FriendlyTerms::repetition(m_options.value("every"))));
        if (!isNamed("rule"))
            return;
        const QString prefix = "RRULE:";
        const QString rule = m_options.value("rule").trimmed();
        m_parts = RuleParts(rule.startsWith(prefix, Qt::CaseInsensitive) ? rule.mid(prefix.size()) : rule);
        if (!m_parts.has("FREQ"))
            refuse(QString("\"%1\" is not a rule such as FREQ=WEEKLY;BYDAY=MO.").arg(rule));
        if (m_parts.hasTimes() && isNamed("at"))
            refuse(
                "The rule says itself at what times; leave --at or its BYHOUR, BYMINUTE and BYSECOND out.");
        const bool hasEnd = m_parts.has("COUNT") || m_parts.has("UNTIL");
        if (hasEnd && (isNamed("until") || isNamed("count")))
            refuse(
                "The rule says itself when it ends; leave --until and --count or its UNTIL and COUNT out.");
    }

    /// --on.
    void takeDays()
    {
        if (!isNamed("on"))
            return;
        constexpr int lastOfEveryMonth = 28;
        if (isNamed("rule") || m_parts.value("FREQ").compare("MONTHLY", Qt::CaseInsensitive) != 0)
            refuse("--on names days of the month and needs --every month.");
        QStringList days;
        for (const int day : accepted(FriendlyTerms::monthDays(m_options.value("on")))) {
            days += QString::number(day);
            if (day > lastOfEveryMonth)
                m_remarks += QString("Months without a day %1 are left out; --on last is the last day of "
                                     "each month.")
                                 .arg(day);
        }
        for (const char *part : {"BYDAY", "BYSETPOS"})
            m_parts.remove(part);
        m_parts.set("BYMONTHDAY", days.join(','));
    }

    /// --from.
    void takeStart()
    {
        m_notBefore = m_now;
        if (!isNamed("from"))
            return;
        const QString text = m_options.value("from");
        const FriendlyTerms::Date date = dateOf(text);
        const QDate today = m_now.toTimeZone(m_zone).date();
        const bool isDay = !date.time;
        m_from = isDay ? dateAtWallTime(date.day, midnight, m_zone) : DateOptions::inZone(text, m_zone).date;
        if (isDay ? date.day < today : *m_from < m_now)
            refuse(QString("%1 in %2 is past.").arg(text, QString::fromUtf8(m_zone.id())));
        m_notBefore = std::max(m_now, *m_from);
        m_fromTime = date.time ? std::optional(m_from->toTimeZone(m_zone).time()) : std::nullopt;
    }

    /// --at, or what stands in its place.
    void takeTimes()
    {
        QList<QTime> times;
        for (const QString &text : m_options.values("at")) {
            if (const QTime time = accepted(FriendlyTerms::time(text)); !times.contains(time))
                times += time;
        }
        std::sort(times.begin(), times.end());
        const bool wasOfDays = m_former.recurrence && m_formerParts.isOfDays();
        if (!times.isEmpty()) {
            if (const auto set = m_parts.setTimes(times); !set)
                refuse(QString("It cannot repeat so: %1.").arg(set.error().text));
            m_time = times.constFirst();
            m_lastTime = times.constLast();
        } else if (m_isNew && m_parts.has("BYHOUR")) {
            m_time = midnight; // for the minutes that the rule leaves open
            m_lastTime = QTime(23, 59, 59);
        } else if (wasOfDays) {
            keepTimes();
        } else if (m_former.time || m_fromTime) {
            m_time = m_lastTime = m_former.time ? *m_former.time : *m_fromTime;
        } else {
            refuse("Say at what time, by --at.");
        }
    }

    /// The times of day as they were.
    void keepTimes()
    {
        m_time = m_lastTime = m_former.recurrence->localStart.time;
        if (m_formerParts.hasTimes())
            m_lastTime = QTime(23, 59, 59);
        for (const char *part : {"BYHOUR", "BYMINUTE", "BYSECOND"}) {
            if (m_isNew && m_formerParts.has(part) && !m_parts.has(part))
                m_parts.set(part, m_formerParts.value(part));
        }
    }

    /// --until and --count, or what was said before.
    void takeEnd()
    {
        const bool hasEnd = m_parts.has("COUNT") || m_parts.has("UNTIL");
        for (const char *part : {"COUNT", "UNTIL"}) {
            if (m_isNew && !hasEnd && m_formerParts.has(part))
                m_parts.set(part, m_formerParts.value(part));
            if (isNamed("until") || isNamed("count"))
                m_parts.remove(part);
        }
        if (isNamed("until"))
            m_parts.set("UNTIL", untilText());
        if (!isNamed("count"))
            return;
        constexpr int most = 1'000'000;
        bool isNumber = false;
        const int count = m_options.value("count").toInt(&isNumber);
        if (!isNumber || count < 1 || count > most)
            refuse(QString("--count needs a whole number, 1 or more, not \"%1\".")
                       .arg(m_options.value("count")));
        m_parts.set("COUNT", QString::number(count));
    }

    QString untilText() const
    {
        const QString form = "yyyyMMdd'T'HHmmss";
        const QString text = m_options.value("until");
        const FriendlyTerms::Date date = dateOf(text);
        if (date.offset)
            return DateOptions::inZone(text, m_zone).date.toString(form) + "Z";
        const QTime time = date.time.value_or(QTime(23, 59, 59));
        if (dateAtWallTime(date.day, time, m_zone) < m_notBefore)
            refuse("It is to end before it begins.");
        return QDateTime(date.day, time, Qt::UTC).toString(form);
    }

    /// Has the rule itself say what it left to its start, which is to be another one.
    void settleDays()
    {
        const QDate day = m_former.recurrence->localStart.day;
        const QString frequency = m_parts.value("FREQ").toUpper();
        const auto has = [this](const char *part) { return m_parts.has(part); };
        if (has("BYDAY") || has("BYMONTHDAY") || has("BYYEARDAY") || has("BYWEEKNO"))
            return;
        if (frequency == "WEEKLY")
            m_parts.set("BYDAY", QLocale::c().dayName(day.dayOfWeek()).left(2).toUpper());
        if (frequency == "YEARLY" && !has("BYMONTH"))
            m_parts.set("BYMONTH", QString::number(day.month()));
        if (frequency == "MONTHLY" || frequency == "YEARLY")
            m_parts.set("BYMONTHDAY", QString::number(day.day()));
    }

    /// From when on a rule of days counts.
    WallTime startOfDays() const
    {
        if (!m_isNew && !m_from)
            return {m_former.recurrence->localStart.day, m_time};
        QDate day = m_notBefore.toTimeZone(m_zone).date();
        if (!m_isNew)
            return {day, m_time};
        if (dateAtWallTime(day, m_lastTime, m_zone) < m_notBefore)
            day = day.addDays(1);
        checkDay(day);
        return {day, m_time};
    }

    /// Whether every month or year has the day that it was begun on.
    void checkDay(const QDate &day) const
    {
        constexpr int lastOfEveryMonth = 28;
        const bool isOpen = isNamed("every") && !m_parts.has("BYMONTHDAY") && day.day() > lastOfEveryMonth;
        if (isOpen && m_parts.value("FREQ") == "MONTHLY") {
            refuse(QString("Every month from %1 on can be day %2 of those months that have one, --on %2, or "
                           "the last of each, --on last.")
                       .arg(DateWords::of(day))
                       .arg(day.day()));
        }
        if (isOpen && m_parts.value("FREQ") == "YEARLY" && day.month() == 2) {
            const QString rule = "--rule \"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=%1\"";
            refuse(
                QString("Every year from %1 on can be that day of leap years, %2, or the last of February, "
                        "%3.")
                    .arg(DateWords::of(day), rule.arg(day.day()), rule.arg(-1)));
        }
    }

    /// From when on a rule of hours and less counts. One that is not told begins a step from now: what is due
    /// at once would be late before it is known.
    WallTime startOfElapsed() const
    {
        constexpr qint64 minute = 60'000; // milliseconds
        if (m_from)
            return WallTime::of(m_from->toTimeZone(m_zone));
        if (!m_isNew)
            return m_former.recurrence->localStart;
        const QString frequency = m_parts.value("FREQ").toUpper();
        if (isNamed("rule")) { // whose own parts say the rest
            const qint64 unit = frequency == "SECONDLY" ? 1000 : minute;
            const qint64 next = (m_now.toMSecsSinceEpoch() / unit + 1) * unit;
            return WallTime::of(QDateTime::fromMSecsSinceEpoch(next, m_zone));
        }
        const qint64 unit = frequency == "HOURLY" ? 60 * minute : frequency == "MINUTELY" ? minute : 1000;
        const qint64 step = std::max<qint64>(1, m_parts.value("INTERVAL").toLongLong()) * unit;
        constexpr qint64 second = 1000;
        const qint64 next = (m_now.toMSecsSinceEpoch() + step + second - 1) / second * second;
        return WallTime::of(QDateTime::fromMSecsSinceEpoch(next, m_zone));
    }

    /// Those exceptions that are some of the new rule, too.
    void keepExceptions(Recurrence &recurrence, const QList<WallTime> &former)
    {
        const auto series = WallTimeSeries::of(recurrence, m_zone);
        for (const WallTime &exception : former) {
            if (exception < recurrence.localStart)
                continue;
            if (series && series->from(exception) == exception)
                recurrence.excludedDates += exception;
            else
                m_remarks += QString("The exception of %1 at %2 is gone: nothing takes place then any more.")
                                 .arg(DateWords::of(exception.day), DateWords::of(exception.time));
        }
    }

    const AdminOptions &m_options;
    const RecurrenceOptions::Former &m_former;
    const QTimeZone m_zone;
    const QDateTime m_now;
    const bool m_isNew; // a repetition is named, and not only something about it
    RuleParts m_formerParts;
    RuleParts m_parts;
    QTime m_time = midnight;
    QTime m_lastTime = midnight; // of a day
    QDateTime m_notBefore;
    std::optional<QDateTime> m_from;
    std::optional<QTime> m_fromTime;
    QStringList m_remarks;
};
} // namespace

bool RecurrenceOptions::areSet(const AdminOptions &options)
{
    const QStringList names{"every", "on", "rule", "at", "from", "until", "count"};
    return std::any_of(names.cbegin(), names.cend(),
                       [&](const QString &name) { return options.isSet(name); });
}

RecurrenceOptions::Made RecurrenceOptions::read(const AdminOptions &options, const Former &former,
                                                const QTimeZone &zone)
{
    return Maker(options, former, zone).make();
}

QList<WallTime> RecurrenceOptions::exceptions(const AdminOptions &options, const Recurrence &recurrence,
                                              const QTimeZone &zone)
{
    const auto series = accepted(WallTimeSeries::of(recurrence, zone));
    QList<WallTime> exceptions;
    for (const QString &text : options.values("except")) {
        const FriendlyTerms::Date date = dateOf(text);
        QTime time = date.time.value_or(midnight);
        QDate day = date.day;
        if (date.offset) {
            const QDateTime local = DateOptions::inZone(text, zone).date.toTimeZone(zone);
            day = local.date();
            time = local.time();
        }
        const WallTime last{day, date.time ? time : QTime(23, 59, 59)};
        auto next = series.from(WallTime{day, time});
        if (!next || last < *next)
            refuse(QString("Nothing takes place on %1 that could be left out.").arg(text));
        for (; next && !(last < *next); next = series.after(*next)) {
            if (exceptions.size() == Recurrence::maximumDates)
                refuse(QString("There can be at most %1 exceptions.").arg(Recurrence::maximumDates));
            exceptions += *next;
        }
    }
    return exceptions;
}
