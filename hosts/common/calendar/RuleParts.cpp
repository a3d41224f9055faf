// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/RuleParts.h"

#include "hosts/common/calendar/CalendarText.h"
#include "hosts/common/calendar/DateWords.h"

#include <QStringList>

#include <algorithm>
#include <set>

using namespace dozely;

namespace
{
QString joined(const std::set<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts += QString::number(number);
    return texts.join(',');
}

template<class Times>
QString listed(const Times &times)
{
    QStringList texts;
    for (const QTime &time : times)
        texts += DateWords::of(time);
    return texts.join(", ");
}

/// What a rule combines each with each.
struct Combined {
    std::set<int> hours, minutes, seconds;
};

Combined combinedOf(const QList<QTime> &times)
{
    Combined combined;
    for (const QTime &time : times) {
        combined.hours.insert(time.hour());
        combined.minutes.insert(time.minute());
        combined.seconds.insert(time.second());
    }
    return combined;
}
} // namespace

RuleParts::RuleParts(const QString &rule)
{
    for (const QString &part : rule.split(';')) {
        const qsizetype equals = part.indexOf('=');
        m_parts += {equals < 0 ? part : part.left(equals), equals < 0 ? QString() : part.mid(equals + 1)};
    }
}

QString RuleParts::value(const QString &name) const
{
    for (const auto &[known, value] : m_parts) {
        if (known.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

void RuleParts::set(const QString &name, const QString &value)
{
    for (auto &part : m_parts) {
        if (part.first.compare(name, Qt::CaseInsensitive) == 0) {
            part.second = value;
            return;
        }
    }
    m_parts += {name, value};
}

void RuleParts::remove(const QString &name)
{
    m_parts.removeIf([&](const auto &part) { return part.first.compare(name, Qt::CaseInsensitive) == 0; });
}

QList<QTime> RuleParts::alsoMeantBy(const QList<QTime> &times)
{
    const Combined combined = combinedOf(times);
    QList<QTime> others;
    for (const int hour : combined.hours) {
        for (const int minute : combined.minutes) {
            for (const int second : combined.seconds) {
                if (const QTime time(hour, minute, second); !times.contains(time))
                    others += time;
            }
        }
    }
    return others;
}

Result<void> RuleParts::setTimes(const QList<QTime> &times)
{
    const std::set<QTime> wanted(times.begin(), times.end());
    if (const QList<QTime> others = alsoMeantBy(times); !others.isEmpty()) {
        return Error{
            CalendarText::tr("one rule cannot mean %1 without %2, too; let the times have equal minutes, or "
                             "add a second schedule")
                .arg(listed(wanted), listed(others))};
    }
    remove("BYHOUR");
    remove("BYMINUTE");
    remove("BYSECOND");
    if (wanted.size() > 1) {
        const Combined combined = combinedOf(times);
        set("BYHOUR", joined(combined.hours));
        set("BYMINUTE", joined(combined.minutes));
        set("BYSECOND", joined(combined.seconds));
    }
    return {};
}

bool RuleParts::isOfDays() const
{
    static const QStringList shorter{"HOURLY", "MINUTELY", "SECONDLY"};
    return !shorter.contains(value("FREQ"), Qt::CaseInsensitive);
}

QString RuleParts::toString() const
{
    QStringList texts;
    for (const auto &[name, value] : m_parts)
        texts += value.isNull() ? name : name + "=" + value;
    return texts.join(';');
}
