// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionPlace.h"

#include "support/PrintTo.h"

#include <QDateTime>

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

TEST(WhereAnActionBelongs, IsNoPlaceForABundleWithoutTheModuleForIt)
{
    EXPECT_EQ(ActionPlace::reasonAgainst(false, {{"WDUserAgentModule", "x.so"}}),
              "it names no \"WDDaemonModule\"");
    EXPECT_EQ(ActionPlace::reasonAgainst(true, {{"WDDaemonModule", "x.so"}}),
              "it names no \"WDUserAgentModule\"");
    EXPECT_EQ(ActionPlace::reasonAgainst(true, {}), "it names no \"WDUserAgentModule\"");
    EXPECT_FALSE(ActionPlace::reasonAgainst(false, {{"WDDaemonModule", "x.so"}}));
    EXPECT_FALSE(ActionPlace::reasonAgainst(true, {{"WDUserAgentModule", "x.so"}}));
    const QVariantMap alertAlone{
        {"WDDaemonModule", "x.so"}, {"WDUserAgentModule", "x.so"}, {"WDActsInDaemonOnly", true}};
    EXPECT_EQ(ActionPlace::reasonAgainst(true, alertAlone), "it acts in the daemon alone");
    EXPECT_FALSE(ActionPlace::reasonAgainst(false, alertAlone));
}

TEST(WhereAnActionBelongs, IsNotKnownWhereTheBundleSaysNeitherYesNorNo)
{
    const auto reason = [](const QVariant &said) {
        return ActionPlace::reasonAgainst(false, {{"WDDaemonModule", "x.so"}, {"WDActsInUserAgent", said}});
    };
    for (const QVariant &odd : {QVariant(QVariantList{1}), QVariant(QVariantMap()), QVariant(QByteArray("1")),
                                QVariant(QDateTime::currentDateTimeUtc()), QVariant(0.5)})
        EXPECT_EQ(reason(odd), "its \"WDActsInUserAgent\" is neither true nor false") << odd.typeName();
    for (const QVariant &good : {QVariant(true), QVariant(0LL), QVariant("1")})
        EXPECT_FALSE(reason(good)) << good.typeName();
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
