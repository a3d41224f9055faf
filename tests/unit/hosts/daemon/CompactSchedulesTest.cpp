// SPDX-License-Identifier: MIT
#include "hosts/daemon/CompactSchedules.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using CompactSchedulesTest = HostFixture;

TEST_F(CompactSchedulesTest, AreTheSameAfterThawing)
{
    Schedule full = schedule("a");
    full.parameters = {{"Text", "été"},
                       {"Number", 7LL},
                       {"Fraction", 0.5},
                       {"Data", QByteArray(3, 1)},
                       {"Date", noon()},
                       {"Flag", true},
                       {"List", QVariantList{"one", QVariantMap{{"Deep", "two"}}}}};
    full.otherKeys = {{"Colour", "red"}};
    full.recurrence = Recurrence{.rule = "FREQ=DAILY",
                                 .localStart = {{2026, 3, 14}, {6, 55}},
                                 .extraDates = {{{2026, 3, 14}, {7, 0}}},
                                 .excludedDates = {{{2026, 3, 15}, {6, 55}}},
                                 .otherKeys = {{"Colour", "blue"}}};
    full.missedPolicy = MissedPolicy::RunOnce;
    full.missedLimit = std::chrono::seconds(0);
    full.overlapPolicy = OverlapPolicy::Run;
    full.afterAction = AfterAction::PowerOff;
    Schedule bare = schedule("b", noon().addSecs(1));
    bare.owner.reset();
    bare.isEnabled = false;
    bare.parameters.clear();
    const QList<Schedule> schedules{full, bare};
    EXPECT_EQ(CompactSchedules::thaw(CompactSchedules::freeze(schedules)), schedules);
    EXPECT_TRUE(CompactSchedules::thaw(CompactSchedules::freeze({})).isEmpty());
}

TEST_F(CompactSchedulesTest, ShareTheMemoryOfEqualTexts)
{
    Schedule first = schedule("a");
    first.parameters = {{"Arguments", QVariantList{"one", "two"}}};
    Schedule second = schedule("b");
    second.parameters = first.parameters;
    const auto thawed = CompactSchedules::thaw(CompactSchedules::freeze({first, second}));
    ASSERT_EQ(thawed.size(), 2);
    const auto textOf = [&](int i) { return thawed[i].parameters.first().toList().at(1).toString(); };
    EXPECT_EQ(thawed[0].bundlePath.constData(), thawed[1].bundlePath.constData());
    EXPECT_EQ(thawed[0].parameters.firstKey().constData(), thawed[1].parameters.firstKey().constData());
    EXPECT_EQ(textOf(0).constData(), textOf(1).constData());
    EXPECT_EQ(textOf(0), "two");
}
