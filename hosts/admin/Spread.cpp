// SPDX-License-Identifier: MIT
#include "hosts/admin/Spread.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/common/calendar/FriendlyTerms.h"
#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/calendar/RuleParts.h"

#include <QCryptographicHash>
#include <QFile>
#include <QtEndian>

using namespace dozely;

namespace
{
constexpr qint64 secondsOfDay = 24 * 3600;
constexpr qsizetype mostTimes = 100; // of a rule that says its times itself

qint64 secondOf(const QTime &time)
{
    return time.msecsSinceStartOfDay() / 1000;
}

WallTime later(const WallTime &time, std::chrono::seconds delay)
{
    return WallTime::of(QDateTime(time.day, time.time, Qt::UTC).addSecs(delay.count()));
}

QList<WallTime> later(QList<WallTime> times, std::chrono::seconds delay)
{
    for (WallTime &time : times)
        time = later(time, delay);
    return times;
}

QList<int> numbersIn(const RuleParts &rule, const char *part, int otherwise)
{
    if (!rule.has(part))
        return {otherwise};
    QList<int> numbers;
    for (const QString &number : rule.value(part).split(','))
        numbers += number.toInt();
    return numbers;
}

/// The times of day at which a rule of days takes place.
QList<QTime> timesOf(const RuleParts &rule, const QTime &start)
{
    QList<QTime> times;
    for (const int hour : numbersIn(rule, "BYHOUR", start.hour())) {
        for (const int minute : numbersIn(rule, "BYMINUTE", start.minute())) {
            for (const int second : numbersIn(rule, "BYSECOND", start.second())) {
                if (times.size() < mostTimes)
                    times += QTime(hour, minute, std::min(second, 59));
            }
        }
    }
    return times;
}

Result<void> moveTimes(std::chrono::seconds delay, std::chrono::seconds spread, Recurrence &recurrence)
{
    RuleParts rule(recurrence.rule);
    QList<QTime> times = timesOf(rule, recurrence.localStart.time);
    for (QTime &time : times) {
        if (secondOf(time) + spread.count() > secondsOfDay)
            return Error{
                AdminText::tr("a time of %1 cannot be spread over midnight").arg(time.toString("HH:mm:ss"))};
        time = time.addSecs(static_cast<int>(delay.count()));
    }
    if (rule.hasTimes()) {
        if (const auto set = rule.setTimes(times); !set)
            return Error{AdminText::tr("%1, so that they cannot be spread").arg(set.error().text)};
        if (!rule.hasTimes() || times.size() == 1)
            recurrence.localStart.time = times.constFirst();
        else
            recurrence.localStart = later(recurrence.localStart, delay);
        recurrence.rule = rule.toString();
    } else {
        recurrence.localStart = later(recurrence.localStart, delay);
    }
    return {};
}
} // namespace

std::optional<std::chrono::seconds> Spread::read(const AdminOptions &options)
{
    if (!options.isSet("spread"))
        return {};
    const auto spread = FriendlyTerms::duration(options.value("spread"));
    if (!spread || spread->count() < 1 || spread->count() > secondsOfDay)
        refuse(AdminText::tr("\"%1\" is no time to spread starts over, such as 30m or 1h.")
                   .arg(options.value("spread")));
    return *spread;
}

std::chrono::seconds Spread::of(const QByteArray &machineId, std::chrono::seconds spread)
{
    // Hashed, since an id tells which machine it is (machine-id(5)).
    const QByteArray hash =
        QCryptographicHash::hash("com.dozely spread " + machineId, QCryptographicHash::Sha256);
    return std::chrono::seconds(qFromBigEndian<quint64>(hash.constData()) %
                                static_cast<quint64>(spread.count()));
}

Result<std::chrono::seconds> Spread::ofThisMachine(std::chrono::seconds spread)
{
    constexpr qsizetype length = 32;
    QFile file(RootFolder::join("/etc/machine-id"));
    const QByteArray id = file.open(QIODevice::ReadOnly) ? file.read(length + 1).trimmed() : QByteArray();
    if (id.size() != length)
        return Error{
            AdminText::tr("this machine has no id (/etc/machine-id) by which starts could be spread")};
    return of(id, spread);
}

Result<void> Spread::apply(std::chrono::seconds delay, std::chrono::seconds spread, Schedule &schedule)
{
    if (!schedule.recurrence) {
        schedule.date = schedule.date.addSecs(delay.count());
        return {};
    }
    Recurrence recurrence = *schedule.recurrence;
    if (RuleParts(recurrence.rule).isOfDays()) {
        if (const auto moved = moveTimes(delay, spread, recurrence); !moved)
            return moved.error();
    } else {
        recurrence.localStart = later(recurrence.localStart, delay);
    }
    recurrence.extraDates = later(recurrence.extraDates, delay);
    recurrence.excludedDates = later(recurrence.excludedDates, delay);
    const auto series = OccurrenceSeries::of(recurrence, schedule.zone());
    if (!series)
        return series.error();
    if (const auto first = series->first())
        schedule.date = *first;
    schedule.recurrence = recurrence;
    return {};
}
