// SPDX-License-Identifier: MIT
#include "hosts/application/when/TimingWriter.h"

#include "unit/hosts/application/when/TimingFixture.h"

#include <algorithm>
#include <functional>

using namespace dozely;

class TimingWriterTest : public TimingFixture
{
protected:
    using Edit = std::function<void(Timing &)>;

    /// What an edit makes of a rule: the rule, its start and what is excluded, or the fault.
    static QString edited(const Recurrence &recurrence, const Edit &edit)
    {
        const TimingWriter writer(schedule(recurrence));
        Timing timing = writer.shown();
        edit(timing);
        const auto written = writer.written(timing);
        if (!written)
            return written.error().text;
        EXPECT_EQ(written->date,
                  OccurrenceSeries::of(*written->recurrence, Timing::zoneOf(written->timeZone))->first());
        EXPECT_EQ(written->recurrence->otherKeys, recurrence.otherKeys);
        QString text = written->recurrence->rule + " " + written->recurrence->localStart.toString();
        for (const WallTime &date : written->recurrence->excludedDates)
            text += " without " + date.toString();
        for (const WallTime &date : written->recurrence->extraDates)
            text += " with " + date.toString();
        return text;
    }
    /// The same of what takes place once, on 20 March at 22:00.
    static QString made(const Edit &edit)
    {
        const TimingWriter writer({utc("2026-03-20T21:00:00Z"), zone, {}});
        Timing timing = writer.shown();
        edit(timing);
        const auto written = writer.written(timing);
        if (!written)
            return written.error().text;
        if (!written->recurrence)
            return written->date.toString(Qt::ISODate) + " " + written->timeZone;
        return written->recurrence->rule + " " + written->recurrence->localStart.toString();
    }
};

TEST_F(TimingWriterTest, WhatNobodyEditsStaysToTheLetter)
{
    for (const auto &[rule, kind, start] : rules()) {
        const auto given =
            schedule(recurrence(rule, start, {"2026-03-21T22:00:00"}, {"2026-05-01T12:00:00"}));
        const TimingWriter writer(given);
        EXPECT_EQ(writer.shown().pattern.kind, kind) << rule;
        EXPECT_EQ(writer.written(writer.shown()).value(), given) << rule;
    }
}

TEST_F(TimingWriterTest, WhatIsShownIsExactlyWhatTheRuleMeans)
{
    for (const auto &[rule, kind, start] : rules()) {
        const Recurrence given = recurrence(rule, start);
        const TimingWriter writer(schedule(given));
        // Written by one that knows the rule, and by one that knows only what is shown of it.
        Recurrence again = given;
        again.rule = writer.ruleOf(writer.shown());
        EXPECT_EQ(again.rule, rule);
        const TimingWriter stranger({utc("2026-03-14T21:00:00Z"), zone, {}});
        again.rule = stranger.ruleOf(writer.shown());
        if (kind != Kind::Expert)
            again.localStart.time = writer.shown().times.constFirst();
        const QList<QDateTime> dates = next(given);
        QList<QDateTime> datesAgain = next(again);
        while (!datesAgain.isEmpty() && datesAgain.constFirst() < dates.constFirst())
            datesAgain.removeFirst(); // earlier on the first day, which the rule's own start cut off
        const qsizetype compared = std::min(dates.size(), datesAgain.size());
        EXPECT_GT(compared, dates.size() / 2);
        EXPECT_EQ(datesAgain.mid(0, compared), dates.mid(0, compared))
            << rule << " became " << qPrintable(again.rule);
    }
}

