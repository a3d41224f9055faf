// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/DateTerms.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/common/calendar/CalendarText.h"
#include "hosts/common/calendar/DayTerms.h"

#include <QRegularExpression>

#include <algorithm>

using namespace dozely;

namespace
{
constexpr qsizetype longestText = 100; // what follows takes time with the square of its words
constexpr std::chrono::seconds longestDelay = std::chrono::hours(24) * 366 * 100;

Error noDate(const QString &text)
{
    return Error{
        CalendarText::tr("\"%1\" is not a date such as \"2026-03-14 06:55\", \"06:55\", \"tomorrow 7:00\", "
                         "\"fri 22:00\" or \"+5m\"")
            .arg(text)};
}

Error readings(const QString &text, const QStringList &readings)
{
    QString either;
    for (const QString &reading : readings)
        either = either.isEmpty() ? reading : CalendarText::tr("%1 or %2").arg(either, reading);
    return Error{CalendarText::tr("\"%1\" can be %2").arg(text, either)};
}

FriendlyTerms::Date exactly(const QDateTime &moment)
{
    constexpr qint64 second = 1000;
    const qint64 whole = (moment.toMSecsSinceEpoch() + second - 1) / second;
    const QDateTime date = QDateTime::fromSecsSinceEpoch(whole, Qt::UTC);
    return {date.date(), date.time(), std::chrono::seconds(0)};
}

QString textOf(const FriendlyTerms::Date &date)
{
    const QString day = date.day.toString(Qt::ISODate);
    return date.time ? day + date.time->toString(date.time->second() == 0 ? " HH:mm" : " HH:mm:ss") : day;
}

QString offsetText(int offset)
{
    constexpr int minute = 60;
    constexpr int hour = 60 * minute;
    const QTime distance(std::abs(offset) / hour, std::abs(offset) % hour / minute);
    return (offset < 0 ? "-" : "+") + distance.toString("HH:mm");
}

/// A time that is shown twice, with the offset that tells which of them is meant.
QString withOffset(const QString &text, const QDateTime &moment, const QTimeZone &zone)
{
    return QString("\"%1%2\"").arg(text, offsetText(zone.offsetFromUtc(moment)));
}

std::optional<std::chrono::seconds> offsetIn(const QString &text)
{
    static const QRegularExpression form(R"(\A([+-])([01]\d|2[0-3]):([0-5]\d)\z)");
    if (text == "Z")
        return std::chrono::seconds(0);
    const auto match = form.match(text);
    if (!match.hasMatch())
        return {};
    const std::chrono::seconds offset =
        std::chrono::hours(match.captured(2).toInt()) + std::chrono::minutes(match.captured(3).toInt());
    return match.captured(1) == "-" ? -offset : offset;
}

/// The times of day in a text that also says the day. Between hour and minute some write a full stop.
QList<QTime> timesIn(const QString &text)
{
    static const QRegularExpression stopped(R"(\A(\d{1,2})\.(\d\d)\z)");
    const auto match = stopped.match(text);
    return FriendlyTerms::timesIn(match.hasMatch() ? match.captured(1) + ":" + match.captured(2) : text);
}

/// A time from now; absent for what is none.
std::optional<Result<FriendlyTerms::Date>> delayIn(const QString &text, const QDateTime &now,
                                                   const QTimeZone &zone)
{
    static const QRegularExpression bare(R"(\A(?:\+|in )(\d{1,10})\z)");
    static const QRegularExpression form(R"(\A(?:\+|in )(?:\d{1,10} ?[a-z]+ ?)+\z)");
    static const QRegularExpression part(R"((\d+) ?([a-z]+))");
    static const QHash<QString, int> units{{"s", 1},    {"sec", 1},     {"second", 1},  {"seconds", 1},
                                           {"m", 60},   {"min", 60},    {"minute", 60}, {"minutes", 60},
                                           {"h", 3600}, {"hour", 3600}, {"hours", 3600}};
    static const QStringList dayUnits{"d", "day", "days"};
    if (const auto match = bare.match(text); match.hasMatch()) {
        const QString number = match.captured(1);
        return readings(text, {"+" + number + "s", "+" + number + "m", "+" + number + "h"});
    }
    if (!form.match(text).hasMatch())
        return {};
    qint64 days = 0;
    qint64 seconds = 0;
    for (auto parts = part.globalMatch(text); parts.hasNext();) {
        const auto match = parts.next();
        const qint64 count = match.captured(1).toLongLong();
        const QString unit = match.captured(2);
        if (!units.contains(unit) && !dayUnits.contains(unit))
            return noDate(text);
        (units.contains(unit) ? seconds : days) += count * units.value(unit, 1);
    }
    constexpr qint64 secondsOfDay = 24 * 3600;
    if (days * secondsOfDay + seconds > longestDelay.count())
        return noDate(text);
    const QDateTime even = now.addSecs(days * secondsOfDay + seconds);
    const QDateTime there = now.toTimeZone(zone);
    const QDateTime byClocks =
        dateAtWallTime(there.date().addDays(days), there.time(), zone).addSecs(seconds);
    if (days == 0 || even == byClocks)
        return exactly(even);
    return readings(text, {even.toTimeZone(zone).toString("yyyy-MM-dd HH:mm:ss"),
                           CalendarText::tr("%1, since clocks are changed meanwhile")
                               .arg(byClocks.toString("yyyy-MM-dd HH:mm:ss"))});
}
} // namespace

