// SPDX-License-Identifier: MIT
#include "hosts/admin/StartOptions.h"

#include "DozelyKit/core/foundation/Clock.h"
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
/// Takes a date with a time over.
void take(StartOptions &start, const QString &text, const FriendlyTerms::Date &date, const QTimeZone &zone)
{
    const DateOptions::Moment moment = DateOptions::inZone(date, text, zone);
    start.from = moment.date;
    // A time that is skipped on that day is there on others.
    start.time = date.offset ? moment.date.toTimeZone(zone).time() : *date.time;
    if (!moment.remark.isEmpty())
        start.remarks += moment.remark;
}
} // namespace

StartOptions StartOptions::read(const AdminOptions &options, const QTimeZone &zone)
{
    StartOptions start;
    start.now = start.notBefore = Port<Clock>::current()->currentDate();
    if (!options.isSet("from"))
        return start;
    const QString text = options.value("from");
    const FriendlyTerms::Date date = DateOptions::written(text, zone);
    if (date.time)
        take(start, text, date, zone);
    else
        start.from = dateAtWallTime(date.day, QTime(0, 0), zone).toUTC();
    const bool isPast = date.time ? *start.from < start.now : date.day < start.now.toTimeZone(zone).date();
    if (isPast)
        throw AdminError(ExitStatus::BadUsage,
                         AdminText::tr("%1 in %2 is past.").arg(text, QString::fromUtf8(zone.id())));
    start.notBefore = std::max(start.now, *start.from);
    return start;
}
