// SPDX-License-Identifier: MIT
#include "hosts/application/book/ScheduleTimes.h"

#include <QTimeZone>

#include <gtest/gtest.h>

namespace
{
QVariantMap values()
{
    return {{"date", "2026-03-14T05:55:00Z"},
            {"timeZone", "Europe/Berlin"},
            {"repeats",
             QVariantMap{{"rule", "FREQ=DAILY"},
                         {"localStart", "2026-03-14T06:55:00"},
                         {"extraDates", QStringList{"2026-03-20T12:00:00"}},
                         {"excludedDates", QStringList{"2026-03-15T06:55:00", "2026-03-16T06:55:00"}}}}};
}
} // namespace

TEST(ScheduleTimes, ComeBackAsTheyWereGiven)
{
    const ScheduleTimes times = ScheduleTimes::of(values());
    EXPECT_EQ(times.date, QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC));
    EXPECT_EQ(times.timeZone, "Europe/Berlin");
    ASSERT_TRUE(times.recurrence);
    EXPECT_EQ(times.recurrence->rule, "FREQ=DAILY");
    ASSERT_EQ(times.recurrence->extraDates.size(), 1);
    EXPECT_EQ(times.recurrence->extraDates[0].toString(), "2026-03-20T12:00:00");
    EXPECT_EQ(times.recurrence->excludedDates.size(), 2);
    EXPECT_EQ(times.toValues(), values());
    EXPECT_EQ(ScheduleTimes::of(times.toValues()), times);
}

TEST(ScheduleTimes, OfWhatTakesPlaceOnceHaveNoRule)
{
    QVariantMap once = values();
    once.remove("repeats");
    const ScheduleTimes times = ScheduleTimes::of(once);
    EXPECT_FALSE(times.recurrence);
    EXPECT_FALSE(times.toValues().value("repeats").isValid());
    EXPECT_TRUE(times.toValues().contains("repeats")) << "so that an old rule goes";
}

TEST(ScheduleTimes, LeaveOutWhatIsNoTime)
{
    QVariantMap odd = values();
    odd["repeats"] = QVariantMap{{"rule", "FREQ=DAILY"},
                                 {"localStart", "2026-03-14T06:55:00"},
                                 {"excludedDates", QStringList{"never", "2026-03-16T06:55:00"}}};
    const ScheduleTimes times = ScheduleTimes::of(odd);
    ASSERT_TRUE(times.recurrence);
    EXPECT_EQ(times.recurrence->excludedDates.size(), 1);
    EXPECT_TRUE(times.recurrence->extraDates.isEmpty());
    EXPECT_FALSE(times.toValues()["repeats"].toMap().contains("extraDates"));
}