DateTerms::DateTerms(const QDateTime &now, const QTimeZone &zone, Towards towards)
    : m_now(now), m_zone(zone), m_towards(towards)
{
}

Result<FriendlyTerms::Date> DateTerms::read(const QString &text) const
{
    static const QRegularExpression filler(R"((?<=[^ ]),? (?:at |on )?|,(?=\S))");
    static const QRegularExpression offsetForm(R"((?<=[0-9ap m])(Z|[+-]\d\d:\d\d)\z)");
    static const QRegularExpression isoForm(R"(\A(\d{4}-\d\d-\d\d)T(?=\d))");
    if (text != text.simplified() || text.size() > longestText)
        return noDate(text);
    if (text == "now")
        return exactly(m_now);
    if (const auto delay = delayIn(text.toLower(), m_now, m_zone))
        return delay->ok() ? *delay : Error{delay->error().text};

    QString rest = text;
    rest.replace(isoForm, "\\1 ");
    const auto offsetMatch = offsetForm.match(rest);
    const auto offset = offsetIn(offsetMatch.captured(1));
    if (offset)
        rest.chop(offsetMatch.captured(1).size());
    const QStringList words = rest.toLower().split(filler);
    const QTimeZone zone = offset ? QTimeZone(static_cast<int>(offset->count())) : m_zone;
    const DayTerms days(m_now.toTimeZone(zone), m_towards == Towards::ToCome);

    // A text can be cut into a day and a time in several ways; each that means something is a reading.
    QStringList found;
    FriendlyTerms::Date date;
    const auto take = [&](const QStringList &dayWords, const QStringList &timeWords) {
        const QList<QTime> times = timesIn(timeWords.join(' '));
        if (!timeWords.isEmpty() && times.isEmpty())
            return;
        if (timeWords.isEmpty() && offset)
            return;
        QList<std::optional<QTime>> choices;
        for (const QTime &time : times)
            choices += time;
        if (choices.isEmpty())
            choices += std::nullopt;
        for (const auto &time : choices) {
            for (const QDate &day : days.daysIn(dayWords.join(' '), time)) {
                const FriendlyTerms::Date reading{day, time, offset};
                if (!found.contains(textOf(reading)))
                    found += textOf(reading);
                date = reading;
            }
        }
    };
    take(words, {});
    for (const qsizetype count : {1, 2}) { // "22:00" or "7 pm"
        if (count > words.size())
            break;
        take(words.mid(0, words.size() - count), words.mid(words.size() - count));
        take(words.mid(count), words.mid(0, count));
    }
    if (found.isEmpty())
        return noDate(text);
    return found.size() > 1 ? Result<FriendlyTerms::Date>(readings(text, found)) : date;
}

Result<DateTerms::Moment> DateTerms::momentOf(const FriendlyTerms::Date &date, const QString &text) const
{
    if (date.offset)
        return Moment{QDateTime(date.day, *date.time, Qt::UTC).addSecs(-date.offset->count()), false};
    const QList<QDateTime> moments = FriendlyTerms::momentsOf(date.day, *date.time, m_zone);
    if (moments.size() > 1) {
        return Error{CalendarText::tr("Clocks in %1 show \"%2\" twice: say %3 or %4")
                         .arg(QString::fromUtf8(m_zone.id()), text,
                              withOffset(text, moments.constFirst(), m_zone),
                              withOffset(text, moments.constLast(), m_zone))};
    }
    if (!moments.isEmpty())
        return Moment{moments.constFirst(), false};
    return Moment{dateAtWallTime(date.day, *date.time, m_zone).toUTC(), true};
}
