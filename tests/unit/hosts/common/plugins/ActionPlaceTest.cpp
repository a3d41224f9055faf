// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionPlace.h"

#include <gtest/gtest.h>

TEST(WhereAnActionBelongs, IsSaidByTheParameterThenByTheBundleThenByItsModules)
{
    const QVariantMap module{{"WDDaemonModule", "x.so"}};
    const QVariantMap saysSession{{"WDDaemonModule", "x.so"}, {"WDActsInUserAgent", true}};
    const QVariantMap saysDaemon{{"WDActsInUserAgent", false}};
    const auto inSession = [](const QVariant &parameter, const QVariantMap &info) {
        return ActionPlace::actsInUserAgent({{"Acts In User Agent", parameter}}, info);
    };
    EXPECT_TRUE(inSession(1LL, module));
    EXPECT_TRUE(inSession("1", saysDaemon));
    EXPECT_TRUE(inSession(true, module));
    EXPECT_FALSE(inSession(0LL, saysSession));
    EXPECT_FALSE(inSession(2LL, saysSession));
    EXPECT_FALSE(inSession((1LL << 32) + 1, saysSession));
    EXPECT_TRUE(ActionPlace::actsInUserAgent({}, saysSession));
    EXPECT_FALSE(ActionPlace::actsInUserAgent({}, saysDaemon));
    EXPECT_FALSE(ActionPlace::actsInUserAgent({}, module));
    EXPECT_TRUE(ActionPlace::actsInUserAgent({}, {}));
}

TEST(WhereAnActionBelongs, IsTheSessionForTrueAndOneAloneAndNeedsAModuleWithAName)
{
    const auto inSession = [](const char *key, const QVariant &value) {
        return ActionPlace::actsInUserAgent({}, {{key, value}});
    };
    EXPECT_TRUE(inSession("WDActsInUserAgent", 1LL));
    EXPECT_TRUE(inSession("WDActsInUserAgent", "1"));
    EXPECT_FALSE(inSession("WDActsInUserAgent", 2LL));
    EXPECT_FALSE(inSession("WDActsInUserAgent", "true"));
    EXPECT_TRUE(inSession("WDDaemonModule", ""));
    EXPECT_FALSE(inSession("WDDaemonModule", "x.so"));
}
