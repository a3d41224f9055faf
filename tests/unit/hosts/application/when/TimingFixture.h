// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/application/when/TimingWriter.h"
#include "hosts/common/calendar/OccurrenceSeries.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"

#include <gmock/gmock.h>

/// Schedules in Berlin. It is Saturday, 2026-03-14 06:00 UTC, 07:00 there.
class TimingFixture : public testing::Test
{
protected:
    using Kind = Timing::Kind;

    struct Shown {
        const char *rule;
        Timing::Kind kind;
        const char *start = "2026-03-14T22:00:00";
    };

    /// Rules of all kinds, and as what they are shown.
    static QList<Shown> rules()
    {
        return {
            {"FREQ=DAILY", Kind::Daily},
            {"freq=daily;interval=3", Kind::Daily},
            {"FREQ=DAILY;INTERVAL=0002;WKST=SU", Kind::Daily},
            {"FREQ=DAILY;BYDAY=SA,SU", Kind::Weekly},
            {"FREQ=DAILY;BYDAY=MO,TU,WE,TH,FR", Kind::Weekdays},
            {"FREQ=DAILY;BYHOUR=6,22;BYMINUTE=0,30", Kind::Daily},
            {"FREQ=DAILY;BYHOUR=6", Kind::Daily, "2026-03-14T22:15:30"},
            {"FREQ=DAILY;COUNT=10", Kind::Daily},
            {"FREQ=DAILY;UNTIL=20261231", Kind::Daily},
            {"FREQ=DAILY;UNTIL=20261231T235959", Kind::Daily},
            {"FREQ=WEEKLY", Kind::Weekly},
            {"FREQ=WEEKLY;BYDAY=TU,MO", Kind::Weekly},
            {"byday=mo,tu,we,th,fr;freq=weekly;wkst=su", Kind::Weekdays},
            {"FREQ=WEEKLY;INTERVAL=2;BYDAY=SU,MO;WKST=SU", Kind::Weekly},
            {"FREQ=WEEKLY;INTERVAL=2;BYDAY=SU,MO", Kind::Weekly},
            {"FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,TU,WE,TH,FR", Kind::Weekly},
            {"FREQ=MONTHLY", Kind::Monthly},
            {"FREQ=MONTHLY", Kind::Monthly, "2026-03-31T22:00:00"},
            {"FREQ=MONTHLY;BYMONTHDAY=1,15,-1", Kind::Monthly},
            {"FREQ=MONTHLY;INTERVAL=3;BYMONTHDAY=+31", Kind::Monthly},
            {"FREQ=MONTHLY;BYDAY=1MO", Kind::Monthly},
            {"FREQ=MONTHLY;BYDAY=-1FR;BYHOUR=9;BYMINUTE=0;BYSECOND=0;COUNT=3", Kind::Monthly},
            {"FREQ=YEARLY", Kind::Yearly},
            {"FREQ=YEARLY", Kind::Yearly, "2028-02-29T22:00:00"},
            {"FREQ=YEARLY;INTERVAL=2;BYMONTH=12;BYMONTHDAY=24", Kind::Yearly},
            {"FREQ=HOURLY", Kind::Distance},
            {"FREQ=HOURLY;INTERVAL=36;COUNT=5", Kind::Distance},
            {"FREQ=MINUTELY;INTERVAL=15;UNTIL=20260320", Kind::Distance, "2026-03-14T22:00:07"},
            {"FREQ=SECONDLY;INTERVAL=30", Kind::Expert},
            {"FREQ=HOURLY;BYHOUR=9,10,11", Kind::Expert},
            {"FREQ=MINUTELY;BYDAY=MO", Kind::Expert},
            {"FREQ=DAILY;INTERVAL=2;BYDAY=MO", Kind::Expert},
            {"FREQ=DAILY;BYMONTH=7", Kind::Expert},
            {"FREQ=DAILY;BYMONTHDAY=13", Kind::Expert},
            {"FREQ=DAILY;BYHOUR=1,2,3,4,5,6,7,8,9,10,11,12,13", Kind::Expert},
            {"FREQ=DAILY;UNTIL=20261231T120000", Kind::Expert},
            {"FREQ=DAILY;UNTIL=20261231T225959Z", Kind::Expert},
            {"FREQ=DAILY;UNTIL=20261231T235959Z", Kind::Expert},
            {"FREQ=DAILY;INTERVAL=100000", Kind::Expert},
            {"FREQ=HOURLY;COUNT=1000001", Kind::Expert},
            {"FREQ=WEEKLY;BYMONTH=3", Kind::Expert},
            {"FREQ=WEEKLY;BYDAY=MO,TU;BYSETPOS=1", Kind::Expert},
            {"FREQ=MONTHLY;BYDAY=MO", Kind::Expert},
            {"FREQ=MONTHLY;BYDAY=1MO,3MO", Kind::Expert},
            {"FREQ=MONTHLY;BYDAY=1MO,TU", Kind::Expert},
            {"FREQ=MONTHLY;BYDAY=-2FR", Kind::Expert},
            {"FREQ=MONTHLY;BYDAY=5FR", Kind::Expert},
            {"FREQ=MONTHLY;BYDAY=1FR;BYMONTHDAY=3", Kind::Expert},
            {"FREQ=MONTHLY;BYMONTHDAY=-2", Kind::Expert},
            {"FREQ=MONTHLY;BYMONTHDAY=1;BYMONTH=1,7", Kind::Expert},
            {"FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1", Kind::Expert},
            {"FREQ=YEARLY;BYMONTH=1,2;BYMONTHDAY=3", Kind::Expert},
            {"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=-1", Kind::Expert},
            {"FREQ=YEARLY;BYMONTH=3", Kind::Expert},
            {"FREQ=YEARLY;BYMONTHDAY=3", Kind::Expert},
            {"FREQ=YEARLY;BYDAY=20MO", Kind::Expert},
            {"FREQ=YEARLY;BYWEEKNO=20", Kind::Expert},
            {"FREQ=YEARLY;BYYEARDAY=100", Kind::Expert},
        };
    }

    TimingFixture() { dozely::Port<dozely::Clock>::current() = clock; }

    static Recurrence recurrence(const QString &rule, const QString &start = "2026-03-14T22:00:00",
                                 const QStringList &excluded = {}, const QStringList &extra = {})
    {
        Recurrence result{rule, *WallTime::fromString(start), {}, {}, {{"Kept", 1}}};
        for (const QString &date : excluded)
            result.excludedDates += *WallTime::fromString(date);
        for (const QString &date : extra)
            result.extraDates += *WallTime::fromString(date);
        return result;
    }

    static OccurrenceSeries series(const Recurrence &recurrence)
    {
        return OccurrenceSeries::of(recurrence, QTimeZone(zone)).value();
    }

    static TimingWriter::Schedule schedule(const Recurrence &recurrence)
    {
        return {*series(recurrence).first(), zone, recurrence};
    }

    static QDateTime utc(const char *text) { return QDateTime::fromString(text, Qt::ISODate); }

    /// The first occurrences after now.
    QList<QDateTime> next(const Recurrence &recurrence, int count = 40) const
    {
        const OccurrenceSeries all = series(recurrence);
        QList<QDateTime> dates;
        for (auto date = all.after(clock->currentDate()); date && dates.size() < count;
             date = all.after(*date))
            dates += *date;
        return dates;
    }

    static constexpr const char *zone = "Europe/Berlin";
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
};