TEST_F(TimingWriterTest, AnEditChangesThePartsThatItIsAbout)
{
    const Recurrence weekly = recurrence("wkst=su;freq=weekly;byday=mo,th;interval=1", "2026-03-02T22:00:00");
    EXPECT_EQ(edited(weekly, [](Timing &timing) { timing.times = {QTime(6, 30)}; }),
              "wkst=su;freq=weekly;byday=mo,th;interval=1 2026-03-16T06:30:00");
    EXPECT_EQ(edited(weekly,
                     [](Timing &timing) {
                         timing.times = {QTime(6, 30), QTime(22, 30)};
                     }),
              "wkst=su;freq=weekly;byday=mo,th;interval=1;BYHOUR=6,22;BYMINUTE=30;BYSECOND=0 "
              "2026-03-16T06:30:00");
    EXPECT_EQ(edited(weekly,
                     [](Timing &timing) {
                         timing.ending = {Timing::End::AfterTimes, {}, 3};
                     }),
              "wkst=su;freq=weekly;byday=mo,th;interval=1;COUNT=3 2026-03-16T22:00:00");
    EXPECT_EQ(edited(weekly,
                     [](Timing &timing) {
                         timing.ending = {Timing::End::OnDay, {2026, 4, 1}, 0};
                     }),
              "wkst=su;freq=weekly;byday=mo,th;interval=1;UNTIL=20260401T235959 2026-03-16T22:00:00");
    EXPECT_EQ(edited(weekly, [](Timing &timing) { timing.pattern.weekdays = 0b100; }),
              "wkst=su;freq=weekly;byday=WE 2026-03-18T22:00:00");
    EXPECT_EQ(edited(weekly,
                     [](Timing &timing) {
                         timing.pattern.interval = 2;
                         timing.pattern.weekStart = 5;
                     }),
              "wkst=SA;freq=weekly;byday=MO,TH;interval=2 2026-03-16T22:00:00");
    EXPECT_EQ(edited(weekly, [](Timing &timing) { timing.timeZone.clear(); }).section(' ', 0, 0),
              "wkst=su;freq=weekly;byday=mo,th;interval=1");
}

TEST_F(TimingWriterTest, WhatIsChangedBeginsFromNowOnAndKeepsItsWeeks)
{
    // The second Monday from 2 March on is the 16th, the third one the 30th.
    const Recurrence given = recurrence("FREQ=WEEKLY;INTERVAL=2;BYDAY=MO", "2026-03-02T22:00:00");
    const auto later = [](Timing &timing) { timing.times = {QTime(23, 0)}; };
    EXPECT_EQ(edited(given, later), "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO 2026-03-16T23:00:00");
    clock->jumpTo(utc("2026-03-17T12:00:00Z"));
    EXPECT_EQ(edited(given, later), "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO 2026-03-30T23:00:00");
    EXPECT_EQ(edited(given,
                     [](Timing &timing) {
                         timing.begin = {2026, 3, 24};
                     }),
              "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO 2026-04-06T22:00:00");
}

TEST_F(TimingWriterTest, ADayThatTheRuleLeftToItsStartIsSaidWhenThatMoves)
{
    const Recurrence given = recurrence("FREQ=MONTHLY", "2026-03-31T22:00:00");
    EXPECT_EQ(edited(given,
                     [](Timing &timing) {
                         timing.begin = {2026, 4, 15};
                     }),
              "FREQ=MONTHLY;BYMONTHDAY=31 2026-05-31T22:00:00");
    EXPECT_EQ(edited(recurrence("FREQ=YEARLY"), [](Timing &timing) { timing.times = {QTime(6, 0)}; }),
              "FREQ=YEARLY 2027-03-14T06:00:00"); // this year's was before now
}

TEST_F(TimingWriterTest, NothingTakesPlaceOnAFirstDayThatStaysThatDidNotSoFar)
{
    clock->jumpTo(utc("2026-03-13T06:00:00Z"));
    const Recurrence given = recurrence("FREQ=DAILY;BYHOUR=6,22", "2026-03-14T07:00:00");
    EXPECT_EQ(edited(given,
                     [](Timing &timing) {
                         timing.ending = {Timing::End::AfterTimes, {}, 3};
                     }),
              "FREQ=DAILY;BYHOUR=6,22;COUNT=3 2026-03-14T22:00:00");
}

TEST_F(TimingWriterTest, AnEarlierTimeIsOfTheFirstDayToo)
{
    EXPECT_EQ(edited(recurrence("FREQ=DAILY", "2026-03-20T22:00:00"),
                     [](Timing &timing) { timing.times = {QTime(6, 0)}; }),
              "FREQ=DAILY 2026-03-20T06:00:00");
}

TEST_F(TimingWriterTest, ExceptionsAloneChangeNothingElse)
{
    const Recurrence given = recurrence("FREQ=DAILY;COUNT=10", "2026-03-10T22:00:00", {"2026-03-11T22:00:00"},
                                        {"2026-03-12T06:00:00"});
    EXPECT_EQ(edited(given,
                     [](Timing &timing) {
                         timing.excludedDates += WallTime{{2026, 3, 15}, {22, 0}};
                     }),
              "FREQ=DAILY;COUNT=10 2026-03-10T22:00:00 without 2026-03-11T22:00:00 without "
              "2026-03-15T22:00:00 with 2026-03-12T06:00:00");
    EXPECT_EQ(edited(given, [](Timing &timing) { timing.extraDates.clear(); }),
              "FREQ=DAILY;COUNT=10 2026-03-10T22:00:00 without 2026-03-11T22:00:00");
}

