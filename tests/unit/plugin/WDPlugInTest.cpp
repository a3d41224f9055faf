// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "PlugInFixture.h"

#include <QTimeZone>

namespace
{
using WDPlugInTest = PlugInFixture;

qint64 anticipation(const QVariantMap &parameters)
{
    WDPlugIn plugIn;
    plugIn.setParameters(parameters);
    return plugIn.timeBeforeSelfAnticipation();
}
} // namespace

TEST_F(WDPlugInTest, BeginsWithItsClassesBundleEmptyParametersAndNoDate)
{
    const WDPlugIn plugIn;
    EXPECT_EQ(plugIn.bundle(), NSBundle::kitBundle()); // which holds the base class
    ASSERT_TRUE(plugIn.parameters());
    EXPECT_TRUE(plugIn.parameters()->isEmpty());
    EXPECT_FALSE(plugIn.calendarDate().isValid());
}

TEST_F(WDPlugInTest, TakesAnotherBundleFromTheHost)
{
    WDPlugIn plugIn;
    const auto bundle = makeBundle("Test", {{"CFBundleIdentifier", "com.dozely.Test"}});
    plugIn.setBundle(bundle);
    EXPECT_EQ(plugIn.bundle(), bundle);
    EXPECT_EQ(plugIn.pluginIdentifier(), "com.dozely.Test");
}

TEST_F(WDPlugInTest, HasNoIdentifierWhenTheBundleHasNone)
{
    WDPlugIn plugIn;
    plugIn.setBundle(makeBundle("Test", {}));
    EXPECT_TRUE(plugIn.pluginIdentifier().isNull());
    plugIn.setBundle(nullptr);
    EXPECT_TRUE(plugIn.pluginIdentifier().isNull());
}

TEST_F(WDPlugInTest, IsNamedPluginNameWithoutALocalisation)
{
    EXPECT_EQ(WDPlugIn().pluginName(), "Plugin Name");
}

TEST_F(WDPlugInTest, HearsOfItsParametersByOneOperationHoweverTheyAreGiven)
{
    class Listening : public WDPlugIn
    {
    public:
        using WDPlugIn::setParameters;
        void setParameters(const std::shared_ptr<const QVariantMap> &parameters) override
        {
            WDPlugIn::setParameters(parameters);
            heard = parameters ? *parameters : QVariantMap();
        }
        QVariantMap heard;
    };
    const QVariantMap given{{"Alert", 1}};
    Listening plugIn;
    plugIn.setParameters(given);
    EXPECT_EQ(plugIn.heard, given);
    EXPECT_EQ(*plugIn.parameters(), given);
}

TEST_F(WDPlugInTest, StoresACopyOfItsParametersThatIsAnotherObject)
{
    WDPlugIn plugIn;
    const auto given = std::make_shared<QVariantMap>(QVariantMap{{"Alert", 1}});
    plugIn.setParameters(given);
    EXPECT_NE(plugIn.parameters(), given);
    EXPECT_EQ(*plugIn.parameters(), *given);
    given->insert("Alert", 0);
    EXPECT_EQ(plugIn.parameters()->value("Alert"), QVariant(1));
}

TEST_F(WDPlugInTest, HandsOutItsParametersThemselvesToBeChanged)
{
    WDPlugIn plugIn;
    plugIn.setParameters(QVariantMap{{"Alert", 1}});
    EXPECT_EQ(plugIn.parameters(), plugIn.parameters());
    plugIn.parameters()->insert("Delay before alert", 60);
    EXPECT_EQ(plugIn.timeBeforeSelfAnticipation(), 60);
}

TEST_F(WDPlugInTest, HasNoParametersAfterNothingWasSet)
{
    WDPlugIn plugIn;
    plugIn.setParameters(std::shared_ptr<const QVariantMap>());
    EXPECT_FALSE(plugIn.parameters());
    EXPECT_EQ(plugIn.timeBeforeSelfAnticipation(), -1);
}

TEST_F(WDPlugInTest, ReadsEachParameterAsZeroAfterNothingWasSet)
{
    class Reading : public WDPlugIn
    {
    public:
        using WDPlugIn::integerParameter;
        using WDPlugIn::longIntegerParameter;
    };
    Reading plugIn;
    plugIn.setParameters(std::shared_ptr<const QVariantMap>());
    EXPECT_EQ(plugIn.integerParameter("Delay before alert"), 0);
    EXPECT_EQ(plugIn.longIntegerParameter("Alert"), 0);
}

TEST_F(WDPlugInTest, StoresTheDateWithItsZone)
{
    WDPlugIn plugIn;
    const QDateTime date({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris"));
    plugIn.setCalendarDate(date);
    EXPECT_EQ(plugIn.calendarDate(), date);
    EXPECT_EQ(plugIn.calendarDate().timeZone().id(), "Europe/Paris");
}

TEST_F(WDPlugInTest, WantsNoAlertWithoutAlertWhateverTheDelayHolds)
{
    EXPECT_EQ(anticipation({}), -1);
    EXPECT_EQ(anticipation({{"Delay before alert", 30}}), -1);
    EXPECT_EQ(anticipation({{"Alert", 0}, {"Delay before alert", 30}}), -1);
    EXPECT_EQ(anticipation({{"Alert", "no"}, {"Delay before alert", 30}}), -1);
}

TEST_F(WDPlugInTest, WantsTheAlertAtTheTimeOfTheActionWithoutADelay)
{
    EXPECT_EQ(anticipation({{"Alert", 1}}), 0);
}

TEST_F(WDPlugInTest, WantsNoAlertWithADelayOfMinusOne)
{
    EXPECT_EQ(anticipation({{"Alert", 1}, {"Delay before alert", -1}}), -1);
}

TEST_F(WDPlugInTest, ReadsADelayGivenAsAString)
{
    EXPECT_EQ(anticipation({{"Alert", 1}, {"Delay before alert", "15"}}), 15);
}

TEST_F(WDPlugInTest, ReturnsADelayUncheckedAndWithItsSign)
{
    EXPECT_EQ(anticipation({{"Alert", 1}, {"Delay before alert", -30}}), -30);
    EXPECT_EQ(anticipation({{"Alert", 2}, {"Delay before alert", 86'400}}), 86'400);
    EXPECT_EQ(anticipation({{"Alert", -1}, {"Delay before alert", 5}}), 5);
    EXPECT_EQ(anticipation({{"Alert", true}, {"Delay before alert", 5}}), 5);
}

TEST_F(WDPlugInTest, HasATimeOutOfItsClass)
{
    EXPECT_EQ(WDPlugIn().timeOut(), -180);
    EXPECT_EQ(WDDaemonPlugIn().timeOut(), -5);
    EXPECT_EQ(WDUserAgentPlugIn().timeOut(), -180);
}
