// SPDX-License-Identifier: MIT
#include "hosts/admin/RuleOptions.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DateOptions.h"
#include "hosts/common/calendar/FriendlyTerms.h"

#include <algorithm>

using namespace dozely;

namespace
{
const QTime midnight(0, 0);
const QTime lastSecond(23, 59, 59);

/// Puts a rule together: what is named goes before what was.
class Maker
{
public:
    Maker(const AdminOptions &options, const RuleOptions::Former &former, const StartOptions &start,
          const QTimeZone &zone)
        : m_options(options), m_former(former), m_start(start), m_zone(zone)
    {
        m_rule.isNew = isNamed("every") || isNamed("rule");
        if (former.recurrence)
            m_formerParts = RuleParts(former.recurrence->rule);
    }

    RuleOptions make()
    {
        checkTogether();
        takePattern();
        takeDays();
        if (m_rule.parts.isOfDays())
            takeTimes();
        else if (isNamed("at"))
            refuse(AdminText::tr("--at is the time of day of what takes place on some days, and not of what "
                                 "goes on around the clock."));
        takeEnd();
        return m_rule;
    }

private:
    bool isNamed(const QString &option) const { return m_options.isSet(option); }
    bool isEndNamed() const { return isNamed("until") || isNamed("count") || isNamed("endless"); }

    void checkTogether() const
    {
        for (const char *option : {"every", "on", "rule", "from", "until", "count"}) {
            if (m_options.values(option).size() > 1)
                refuse(AdminText::tr("--%1 is there twice.").arg(option));
        }
        if (isNamed("every") && isNamed("rule"))
            refuse(AdminText::tr("Say --every or --rule, not both."));
        (void)m_options.isSaid("until", "count");
        (void)m_options.isSaid("until", "endless");
        (void)m_options.isSaid("count", "endless");
        if (!m_rule.isNew && !m_former.recurrence)
            refuse(AdminText::tr("Say how often, by --every or --rule."));
    }

    void takePattern()
    {
        m_rule.parts = m_formerParts;
        if (isNamed("every"))
            m_rule.parts = RuleParts(accepted(FriendlyTerms::repetition(m_options.value("every"))));
        if (!isNamed("rule"))
            return;
        const QString prefix = "RRULE:";
        const QString rule = m_options.value("rule").trimmed();
        m_rule.parts =
            RuleParts(rule.startsWith(prefix, Qt::CaseInsensitive) ? rule.mid(prefix.size()) : rule);
        if (!m_rule.parts.has("FREQ"))
            refuse(AdminText::tr("\"%1\" is not a rule such as FREQ=WEEKLY;BYDAY=MO.").arg(rule));
        if (m_rule.parts.hasTimes() && isNamed("at"))
            refuse(AdminText::tr(
                "The rule says itself at what times; leave --at or its BYHOUR, BYMINUTE and BYSECOND out."));
        const bool hasEnd = m_rule.parts.has("COUNT") || m_rule.parts.has("UNTIL");
        if (hasEnd && isEndNamed())
            refuse(AdminText::tr(
                "The rule says itself when it ends; leave --until and --count or its UNTIL and COUNT out."));
    }

    /// --on.
    void takeDays()
    {
        if (!isNamed("on"))
            return;
        constexpr int lastOfEveryMonth = 28;
        if (isNamed("rule") || m_rule.parts.value("FREQ").compare("MONTHLY", Qt::CaseInsensitive) != 0)
            refuse(AdminText::tr("--on names days of the month and needs --every month."));
        QStringList days;
        for (const int day : accepted(FriendlyTerms::monthDays(m_options.value("on")))) {
            days += QString::number(day);
            if (day > lastOfEveryMonth)
                m_rule.remarks +=
                    AdminText::tr(
                        "Months without a day %1 are left out; --on last is the last day of each month.")
                        .arg(day);
        }
        for (const char *part : {"BYDAY", "BYSETPOS"})
            m_rule.parts.remove(part);
        m_rule.parts.set("BYMONTHDAY", days.join(','));
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
            if (const auto set = m_rule.parts.setTimes(times); !set)
                refuse(AdminText::tr("It cannot repeat so: %1.").arg(AdminText::reason(set.error())));
            m_rule.time = times.constFirst();
            m_rule.lastTime = times.constLast();
        } else if (m_rule.isNew && m_rule.parts.has("BYHOUR")) {
            m_rule.time = midnight; // for the minutes that the rule leaves open
            m_rule.lastTime = lastSecond;
        } else if (wasOfDays) {
            keepTimes();
        } else if (m_former.time || m_start.time) {
            m_rule.time = m_rule.lastTime = m_start.time ? *m_start.time : *m_former.time;
        } else {
            refuse(AdminText::tr("Say at what time, by --at."));
        }
    }

    /// The times of day as they were.
    void keepTimes()
    {
        m_rule.time = m_rule.lastTime = m_former.recurrence->localStart.time;
        if (m_formerParts.hasTimes())
            m_rule.lastTime = lastSecond;
        for (const char *part : {"BYHOUR", "BYMINUTE", "BYSECOND"}) {
            if (m_rule.isNew && m_formerParts.has(part) && !m_rule.parts.has(part))
                m_rule.parts.set(part, m_formerParts.value(part));
        }
    }

    /// --until and --count, or what was said before.
    void takeEnd()
    {
        const bool hasEnd = m_rule.parts.has("COUNT") || m_rule.parts.has("UNTIL");
        for (const char *part : {"COUNT", "UNTIL"}) {
            if (m_rule.isNew && !hasEnd && m_formerParts.has(part))
                m_rule.parts.set(part, m_formerParts.value(part));
            if (isEndNamed())
                m_rule.parts.remove(part);
        }
        if (isNamed("until"))
            m_rule.parts.set("UNTIL", untilText());
        if (!isNamed("count"))
            return;
        constexpr int most = 1'000'000;
        bool isNumber = false;
        const int count = m_options.value("count").toInt(&isNumber);
        if (!isNumber || count < 1 || count > most)
            refuse(AdminText::tr("--count needs a whole number, 1 or more, not \"%1\".")
                       .arg(m_options.value("count")));
        m_rule.parts.set("COUNT", QString::number(count));
    }

    QString untilText() const
    {
        const QString form = "yyyyMMdd'T'HHmmss";
        const QString text = m_options.value("until");
        const FriendlyTerms::Date date = DateOptions::written(text, m_zone);
        if (date.offset)
            return DateOptions::inZone(date, text, m_zone).date.toString(form) + "Z";
        const QTime time = date.time.value_or(lastSecond);
        if (dateAtWallTime(date.day, time, m_zone) < m_start.notBefore)
            refuse(AdminText::tr("It is to end before it begins."));
        return QDateTime(date.day, time, Qt::UTC).toString(form);
    }

    const AdminOptions &m_options;
    const RuleOptions::Former &m_former;
    const StartOptions &m_start;
    const QTimeZone &m_zone;
    RuleParts m_formerParts;
    RuleOptions m_rule;
};
} // namespace

RuleOptions RuleOptions::read(const AdminOptions &options, const Former &former, const StartOptions &start,
                              const QTimeZone &zone)
{
    return Maker(options, former, start, zone).make();
}