TEST_F(TimingWriterTest, ExceptionsStayWhereSomethingWouldStillTakePlace)
{
    const Recurrence given =
        recurrence("FREQ=DAILY", "2026-03-10T22:00:00", {"2026-03-11T22:00:00", "2026-03-20T22:00:00"});
    EXPECT_EQ(edited(given,
                     [](Timing &timing) {
                         timing.ending = {Timing::End::OnDay, {2026, 4, 1}, 0};
                     }),
              "FREQ=DAILY;UNTIL=20260401T235959 2026-03-14T22:00:00 without 2026-03-20T22:00:00");
    EXPECT_EQ(edited(given, [](Timing &timing) { timing.times = {QTime(21, 0)}; }),
              "FREQ=DAILY 2026-03-14T21:00:00");
}

TEST_F(TimingWriterTest, WhatBecomesARuleForExpertsWithoutAnotherWordStays)
{
    const auto given = schedule(recurrence("FREQ=DAILY", "2026-03-10T22:00:00"));
    const TimingWriter writer(given);
    Timing timing = writer.shown();
    timing.pattern = {.kind = Kind::Expert, .rule = writer.ruleOf(timing)};
    EXPECT_EQ(writer.written(timing).value(), given);
}

TEST_F(TimingWriterTest, NothingStaysOfARuleWithAnotherFrequency)
{
    EXPECT_EQ(edited(recurrence("FREQ=DAILY;BYHOUR=6", "2026-03-14T22:15:00"),
                     [](Timing &timing) {
                         timing.pattern = {.kind = Kind::Distance, .interval = 15};
                         timing.begin = {2026, 3, 20};
                     }),
              "FREQ=MINUTELY;INTERVAL=15 2026-03-20T06:15:00");
}

TEST_F(TimingWriterTest, NothingStaysOfARuleForExpertsThatBecomesAPlainOne)
{
    EXPECT_EQ(edited(recurrence("FREQ=WEEKLY;BYDAY=MO,TU;BYSETPOS=1"),
                     [](Timing &timing) { timing.pattern = {.kind = Kind::Weekly, .weekdays = 0b11}; }),
              "FREQ=WEEKLY;BYDAY=MO,TU 2026-03-16T22:00:00");
}

TEST_F(TimingWriterTest, AnotherZoneBeginsAnewWhateverShowsTheRule)
{
    EXPECT_EQ(edited(recurrence("FREQ=DAILY", "2026-03-10T22:00:00"),
                     [](Timing &timing) {
                         timing.pattern = {.kind = Kind::Expert, .rule = "FREQ=DAILY"};
                         timing.timeZone = "Asia/Tokyo";
                     }),
              "FREQ=DAILY 2026-03-14T22:00:00");
}

TEST_F(TimingWriterTest, WhatTakesPlaceOnceComesToRepeatAndBack)
{
    EXPECT_EQ(made([](Timing &timing) { timing.pattern = {.kind = Kind::Weekdays}; }),
              "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR 2026-03-20T22:00:00");
    EXPECT_EQ(made([](Timing &timing) { timing.pattern = {.kind = Kind::Daily, .interval = 2}; }),
              "FREQ=DAILY;INTERVAL=2 2026-03-20T22:00:00");
    EXPECT_EQ(
        made([](Timing &timing) { timing.pattern = {.kind = Kind::Monthly, .ordinal = -1, .weekday = 4}; }),
        "FREQ=MONTHLY;BYDAY=-1FR 2026-03-27T22:00:00");
    EXPECT_EQ(made([](Timing &timing) { timing.pattern = {.kind = Kind::Monthly, .monthDays = 0b11}; }),
              "FREQ=MONTHLY;BYMONTHDAY=1,-1 2026-03-31T22:00:00");
    EXPECT_EQ(made([](Timing &timing) { timing.pattern = {.kind = Kind::Yearly, .month = 2, .day = 29}; }),
              "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=29 2028-02-29T22:00:00");
    EXPECT_EQ(made([](Timing &timing) {
                  timing.pattern = {.kind = Kind::Distance, .interval = 90};
                  timing.begin = {2026, 3, 14};
                  timing.times = {QTime(0, 0)};
              }),
              "FREQ=MINUTELY;INTERVAL=90 2026-03-14T07:30:00"); // the first step from now on
    EXPECT_EQ(made([](Timing &timing) {
                  timing.begin = {2026, 3, 29};
                  timing.times = {QTime(2, 30)};
              }),
              "2026-03-29T01:30:00Z Europe/Berlin"); // which clocks skip
    const TimingWriter writer(schedule(recurrence("FREQ=DAILY")));
    Timing timing = writer.shown();
    timing.pattern = {};
    const TimingWriter::Schedule once{utc("2026-03-14T21:00:00Z"), zone, {}};
    EXPECT_EQ(writer.written(timing).value(), once);
}

