// SPDX-License-Identifier: MIT
#include "hosts/admin/DateOptions.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/common/calendar/FriendlyTerms.h"

#include <cmath>

using namespace dozely;

namespace
{
constexpr double longestDelay = 100.0 * 366 * 24 * 3600; // a hundred years, in seconds

QDateTime afterDelay(const QString &text)
{
    bool isNumber = false;
    double seconds = text.toDouble(&isNumber);
    if (const auto duration = FriendlyTerms::duration(text); !isNumber && duration) {
        isNumber = true;
        seconds = static_cast<double>(duration->count());
    }
    if (!isNumber || !(seconds >= 0 && seconds <= longestDelay))
        refuse(AdminText::tr("\"%1\" is not a number of seconds from now.").arg(text));
    const auto milliseconds = static_cast<qint64>(std::ceil(seconds * 1000));
    const qint64 due = Port<Clock>::current()->currentDate().toMSecsSinceEpoch() + milliseconds;
    // The store keeps whole seconds; never early.
    return QDateTime::fromSecsSinceEpoch((due + 999) / 1000, Qt::UTC);
}

QString textOf(const QDateTime &date)
{
    return date.toString("yyyy-MM-dd HH:mm:ss");
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
        refuse(AdminText::tr("There is no time zone \"%1\".").arg(name));
    return QTimeZone(name.toUtf8());
}

FriendlyTerms::Date DateOptions::written(const QString &text, const QTimeZone &zone,
                                         DateTerms::Towards towards)
{
    return accepted(DateTerms(Port<Clock>::current()->currentDate(), zone, towards).read(text));
}

DateOptions::Moment DateOptions::inZone(const FriendlyTerms::Date &date, const QString &text,
                                        const QTimeZone &zone)
{
    if (!date.time)
        refuse(AdminText::tr("\"%1\" is a day; say at what time, such as \"%1 06:55\".").arg(text));
    const QString zoneName = QString::fromUtf8(zone.id());
    const DateTerms terms(Port<Clock>::current()->currentDate(), zone);
    const DateTerms::Moment moment = accepted(terms.momentOf(date, text));
    if (!moment.isMoved)
        return {moment.date, zoneName, {}};
    return {moment.date, zoneName,
            AdminText::tr("%1 does not exist in %2; it becomes %3.")
                .arg(text, zoneName, textOf(moment.date.toTimeZone(zone)))};
}

DateOptions::Moment DateOptions::read(const AdminOptions &options, const QString &usualZone)
{
    if (options.isSet("date") == options.isSet("in"))
        refuse(AdminText::tr("Say when, by --date or by --in."));
    const QTimeZone zone = DateOptions::zone(options, usualZone);
    const Moment moment = options.isSet("in")
                              ? Moment{afterDelay(options.value("in")), QString::fromUtf8(zone.id()), {}}
                              : inZone(written(options.value("date"), zone), options.value("date"), zone);
    if (moment.date < Port<Clock>::current()->currentDate())
        refuse(AdminText::tr("%1 in %2 is past.").arg(options.value("date"), moment.timeZone));
    if (PropertyList::toData(QVariantMap{{"Date", moment.date}}, PropertyList::Format::Xml).isNull())
        refuse(AdminText::tr("The date is further ahead than the store can hold."));
    return moment;
}
