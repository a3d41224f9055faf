// SPDX-License-Identifier: MIT
#include "hosts/application/history/OutcomeWords.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
const QLocale british("en_GB");
const QDateTime now({2026, 3, 14}, {6, 0}, Qt::UTC);

class OutcomeWordsTest : public testing::Test
{
protected:
    OutcomeWordsTest() { qputenv("TZ", "Europe/Berlin"); }

    static QString state(const QVariantMap &map)
    {
        return OutcomeWords::state(HistoryOutcome::fromMap(map), now, british);
    }
    static QString lateness(qint64 milliseconds)
    {
        return OutcomeWords::lateness(HistoryOutcome::fromMap({{"lateness", milliseconds}}), british);
    }
};
} // namespace

TEST_F(OutcomeWordsTest, AllThatTheDaemonTellsIsRead)
{
    const auto outcome = HistoryOutcome::fromMap({{"identifier", "A"},
                                                  {"name", "Backup"},
                                                  {"date", "2026-03-14T04:00:00Z"},
                                                  {"state", "failed"},
                                                  {"begun", "2026-03-14T05:00:00.500+01:00"},
                                                  {"ended", "2026-03-14T04:01:00Z"},
                                                  {"lateness", qlonglong{500}},
                                                  {"exitStatus", 3},
                                                  {"failure", "it died"}});
    EXPECT_EQ(outcome.identifier, "A");
    EXPECT_EQ(outcome.date, QDateTime({2026, 3, 14}, {4, 0}, Qt::UTC));
    EXPECT_EQ(outcome.begun, QDateTime({2026, 3, 14}, {4, 0, 0, 500}, Qt::UTC));
    EXPECT_EQ(outcome.lateness, 500);
    EXPECT_EQ(outcome.exitStatus, 3);
    EXPECT_TRUE(outcome.isTrouble());
    const auto nothing =
        HistoryOutcome::fromMap({{"date", 3}, {"lateness", "x"}, {"exitStatus", QVariantList()}});
    EXPECT_FALSE(nothing.date.isValid());
    EXPECT_FALSE(nothing.lateness || nothing.exitStatus || nothing.isTrouble());
}

TEST_F(OutcomeWordsTest, EachStateHasWords)
{
    for (const auto &[state, text] : {std::pair("asked", "asked for"),
                                      {"begun", "at work"},
                                      {"done", "done"},
                                      {"failed", "failed"},
                                      {"skipped", "skipped, too late"},
                                      {"missed", "missed"},
                                      {"postponed", "put off"},
                                      {"not performed", "could not be started"},
                                      {"removed", "cancelled"},
                                      {"unknown", "not known"},
                                      {"interrupted", "interrupted"},
                                      {"of the future", "of the future"}})
        EXPECT_EQ(OutcomeWordsTest::state({{"state", state}}), text);
}

TEST_F(OutcomeWordsTest, RunsAreCountedAndHaveBothEnds)
{
    QVariantMap run{{"state", "missed"},
                    {"first", "2026-03-13T04:00:00Z"},
                    {"date", "2026-03-14T04:00:00Z"},
                    {"count", qulonglong{1007}}};
    EXPECT_EQ(state(run), "missed, 1,007 times");
    run["isCountExact"] = false;
    EXPECT_EQ(state(run), "missed, at least 1,007 times");
    EXPECT_EQ(OutcomeWords::when(HistoryOutcome::fromMap(run), now, british),
              "yesterday 05:00 to today 05:00");
}

TEST_F(OutcomeWordsTest, WhatIsPutOffSaysUntilWhen)
{
    EXPECT_EQ(state({{"state", "postponed"}, {"postponedTo", "2026-03-14T20:00:00Z"}}),
              "put off until today 21:00");
    EXPECT_EQ(state({{"state", "done"}, {"postponedTo", "2026-03-14T20:00:00Z"}}), "done");
}

TEST_F(OutcomeWordsTest, LatenessIsInTheUnitsThatMatter)
{
    EXPECT_EQ(OutcomeWords::lateness({}, british), "");
    EXPECT_EQ(lateness(0), "on time");
    EXPECT_EQ(lateness(999), "on time");
    EXPECT_EQ(lateness(1000), "1 s late");
    EXPECT_EQ(lateness(59'999), "59 s late");
    EXPECT_EQ(lateness(60'000), "1 min late");
    EXPECT_EQ(lateness(3'600'000), "1 h 0 min late");
    EXPECT_EQ(lateness(25 * 3'600'000), "1 d 1 h late");
}

TEST_F(OutcomeWordsTest, WhyIsTheClauseOrTheExitStatus)
{
    EXPECT_EQ(OutcomeWords::failure(HistoryOutcome::fromMap({{"failure", "it\ndied"}, {"exitStatus", 3}})),
              "it died");
    EXPECT_EQ(OutcomeWords::failure(HistoryOutcome::fromMap({{"exitStatus", 3}})), "exit status 3");
    EXPECT_EQ(OutcomeWords::failure(HistoryOutcome::fromMap({{"exitStatus", 0}})), "");
}
