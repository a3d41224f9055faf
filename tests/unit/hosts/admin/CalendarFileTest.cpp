// SPDX-License-Identifier: MIT
#include "hosts/admin/CalendarFile.h"

#include "hosts/common/calendar/OccurrenceSeries.h"
#include "support/PrintTo.h"

#include <gmock/gmock.h>

#include <libical/ical.h>

namespace
{
const QDateTime now({2026, 3, 14}, {6, 0}, Qt::UTC);

Schedule repeating(const QString &rule, const QString &start, const QString &zone,
                   const QStringList &excluded = {})
{
    Recurrence recurrence{rule, *WallTime::fromString(start), {}, {}, {}};
    for (const QString &date : excluded)
        recurrence.excludedDates += *WallTime::fromString(date);
    Schedule schedule;
    schedule.identifier = "a";
    schedule.name = "Backup, nightly; \"it\"\nis";
    schedule.bundlePath = "/x/Command.plugin";
    schedule.timeZone = zone;
    schedule.recurrence = recurrence;
    return schedule;
}

/// A calendar as another program reads it.
class Calendar
{
public:
    explicit Calendar(const QByteArray &data) : m_root(icalparser_parse_string(data.constData())) {}
    ~Calendar() { icalcomponent_free(m_root); }
    Calendar(const Calendar &) = delete;
    Calendar &operator=(const Calendar &) = delete;

    bool isValid() const
    {
        return m_root && icalcomponent_count_errors(m_root) == 0 && icalrestriction_check(m_root) != 0;
    }
    icalcomponent *event() const { return icalcomponent_get_first_component(m_root, ICAL_VEVENT_COMPONENT); }

    /// When the event takes place, UTC, the first so many times from `from` on.
    QStringList times(int most, const QDateTime &from) const
    {
        QStringList times;
        struct Call {
            QStringList *times;
            int most;
        } call{&times, most};
        const auto begin =
            icaltime_from_timet_with_zone(from.toSecsSinceEpoch(), 0, icaltimezone_get_utc_timezone());
        const auto end = icaltime_from_timet_with_zone(from.addYears(10).toSecsSinceEpoch(), 0,
                                                       icaltimezone_get_utc_timezone());
        icalcomponent_foreach_recurrence(
            event(), begin, end,
            [](icalcomponent *, icaltime_span *span, void *data) {
                auto *const call = static_cast<Call *>(data);
                if (call->times->size() < call->most)
                    *call->times += QDateTime::fromSecsSinceEpoch(span->start, Qt::UTC).toString(Qt::ISODate);
            },
            &call);
        return times;
    }

private:
    icalcomponent *m_root;
};

QStringList ourTimes(const Schedule &schedule, int most, const QDateTime &from)
{
    const auto series = OccurrenceSeries::of(*schedule.recurrence, schedule.zone());
    QStringList times;
    auto next = series->after(from.addSecs(-1));
    for (; next && times.size() < most; next = series->after(*next))
        times += next->toString(Qt::ISODate);
    return times;
}
} // namespace

TEST(CalendarFile, ACalendarProgramShowsTheSameTimes)
{
    constexpr int many = 60;
    for (const Schedule &schedule :
         {repeating("FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR", "2026-03-14T03:00:00", "Europe/Berlin",
                    {"2026-03-27T03:00:00"}),
          repeating("FREQ=MONTHLY;BYMONTHDAY=-1", "2026-01-31T22:00:00", "America/New_York"),
          repeating("FREQ=WEEKLY;INTERVAL=2;BYDAY=MO", "2026-03-14T09:00:00", "Asia/Kathmandu"),
          repeating("FREQ=DAILY;UNTIL=20260420", "2026-03-14T09:00:00", "Europe/Berlin"),
          repeating("FREQ=DAILY;COUNT=20", "2026-03-14T09:00:00", "Europe/Berlin", {"2026-03-14T09:00:00"}),
          repeating("FREQ=DAILY", "2026-03-14T09:00:00", "UTC")}) {
        const Calendar calendar(CalendarFile::of({schedule}, now));
        ASSERT_TRUE(calendar.isValid()) << CalendarFile::of({schedule}, now).constData();
        const QDateTime from({2026, 3, 1}, {0, 0}, Qt::UTC);
        const QStringList ours = ourTimes(schedule, many, from);
        EXPECT_GE(ours.size(), 19);
        EXPECT_EQ(calendar.times(many, from).join(' ').toStdString(), ours.join(' ').toStdString())
            << qPrintable(schedule.recurrence->rule);
    }
}

