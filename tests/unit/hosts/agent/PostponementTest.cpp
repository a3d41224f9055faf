// SPDX-License-Identifier: MIT
#include "hosts/agent/Postponement.h"

#include "DozelyKit/core/foundation/NSNotification.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
const QDateTime date({2026, 3, 14}, {12, 0}, Qt::UTC);
const QVariantMap occurrence{{"Schedule Bundle Path", "/Probe.plugin"}, {"Schedule Date", date}};

QVariantMap with(const QString &key, const QVariant &value)
{
    QVariantMap map = occurrence;
    map.insert(key, value);
    return map;
}
} // namespace

TEST(Postponement, IsCountedFromNow)
{
    const QDateTime now = date.addSecs(-60);
    const auto soon = Postponements::order(Postponement::TenMinutes, "/Probe.plugin", date, now);
    EXPECT_EQ(soon.name(), "DaemonMustPostponeEvent");
    EXPECT_EQ(soon.object(), "com.dozely.Daemon");
    EXPECT_EQ(soon.userInfo(), with("Schedule Delay", 540LL)) << "behind its date";
    const auto later = Postponements::order(Postponement::Hour, "/Probe.plugin", date, now);
    EXPECT_EQ(later.name(), "DaemonMustPostponeEvent");
    EXPECT_EQ(later.userInfo(), with("Schedule Delay", 3540LL));
}

TEST(Postponement, IsCountedFromADateThatIsFartherAway)
{
    const auto order =
        Postponements::order(Postponement::TenMinutes, "/Probe.plugin", date, date.addSecs(-600));
    EXPECT_EQ(order.userInfo(), with("Schedule Delay", 600LL));
    const auto late = Postponements::order(Postponement::TenMinutes, "/Probe.plugin", date, date.addSecs(5));
    EXPECT_EQ(late.userInfo(), with("Schedule Delay", 600LL)) << "nor from one that is past";
}

TEST(Postponement, OfADayIsAskedForByItsFlag)
{
    const auto order =
        Postponements::order(Postponement::SkipToday, "/Probe.plugin", date, date.addSecs(-60));
    EXPECT_EQ(order.name(), "DaemonMustSkipEvent");
    EXPECT_EQ(order.object(), "com.dozely.Daemon");
    EXPECT_EQ(order.userInfo(), with("Schedule Whole Day", true));
}
