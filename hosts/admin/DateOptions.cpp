// SPDX-License-Identifier: MIT
#include "hosts/admin/DateOptions.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/common/calendar/FriendlyTerms.h"

#include <cmath>

using namespace dozely;

namespace
{
constexpr double longestDelay = 100.0 * 366 * 24 * 3600; // a hundred years, in seconds

QDateTime afterDelay(const QString &text)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || !(seconds >= 0 && seconds <= longestDelay))
        refuse(QString("\"%1\" is not a number of seconds from now.").arg(text));
    const auto milliseconds = static_cast<qint64>(std::ceil(seconds * 1000));
    const qint64 due = Port<Clock>::current()->currentDate().toMSecsSinceEpoch() + milliseconds;
    // The store keeps whole seconds; never early.
    return QDateTime::fromSecsSinceEpoch((due + 999) / 1000, Qt::UTC);
}

QString textOf(const QDateTime &date)
{
    return date.toString("yyyy-MM-dd HH:mm:ss");
}

/// A time that is shown twice, with the offset that tells which of them is meant.
QString withOffset(const QString &text, int offset)
{
    constexpr int minute = 60;
    constexpr int hour = 60 * minute;
    const QTime distance(std::abs(offset) / hour, std::abs(offset) % hour / minute);
    return QString("\"%1%2%3\"").arg(text, offset < 0 ? "-" : "+", distance.toString("HH:mm"));
}
} // namespace

QString DateOptions::machineZone()
{
    return QString::fromUtf8(machineTimeZone().id());
}

QTimeZone DateOptions::zone(const AdminOptions &options, const QString &usual)
{
    const QString wanted = options.isSet("time-zone") ? options.value("time-zone") : usual;
    const QString name = wanted == "machine" ? machineZone() : wanted;
    if (!isTimeZoneName(name))
        refuse(QString("There is no time zone \"%1\".").arg(name));
    return QTimeZone(name.toUtf8());
}

DateOptions::Moment DateOptions::inZone(const QString &text, const QTimeZone &zone)
{
    const auto date = FriendlyTerms::date(text);
    if (!date)
        refuse(date.error().text + ".");
    if (!date->time)
        refuse(QString("\"%1\" is not a date such as \"2026-03-14 06:55\".").arg(text));
    const QString zoneName = QString::fromUtf8(zone.id());
    if (date->offset) {
        const QDateTime wallTime(date->day, *date->time, Qt::UTC);
        return {wallTime.addSecs(-date->offset->count()), zoneName, {}};
    }
    const QList<QDateTime> moments = FriendlyTerms::momentsOf(date->day, *date->time, zone);
    if (moments.size() > 1) {
        refuse(QString("Clocks in %1 show \"%2\" twice: say %3 or %4.")
                   .arg(zoneName, text, withOffset(text, zone.offsetFromUtc(moments.constFirst())),
                        withOffset(text, zone.offsetFromUtc(moments.constLast()))));
    }
    if (!moments.isEmpty())
        return {moments.constFirst(), zoneName, {}};
    const QDateTime moved = dateAtWallTime(date->day, *date->time, zone);
    return {moved.toUTC(), zoneName,
            QString("%1 does not exist in %2; it becomes %3.").arg(text, zoneName, textOf(moved))};
}

DateOptions::Moment DateOptions::read(const AdminOptions &options, const QString &usualZone)
{
    if (options.isSet("date") == options.isSet("in"))
        refuse("Say when, by --date or by --in.");
    const QTimeZone zone = DateOptions::zone(options, usualZone);
    const Moment moment = options.isSet("in")
                              ? Moment{afterDelay(options.value("in")), QString::fromUtf8(zone.id()), {}}
                              : inZone(options.value("date"), zone);
    if (moment.date < Port<Clock>::current()->currentDate())
        refuse(QString("%1 in %2 is past.").arg(options.value("date"), moment.timeZone));
    if (PropertyList::toData(QVariantMap{{"Date", moment.date}}, PropertyList::Format::Xml).isNull())
        refuse("The date is further ahead than the store can hold.");
    return moment;
}
