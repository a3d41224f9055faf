// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/RuleParts.h"

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

Result<void> RuleParts::setTimes(const QList<QTime> &times)
{
    std::set<int> hours;
    std::set<int> minutes;
    std::set<int> seconds;
    for (const QTime &time : times) {
        hours.insert(time.hour());
        minutes.insert(time.minute());
        seconds.insert(time.second());
    }
    QStringList others;
    QStringList wanted;
    for (const int hour : hours) {
        for (const int minute : minutes) {
            for (const int second : seconds) {
                const QTime time(hour, minute, second);
                (times.contains(time) ? wanted : others) += DateWords::of(time);
            }
        }
    }
    if (!others.isEmpty()) {
        return Error{QString("one rule cannot mean %1 without %2, too; let the times have equal minutes, or "
                             "add a second schedule")
                         .arg(wanted.join(", "), others.join(", "))};
    }
    remove("BYHOUR");
    remove("BYMINUTE");
    remove("BYSECOND");
    if (wanted.size() > 1) {
        set("BYHOUR", joined(hours));
        set("BYMINUTE", joined(minutes));
        set("BYSECOND", joined(seconds));
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
