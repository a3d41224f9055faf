// SPDX-License-Identifier: MIT
#include "hosts/common/performing/ActionLimits.h"

#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using namespace dozely;

using namespace std::chrono_literals;

class ActionLimitsTest : public HostFixture
{
protected:
    ActionLimits read(const QVariantMap &parameters, const QVariantMap &info = {})
    {
        return ActionLimits::read("Backup", parameters, "/PlugIns/Copy.plugin", info);
    }
    QString onlyLine() const
    {
        EXPECT_EQ(root.logLines().size(), 1);
        return root.logLines().value(0);
    }
};

TEST_F(ActionLimitsTest, AreWhatIsUsualWhereNobodySaysAnything)
{
    const ActionLimits limits = read({{"Program", "/bin/true"}}, {{"WDDaemonModule", "Copy.so"}});
    EXPECT_EQ(limits, ActionLimits{});
    EXPECT_EQ(limits.longest, 0s);
    EXPECT_EQ(limits.timeToEnd, 90s);
    EXPECT_EQ(root.logLines(), QStringList());
}

TEST_F(ActionLimitsTest, AreTheBundlesAndBeforeThemTheSchedules)
{
    const ActionLimits limits =
        read({{"WDActionNice", -5LL}, {"WDActionTimeLimit", 0LL}}, {{"WDActionNice", 10LL},
                                                                    {"WDActionCPUWeight", 20LL},
                                                                    {"WDActionIOWeight", 10'000LL},
                                                                    {"WDActionMemoryLimit", 1LL << 20},
                                                                    {"WDActionTimeLimit", 3600LL},
                                                                    {"WDActionTimeToEnd", 5LL}});
    EXPECT_EQ(limits.program, (ProgramLimits{-5, 20, 10'000, 1 << 20}));
    EXPECT_EQ(limits.longest, 0s) << "a schedule may do without its bundle's";
    EXPECT_EQ(limits.timeToEnd, 5s);
    EXPECT_EQ(root.logLines(), QStringList());
}

TEST_F(ActionLimitsTest, OfASchedulesWrongTypeAreItsBundles)
{
    EXPECT_EQ(read({{"WDActionCPUWeight", "50"}}, {{"WDActionCPUWeight", 20LL}}).program.cpuWeight, 20);
    EXPECT_TRUE(onlyLine().endsWith("Schedule \"Backup\": the value of \"WDActionCPUWeight\" is no integer "
                                    "from 1 to 10000 and is not heeded"))
        << onlyLine().toStdString();
}

TEST_F(ActionLimitsTest, OfABundlesWrongTypeAreNone)
{
    EXPECT_EQ(read({}, {{"WDActionNice", true}}), ActionLimits{});
    EXPECT_TRUE(onlyLine().endsWith(
        "/PlugIns/Copy.plugin: the value of \"WDActionNice\" is no integer from -20 to 19 and is not heeded"))
        << onlyLine().toStdString();
}

TEST_F(ActionLimitsTest, HaveRangesWhoseEndsAreInThem)
{
    const struct {
        const char *key;
        qint64 least;
        qint64 most;
    } ranges[] = {{"WDActionNice", -20, 19},
                  {"WDActionCPUWeight", 1, 10'000},
                  {"WDActionIOWeight", 1, 10'000},
                  {"WDActionMemoryLimit", 1 << 20, std::numeric_limits<qint64>::max()},
                  {"WDActionTimeLimit", 0, 366 * 86'400},
                  {"WDActionTimeToEnd", 0, 86'400}};
    qsizetype refused = 0;
    for (const auto &[key, least, most] : ranges) {
        for (const qint64 fits : {least, most})
            EXPECT_EQ(read({{key, fits}}).toMap().value(key), QVariant(fits)) << key;
        EXPECT_EQ(root.logLines().size(), refused) << key;
        EXPECT_EQ(read({{key, least - 1}}), ActionLimits{}) << key;
        EXPECT_EQ(root.logLines().size(), ++refused) << key;
        if (most == std::numeric_limits<qint64>::max())
            continue;
        EXPECT_EQ(read({{key, most + 1}}), ActionLimits{}) << key;
        EXPECT_EQ(root.logLines().size(), ++refused) << key;
    }
}

TEST_F(ActionLimitsTest, CostOneLineEvenWithABundleNameThatHasTwo)
{
    ActionLimits::read("Two\nlines", {{"WDActionNice", 99LL}}, "", {});
    EXPECT_TRUE(onlyLine().contains("Schedule \"Two lines\""));
}

TEST_F(ActionLimitsTest, TravelAsAMap)
{
    const ActionLimits limits{{7, 1, std::nullopt, 1 << 30}, 20s, 0s};
    const auto back = ActionLimits::fromMap(limits.toMap());
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, limits);
    EXPECT_FALSE(ActionLimits::fromMap({{"WDActionNice", "7"}}));
    EXPECT_FALSE(ActionLimits::fromMap({{"WDActionTimeToEnd", -1LL}}));
}
