// SPDX-License-Identifier: MIT
#include "hosts/application/when/TimingRemark.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/application/when/DateInWords.h"
#include "hosts/common/calendar/FriendlyTerms.h"

using namespace dozely;

using Kind = Timing::Kind;

QString TimingRemark::on(const Timing &timing, const QLocale &locale)
{
    switch (timing.pattern.kind) {
    case Kind::Once:
        return onOnce(timing, locale);
    case Kind::Monthly:
        return onMonths(timing.pattern, locale);
    case Kind::Yearly:
        return timing.pattern.month == 2 && timing.pattern.day == 29
                   ? tr("Years without a 29 February are left out.")
                   : QString();
    default:
        return {};
    }
}

QString TimingRemark::onMonths(const Timing::Pattern &pattern, const QLocale &locale)
{
    constexpr size_t lastOfEveryMonth = 28;
    for (size_t day = lastOfEveryMonth + 1; day < pattern.monthDays.size(); ++day) {
        if (pattern.monthDays[day])
            return tr("Months without a day %1 are left out; \"Last day\" is the last of each month.")
                .arg(locale.toString(static_cast<int>(day)));
    }
    return {};
}

QString TimingRemark::onOnce(const Timing &timing, const QLocale &locale)
{
    const QTimeZone zone = Timing::zoneOf(timing.timeZone);
    const QTime time = timing.times.constFirst();
    if (!zone.isValid())
        return {};
    const QList<QDateTime> moments = FriendlyTerms::momentsOf(timing.begin, time, zone);
    if (moments.isEmpty()) {
        const QTime moved = dateAtWallTime(timing.begin, time, zone).time();
        return tr("Clocks skip %1 on that day; it takes place at %2.")
            .arg(DateInWords::of(time, locale), DateInWords::of(moved, locale));
    }
    return moments.size() > 1 ? tr("Clocks show %1 twice on that day; it takes place at the first.")
                                    .arg(DateInWords::of(time, locale))
                              : QString();
}
