// SPDX-License-Identifier: MIT
#include "unit/hosts/application/when/TimingFixture.h"

#include "hosts/common/calendar/RuleParts.h"

#include <algorithm>
#include <random>

using namespace dozely;

/// Rules that nobody has thought of, the same in each run.
class RandomRulesTest : public TimingFixture
{
protected:
    RandomRulesTest() { clock->jumpTo(clock->currentDate().addMSecs(500)); } // at which nothing takes place

    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_generator); }
    bool rarely(int oneIn) { return upTo(oneIn - 1) == 0; }

    QString numbers(int least, int most)
    {
        QStringList list;
        for (int i = upTo(2); i >= 0; --i)
            list += QString::number(least + upTo(most - least));
        return list.join(',');
    }
    QString weekdays(bool haveOrdinals)
    {
        static const QStringList names{"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
        QStringList list;
        for (int i = upTo(4); i >= 0; --i)
            list += (haveOrdinals ? QString::number(rarely(3) ? -1 : 1 + upTo(4)) : QString()) +
                    names.at(upTo(6));
        return list.join(',');
    }
    QString rule()
    {
        static const QStringList frequencies{"HOURLY", "MINUTELY", "DAILY", "WEEKLY", "MONTHLY", "YEARLY"};
        const QString frequency = frequencies.at(upTo(5));
        const bool isLong = frequency == "MONTHLY" || frequency == "YEARLY";
        QStringList parts{"FREQ=" + frequency};
        const auto add = [&](const char *name, int oneIn, const QString &value) {
            if (rarely(oneIn))
                parts += QString("%1=%2").arg(name, value);
        };
        add("INTERVAL", 2, numbers(1, 3).section(',', 0, 0));
        add("BYDAY", 2, weekdays(isLong && rarely(2)));
        add("BYMONTHDAY", isLong ? 2 : 8, rarely(3) ? QString("-1") : numbers(1, 31));
        add("BYMONTH", frequency == "YEARLY" ? 2 : 8, numbers(1, 12));
        add("BYHOUR", 4, numbers(0, 23));
        add("BYMINUTE", 6, numbers(0, 59));
        add("BYSECOND", 10, numbers(0, 59));
        add("BYSETPOS", 10, "1");
        add("WKST", 3, weekdays(false).section(',', 0, 0));
        if (rarely(3))
            parts += rarely(2) ? "COUNT=" + QString::number(1 + upTo(50)) : "UNTIL=20270131T235959";
        std::shuffle(parts.begin(), parts.end(), m_generator);
        return rarely(8) ? parts.join(';').toLower() : parts.join(';');
    }
    QString start()
    {
        const QDateTime first({2026, 1, 1}, {0, 0}, Qt::UTC);
        const qint64 step = rarely(4) ? 1 : 60 * 15;
        return WallTime::of(first.addSecs(upTo(200 * 24 * 4) * 900 + upTo(59) * step % 900)).toString();
    }
    /// Some rule that gives something from now on.
    Recurrence usefulRule()
    {
        for (;;) {
            const Recurrence made = recurrence(rule(), start());
            const auto all = OccurrenceSeries::of(made, QTimeZone(zone));
            if (all && all->after(clock->currentDate()))
                return made;
        }
    }

private:
    std::mt19937 m_generator{42};
};

TEST_F(RandomRulesTest, ComeBackToTheLetterAndAreShownForWhatTheyMean)
{
    int plain = 0;
    for (int i = 0; i < 2000; ++i) {
        const Recurrence given = usefulRule();
        const TimingWriter writer(schedule(given));
        const Timing shown = writer.shown();
        ASSERT_EQ(writer.written(shown)->recurrence, given) << qPrintable(given.rule);
        ASSERT_EQ(writer.ruleOf(shown), given.rule);
        if (shown.pattern.kind == Kind::Expert)
            continue;
        ++plain;
        // Written by one that knows only what is shown of it. What its own start cut off is not there.
        Recurrence again = given;
        again.rule = TimingWriter({utc("2026-03-14T21:00:00Z"), zone, {}}).ruleOf(shown);
        again.localStart = {shown.begin, shown.times.constFirst()};
        const bool isCut = again.localStart < given.localStart;
        if (isCut && shown.ending.end == Timing::End::AfterTimes)
            continue; // it would be counted from what was cut off
        const QList<QDateTime> dates = next(given);
        QList<QDateTime> datesAgain = next(again);
        while (isCut && !datesAgain.isEmpty() && datesAgain.constFirst() < dates.constFirst())
            datesAgain.removeFirst();
        const qsizetype compared = isCut ? std::min(dates.size(), datesAgain.size()) : dates.size();
        ASSERT_EQ(datesAgain.mid(0, compared), dates.mid(0, compared))
            << qPrintable(given.rule + " from " + given.localStart.toString() + " became " + again.rule);
    }
    EXPECT_GT(plain, 300);
}

TEST_F(RandomRulesTest, KeepTheirDatesWhenOnlyTheirEndIsEdited)
{
    constexpr int count = 7;
    int plain = 0;
    for (int i = 0; i < 2000; ++i) {
        const Recurrence given = usefulRule();
        const TimingWriter writer(schedule(given));
        Timing timing = writer.shown();
        if (timing.pattern.kind == Kind::Expert)
            continue;
        ++plain;
        timing.ending = {Timing::End::AfterTimes, {}, count};
        RuleParts endless(given.rule);
        endless.remove("COUNT");
        endless.remove("UNTIL");
        Recurrence wanted = given;
        wanted.rule = endless.toString();
        const auto written = writer.written(timing);
        ASSERT_TRUE(written) << qPrintable(given.rule + ": " + written.error().text);
        if (timing == writer.shown())
            continue;
        ASSERT_EQ(next(*written->recurrence), next(wanted, count))
            << qPrintable(given.rule + " from " + given.localStart.toString());
    }
    EXPECT_GT(plain, 300);
}

TEST_F(RandomRulesTest, KeepTheirDaysWhenOnlyTheirTimeIsEdited)
{
    int plain = 0;
    for (int i = 0; i < 2000; ++i) {
        const Recurrence given = usefulRule();
        const TimingWriter writer(schedule(given));
        Timing timing = writer.shown();
        const bool isCounted =
            timing.ending.end != Timing::End::Never; // from now on, and up to a time of day
        if (!timing.isOfDays() || isCounted || timing.times.size() > 1 ||
            timing.times.constFirst() == QTime(12, 0))
            continue;
        ++plain;
        timing.times = {QTime(12, 0)};
        const auto written = writer.written(timing);
        ASSERT_TRUE(written) << qPrintable(given.rule + ": " + written.error().text);
        const auto daysOf = [](const QList<QDateTime> &dates) {
            QStringList days;
            for (const QDateTime &date : dates)
                days += date.toTimeZone(QTimeZone(zone)).date().toString(Qt::ISODate);
            return days;
        };
        QStringList wanted = daysOf(next(given, 20));
        QStringList days = daysOf(next(*written->recurrence, 20));
        // Today, and the first day, may have one of the two times only.
        for (const QString &day : {QString("2026-03-14"), given.localStart.day.toString(Qt::ISODate)}) {
            wanted.removeAll(day);
            days.removeAll(day);
        }
        const qsizetype compared = std::min(wanted.size(), days.size());
        ASSERT_GE(compared, 18);
        ASSERT_EQ(days.mid(0, compared), wanted.mid(0, compared)) << qPrintable(
            given.rule + " from " + given.localStart.toString() + " became " + written->recurrence->rule);
    }
    EXPECT_GT(plain, 150);
}
