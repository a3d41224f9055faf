// SPDX-License-Identifier: MIT
#include "hosts/admin/CalendarFile.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/common/calendar/RuleParts.h"
#include "hosts/common/calendar/WallTimeSeries.h"

#include <QFileInfo>
#include <QMap>
#include <QTimeZone>

#include <algorithm>
#include <tuple>

using namespace dozely;

namespace
{
constexpr qint64 yearsAhead = 30;
const QString wallForm = QStringLiteral("yyyyMMdd'T'HHmmss");

/// A value of type TEXT (RFC 5545, 3.3.11). Control characters would be another line, or none at all.
QString text(const QString &value)
{
    QString escaped;
    for (const QChar c : value) {
        if (c == '\\' || c == ';' || c == ',')
            escaped += '\\';
        if (c == '\n')
            escaped += "\\n";
        else if (c.category() != QChar::Other_Control)
            escaped += c;
    }
    return escaped;
}

QString wall(const WallTime &time)
{
    return QDateTime(time.day, time.time, Qt::UTC).toString(wallForm);
}

QString utc(const QDateTime &date)
{
    return date.toUTC().toString(wallForm) + "Z";
}

/// Collects lines, folded as the format wants it: no line has more than 75 bytes.
class Writer
{
public:
    void line(const QString &content)
    {
        constexpr qsizetype longest = 75;
        QByteArray rest = content.toUtf8();
        bool isFirst = true;
        while (!rest.isEmpty()) {
            qsizetype size = std::min(rest.size(), isFirst ? longest : longest - 1);
            while (size < rest.size() && (static_cast<uchar>(rest.at(size)) & 0xc0) == 0x80)
                --size; // not within a character
            m_bytes += (isFirst ? "" : " ") + rest.left(size) + "\r\n";
            rest.remove(0, size);
            isFirst = false;
        }
    }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

QString offsetText(int offset)
{
    constexpr int minute = 60;
    constexpr int hour = 60 * minute;
    const int distance = std::abs(offset);
    const QString text = QString("%1%2%3")
                             .arg(offset < 0 ? "-" : "+")
                             .arg(distance / hour, 2, 10, QChar('0'))
                             .arg(distance % hour / minute, 2, 10, QChar('0'));
    return distance % minute == 0 ? text : text + QString("%1").arg(distance % minute, 2, 10, QChar('0'));
}

/// The zone's clocks from one date to another: how they are at first, and each change.
void writeZone(Writer &writer, const QTimeZone &zone, const QDateTime &from, const QDateTime &to)
{
    using Kind = std::tuple<bool, int, int, QString>; // daylight saving, offset before and after, name
    QMap<Kind, QStringList> changes;
    const QDateTime begin = QDateTime(from.date(), QTime(0, 0), Qt::UTC);
    int before = zone.offsetFromUtc(begin);
    changes[{zone.isDaylightTime(begin), before, before, zone.abbreviation(begin)}] +=
        begin.toString(wallForm);
    for (const QTimeZone::OffsetData &change : zone.transitions(begin.addSecs(1), to)) {
        changes[{change.daylightTimeOffset != 0, before, change.offsetFromUtc, change.abbreviation}] +=
            change.atUtc.addSecs(before).toString(wallForm);
        before = change.offsetFromUtc;
    }
    writer.line("BEGIN:VTIMEZONE");
    writer.line("TZID:" + QString::fromUtf8(zone.id()));
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        const auto &[isDaylight, offsetBefore, offsetAfter, name] = change.key();
        const QString kind = isDaylight ? "DAYLIGHT" : "STANDARD";
        writer.line("BEGIN:" + kind);
        writer.line("DTSTART:" + change->constFirst());
        if (change->size() > 1)
            writer.line("RDATE:" + change->mid(1).join(','));
        writer.line("TZOFFSETFROM:" + offsetText(offsetBefore));
        writer.line("TZOFFSETTO:" + offsetText(offsetAfter));
        writer.line("TZNAME:" + text(name));
        writer.line("END:" + kind);
    }
    writer.line("END:VTIMEZONE");
}

/// Whether its times are written as moments: clocks that are never changed, and what takes place once.
bool isInUtc(const Schedule &schedule)
{
    return !schedule.recurrence || schedule.timeZone == "UTC" || schedule.timeZone == "Etc/UTC";
}

/// The name of a property with wall times, and its zone.
QString inZone(const char *property, const Schedule &schedule)
{
    return schedule.timeZone.isEmpty() || isInUtc(schedule)
               ? QString(property)
               : QString("%1;TZID=%2").arg(property, schedule.timeZone);
}

void writeDates(Writer &writer, const char *property, const QList<WallTime> &dates, const Schedule &schedule)
{
    QStringList texts;
    for (const WallTime &date : dates)
        texts += wall(date) + (isInUtc(schedule) ? "Z" : "");
    if (!texts.isEmpty())
        writer.line(inZone(property, schedule) + ":" + texts.join(','));
}

/// The first that the rule itself gives: to calendars DTSTART is always an occurrence.
WallTime firstOf(const Schedule &schedule)
{
    Recurrence plain = *schedule.recurrence;
    plain.extraDates.clear();
    plain.excludedDates.clear();
    const auto series = WallTimeSeries::of(plain, schedule.zone());
    const auto first = series ? series->from(plain.localStart) : std::nullopt;
    return first.value_or(plain.localStart);
}

/// The rule, whose end is to be of the same kind as the start: a moment, or, in no zone, a wall time.
QString ruleOf(const Schedule &schedule)
{
    RuleParts rule(schedule.recurrence->rule);
    const QString until = rule.value("UNTIL");
    if (until.isNull() || until.endsWith('Z', Qt::CaseInsensitive))
        return rule.toString();
    const QDate day = QDate::fromString(until.left(8), "yyyyMMdd");
    const QTime time = until.contains('T') ? QTime::fromString(until.mid(9), "HHmmss") : QTime(23, 59, 59);
    if (schedule.timeZone.isEmpty())
        rule.set("UNTIL", wall({day, time}));
    else
        rule.set("UNTIL", utc(dateAtWallTime(day, time, schedule.zone())));
    return rule.toString();
}

void writeEvent(Writer &writer, const Schedule &schedule, const QDateTime &now)
{
    writer.line("BEGIN:VEVENT");
    writer.line("UID:" + text(schedule.identifier));
    writer.line("DTSTAMP:" + utc(now));
    if (schedule.recurrence) {
        const Recurrence &recurrence = *schedule.recurrence;
        writer.line(inZone("DTSTART", schedule) + ":" + wall(firstOf(schedule)) +
                    (isInUtc(schedule) ? "Z" : ""));
        writer.line("RRULE:" + ruleOf(schedule));
        writeDates(writer, "RDATE", recurrence.extraDates, schedule);
        writeDates(writer, "EXDATE", recurrence.excludedDates, schedule);
    } else {
        writer.line("DTSTART:" + utc(schedule.date));
    }
    writer.line("SUMMARY:" + text(schedule.name));
    QString action = QFileInfo(schedule.bundlePath).completeBaseName();
    if (const QString program = schedule.parameters.value("Program").toString(); !program.isEmpty())
        action += ": " + program;
    if (!action.isEmpty())
        writer.line("DESCRIPTION:" + text(action));
    writer.line(QString("STATUS:%1").arg(schedule.isEnabled ? "CONFIRMED" : "CANCELLED"));
    writer.line("TRANSP:TRANSPARENT");
    writer.line("END:VEVENT");
}
} // namespace

QByteArray CalendarFile::of(const QList<Schedule> &schedules, const QDateTime &now)
{
    Writer writer;
    writer.line("BEGIN:VCALENDAR");
    writer.line("VERSION:2.0");
    writer.line("PRODID:-//Dozely//Dozely Admin//EN");
    QMap<QString, QDateTime> zones; // and from when on
    for (const Schedule &schedule : schedules) {
        if (isInUtc(schedule) || schedule.timeZone.isEmpty())
            continue;
        const WallTime first = firstOf(schedule);
        const QDateTime begin = QDateTime(first.day, QTime(0, 0), Qt::UTC).addYears(-1);
        const QDateTime known = zones.value(schedule.timeZone, begin);
        zones.insert(schedule.timeZone, std::min(known, begin));
    }
    for (auto zone = zones.cbegin(); zone != zones.cend(); ++zone)
        writeZone(writer, QTimeZone(zone.key().toUtf8()), *zone, std::max(now, *zone).addYears(yearsAhead));
    for (const Schedule &schedule : schedules)
        writeEvent(writer, schedule, now);
    writer.line("END:VCALENDAR");
    return writer.bytes();
}
