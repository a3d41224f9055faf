// SPDX-License-Identifier: MIT
#include "hosts/common/words/RuleFaultWords.h"

#include "hosts/common/calendar/RecurrenceRule.h"
#include "hosts/common/calendar/WallTimeSeries.h"

#include <gmock/gmock.h>

using namespace dozely;

namespace
{
/// What is said of a rule that begins on a Saturday.
QString words(const QString &rule)
{
    Recurrence recurrence;
    recurrence.rule = rule;
    recurrence.localStart = WallTime{{2026, 3, 14}, {22, 0}};
    const auto series = WallTimeSeries::of(recurrence, QTimeZone::utc());
    if (!series)
        return RuleFaultWords::of(series.error());
    return {};
}
} // namespace

TEST(RuleFaultWords, HasASentenceForEveryFaultOfARule)
{
    const QList<std::pair<QString, QString>> cases{
        {"FREQ=DAILY; COUNT=1", "The rule has blanks or other characters that no rule has."},
        {"FREQ=DAILY;", "The rule has an empty part."},
        {"FREQ=DAILY;BYNIGHT=1", "The rule has a part that is not known: BYNIGHT."},
        {"FREQ=DAILY;FREQ=DAILY", "The rule has FREQ twice."},
        {"FREQ=DAILY;COUNT=", "COUNT of the rule has no value."},
        {"FREQ=DAILY;COUNT=0", "In the rule, COUNT=0 has no meaning. An example: COUNT=10"},
        {"FREQ=DAILY;UNTIL=1", "In the rule, UNTIL=1 has no meaning. An example: UNTIL=20260314T065500Z"},
        {"FREQ=DAILY;SKIP=OMIT", "The rule has SKIP: no other calendars than the Gregorian are supported."},
        {"BYDAY=MO", "The rule has no FREQ."},
        {"FREQ=DAILY;COUNT=1;UNTIL=20260314", "The rule has both COUNT and UNTIL."},
        {"FREQ=DAILY;BYDAY=2MO", "A number in BYDAY needs FREQ=MONTHLY or FREQ=YEARLY."},
        {"FREQ=YEARLY;BYDAY=2MO;BYWEEKNO=1", "A number in BYDAY cannot be beside BYWEEKNO."},
        {"FREQ=WEEKLY;BYMONTHDAY=1", "BYMONTHDAY cannot be beside FREQ=WEEKLY."},
        {"FREQ=DAILY;BYYEARDAY=1", "BYYEARDAY cannot be beside FREQ=DAILY, WEEKLY or MONTHLY."},
        {"FREQ=DAILY;BYWEEKNO=1", "BYWEEKNO needs FREQ=YEARLY."},
        {"FREQ=DAILY;BYSETPOS=1", "BYSETPOS needs another BY part."},
        {"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30", "The rule gives no date within 100 years from its start."},
    };
    for (const auto &[rule, sentence] : cases)
        EXPECT_EQ(words(rule).toStdString(), sentence.toStdString()) << rule.toStdString();
}

TEST(RuleFaultWords, EveryPartHasAnExampleThatCanBeRead)
{
    for (const QString part : {"FREQ", "INTERVAL", "COUNT", "UNTIL", "WKST", "BYSECOND", "BYMINUTE", "BYHOUR",
                               "BYDAY", "BYMONTHDAY", "BYYEARDAY", "BYWEEKNO", "BYMONTH", "BYSETPOS"}) {
        const QString said =
            words(part == "FREQ" ? QString("FREQ=X") : QString("FREQ=YEARLY;%1=X").arg(part));
        const QString example = said.section("An example: ", 1);
        ASSERT_TRUE(example.startsWith(part + '=')) << said.toStdString();
        const QString more = part == "FREQ"       ? QString()
                             : part == "BYSETPOS" ? QString("FREQ=YEARLY;BYMONTH=1;")
                                                  : QString("FREQ=YEARLY;");
        EXPECT_TRUE(RecurrenceRule::parse(more + example).ok()) << example.toStdString();
    }
}

TEST(RuleFaultWords, SaysAnythingElseInItsOwnWords)
{
    EXPECT_EQ(RuleFaultWords::of({"the time zone is not known"}),
              "The rule cannot be used: the time zone is not known.");
}