TEST_F(TimingWriterTest, WhatCannotBeIsToldInASentence)
{
    EXPECT_EQ(made([](Timing &timing) { timing.begin = {2026, 3, 13}; }), "That moment is past.");
    EXPECT_EQ(made([](Timing &timing) { timing.pattern = {.kind = Kind::Weekly}; }),
              "Choose a day of the week.");
    EXPECT_EQ(made([](Timing &timing) { timing.pattern = {.kind = Kind::Monthly}; }),
              "Choose a day of the month.");
    EXPECT_EQ(made([](Timing &timing) { timing.timeZone = "Europe/Atlantis"; }),
              "There is no time zone \"Europe/Atlantis\".");
    EXPECT_EQ(made([](Timing &timing) {
                  timing.pattern = {.kind = Kind::Daily};
                  timing.times = {QTime(6, 30), QTime(22, 0)};
              }),
              "One schedule cannot mean 06:30, 22:00 without 06:00, 22:30, too. Let the times have equal "
              "minutes, or add a second schedule.");
    EXPECT_EQ(made([](Timing &timing) {
                  timing.pattern = {.kind = Kind::Daily};
                  timing.ending = {Timing::End::OnDay, {2026, 3, 19}, 0};
              }),
              "It ends before it begins.");
    EXPECT_EQ(edited(recurrence("FREQ=DAILY", "2026-03-10T22:00:00"),
                     [](Timing &timing) {
                         timing.ending = {Timing::End::OnDay, {2026, 3, 13}, 0};
                     }),
              "It ends before it begins."); // from now on
    EXPECT_EQ(edited(recurrence("FREQ=HOURLY"),
                     [](Timing &timing) {
                         timing.excludedDates =
                             QList<WallTime>(Recurrence::maximumDates + 1, {{2026, 3, 20}, {22, 0}});
                     }),
              "There can be at most 1000 exceptions.");
    EXPECT_EQ(made([](Timing &timing) { timing.pattern = {.kind = Kind::Expert, .rule = "FREQ=DAYLY"}; }),
              "In the rule, FREQ=DAYLY has no meaning. An example: FREQ=WEEKLY");
    EXPECT_EQ(made([](Timing &timing) {
                  timing.pattern = {.kind = Kind::Daily};
                  timing.ending = {Timing::End::AfterTimes, {}, 1};
                  timing.excludedDates = {WallTime{{2026, 3, 20}, {22, 0}}};
              }),
              "With these exceptions nothing is left of it.");
}

TEST_F(TimingWriterTest, ARuleThatIsDamagedIsToldThoughNobodyEditsIt)
{
    const TimingWriter writer({utc("2026-03-14T21:00:00Z"), zone, recurrence("FREQ=DAILY;NONSENSE=1")});
    EXPECT_EQ(writer.shown().pattern.kind, Kind::Expert);
    EXPECT_EQ(writer.written(writer.shown()).error().text,
              "The rule has a part that is not known: NONSENSE.");
    // What took place once and is past is nothing wrong.
    const TimingWriter::Schedule past{utc("2026-03-10T21:00:00Z"), zone, {}};
    EXPECT_EQ(TimingWriter(past).written(TimingWriter(past).shown()).value(), past);
}

TEST_F(TimingWriterTest, WhatTakesPlaceOnADayCanBeLeftOut)
{
    const TimingWriter writer(schedule(recurrence("FREQ=DAILY;BYHOUR=6,22", "2026-03-14T06:00:00")));
    const QList<WallTime> both{{{2026, 3, 20}, {6, 0}}, {{2026, 3, 20}, {22, 0}}};
    EXPECT_EQ(writer.occurrencesOn({2026, 3, 20}, writer.shown()), both);
    EXPECT_TRUE(writer.occurrencesOn({2026, 3, 13}, writer.shown()).isEmpty());
}