TEST(CalendarFile, BeginsAtTheRulesOwnFirstDateWhateverIsExcludedOrAdded)
{
    Schedule schedule = repeating("FREQ=WEEKLY;COUNT=3;BYDAY=FR", "2026-03-14T09:00:00", "Europe/Berlin",
                                  {"2026-03-20T09:00:00"});
    Recurrence withAnother = *schedule.recurrence;
    withAnother.extraDates = {*WallTime::fromString("2026-03-16T09:00:00")};
    schedule.recurrence = withAnother;
    const std::string calendar = CalendarFile::of({schedule}, now).toStdString();
    EXPECT_THAT(calendar, testing::HasSubstr("\r\nDTSTART;TZID=Europe/Berlin:20260320T090000\r\n"));
    EXPECT_THAT(calendar, testing::HasSubstr("\r\nRDATE;TZID=Europe/Berlin:20260316T090000\r\n"));
    EXPECT_THAT(calendar, testing::HasSubstr("\r\nEXDATE;TZID=Europe/Berlin:20260320T090000\r\n"));
}

TEST(CalendarFile, EndsAtAMomentInAZoneAndAtAWallTimeInNone)
{
    const auto ruleOf = [](const QString &rule, const QString &zone) {
        const QString calendar =
            QString::fromUtf8(CalendarFile::of({repeating(rule, "2026-03-14T09:00:00", zone)}, now));
        return calendar.section("RRULE:", 1, 1).section("\r\n", 0, 0).toStdString();
    };
    for (const char *until : {"UNTIL=20260420", "UNTIL=20260420T235959"}) {
        const QString rule = QString("FREQ=DAILY;%1").arg(until);
        EXPECT_EQ(ruleOf(rule, "Europe/Berlin"), "FREQ=DAILY;UNTIL=20260420T215959Z");
        EXPECT_EQ(ruleOf(rule, {}), "FREQ=DAILY;UNTIL=20260420T235959");
    }
    EXPECT_EQ(ruleOf("FREQ=DAILY;UNTIL=20260420T120000Z", {}), "FREQ=DAILY;UNTIL=20260420T120000Z");
    EXPECT_EQ(ruleOf("FREQ=DAILY;UNTIL=20260420T120000z", "Asia/Tokyo"), "FREQ=DAILY;UNTIL=20260420T120000z");
}

TEST(CalendarFile, TheZonesClocksAreToldFromAYearBeforeTheFirstDay)
{
    const QByteArray data =
        CalendarFile::of({repeating("FREQ=DAILY", "2026-03-29T00:30:00", "Europe/Berlin")}, now);
    EXPECT_TRUE(data.contains("BEGIN:STANDARD\r\nDTSTART:20250329T000000\r\nTZOFFSETFROM:+0100\r\n"
                              "TZOFFSETTO:+0100\r\nTZNAME:CET\r\n"))
        << data.constData();
    EXPECT_TRUE(data.contains("BEGIN:STANDARD\r\nDTSTART:20251026T030000\r\nRDATE:20261025T030000,"));
    EXPECT_TRUE(data.contains("BEGIN:DAYLIGHT\r\nDTSTART:20250330T020000\r\nRDATE:20260329T020000,"));
    EXPECT_TRUE(data.contains("TZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\nTZNAME:CEST\r\n"));
}

TEST(CalendarFile, TextsArriveAsTheyAre)
{
    const Calendar calendar(CalendarFile::of({repeating("FREQ=DAILY", "2026-03-14T09:00:00", "UTC")}, now));
    EXPECT_STREQ(icalcomponent_get_summary(calendar.event()), "Backup, nightly; \"it\"\nis");
    EXPECT_STREQ(icalcomponent_get_uid(calendar.event()), "a");
}

TEST(CalendarFile, WhatTakesPlaceOnceAndWhatIsDisabledIsToldSo)
{
    Schedule schedule;
    schedule.identifier = "a";
    schedule.name = "A";
    schedule.date = now;
    schedule.isEnabled = false;
    const QByteArray data = CalendarFile::of({schedule}, now);
    EXPECT_TRUE(Calendar(data).isValid());
    EXPECT_TRUE(data.contains("\r\nDTSTART:20260314T060000Z\r\n")) << data.constData();
    EXPECT_TRUE(data.contains("\r\nSTATUS:CANCELLED\r\n"));
}

TEST(CalendarFile, NoLineIsLongerThanItMayBe)
{
    Schedule schedule;
    schedule.identifier = "a";
    schedule.name = QString("ä€").repeated(100);
    schedule.date = now;
    const QByteArray data = CalendarFile::of({schedule}, now);
    for (const QByteArray &line : data.split('\n'))
        EXPECT_LE(line.size(), 76);
    const Calendar calendar(data);
    EXPECT_EQ(QString::fromUtf8(icalcomponent_get_summary(calendar.event())), schedule.name);
}
