// SPDX-License-Identifier: MIT
#include "hosts/admin/DateOptions.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"

#include <QRegularExpression>
#include <QTimeZone>

#include <cmath>

using namespace dozely;

namespace
{
constexpr double longestDelay = 100.0 * 366 * 24 * 3600; // a hundred years, in seconds

[[noreturn]] void refuse(const QString &sentence)
{
    throw AdminError(ExitStatus::BadUsage, sentence);
}

QTimeZone timeZone(const AdminOptions &options, const QString &usual)
{
    const QString name = options.isSet("time-zone") ? options.value("time-zone") : usual;
    if (!isTimeZoneName(name))
        refuse(QString("There is no time zone \"%1\".").arg(name));
    return QTimeZone(name.toUtf8());
}

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

DateOptions::Moment atWallTime(const QString &text, const QTimeZone &zone)
{
    static const QRegularExpression form(R"(^(\d{4}-\d\d-\d\d)[ T](\d\d):(\d\d)(?::(\d\d))?$)");
    const auto match = form.match(text);
    const QDate day = QDate::fromString(match.captured(1), Qt::ISODate);
    const QTime time(match.captured(2).toInt(), match.captured(3).toInt(), match.captured(4).toInt());
    if (!match.hasMatch() || !day.isValid() || !time.isValid())
        refuse(QString("\"%1\" is not a date such as \"2026-03-14 06:55\".").arg(text));
    const QDateTime local = dateAtWallTime(day, time, zone);
    DateOptions::Moment moment{local.toUTC(), {}, {}};
    if (local.time() != time || local.date() != day) {
        moment.remark = QString("%1 does not exist in %2; it becomes %3.")
                            .arg(text, QString::fromUtf8(zone.id()), local.toString("yyyy-MM-dd HH:mm:ss"));
    }
    return moment;
}
} // namespace

DateOptions::Moment DateOptions::readDate(const AdminOptions &options, const QString &usualZone)
{
    const QTimeZone zone = timeZone(options, usualZone);
    Moment moment = atWallTime(options.value("date"), zone);
    moment.timeZone = QString::fromUtf8(zone.id());
    return moment;
}

DateOptions::Moment DateOptions::read(const AdminOptions &options)
{
    if (options.isSet("date") == options.isSet("in"))
        refuse("Say when, by --date or by --in.");
    const QTimeZone zone = timeZone(options, QString::fromUtf8(QTimeZone::systemTimeZoneId()));
    Moment moment;
    if (options.isSet("in"))
        moment.date = afterDelay(options.value("in"));
    else
        moment = atWallTime(options.value("date"), zone);
    moment.timeZone = QString::fromUtf8(zone.id());
    if (moment.date < Port<Clock>::current()->currentDate())
        refuse(QString("%1 in %2 is past.").arg(options.value("date"), moment.timeZone));
    if (PropertyList::toData(QVariantMap{{"Date", moment.date}}, PropertyList::Format::Xml).isNull())
        refuse("The date is further ahead than the store can hold.");
    return moment;
}
