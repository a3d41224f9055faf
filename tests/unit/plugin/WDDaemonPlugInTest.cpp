// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "OrderFixture.h"

#include "DozelyKit/core/foundation/NSException.h"

using namespace dozely;

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

class WDDaemonPlugInTest : public OrderFixture
{
protected:
    WDDaemonPlugInTest() { plugIn.setBundle(bundle); }

    WDDaemonPlugIn plugIn;
};

bool needsWakeUp(const QVariant &value)
{
    WDDaemonPlugIn plugIn;
    plugIn.setParameters(QVariantMap{{"Needs Wake Up", value}});
    return plugIn.needsWakeUp();
}

bool needsStartup(const QVariant &value)
{
    WDDaemonPlugIn plugIn;
    plugIn.setParameters(QVariantMap{{"Needs Startup", value}});
    return plugIn.needsStartup();
}
} // namespace

TEST_F(WDDaemonPlugInTest, NeedsWakeUpForExactlyOneNotForTwoOrAStringOfLetters)
{
    EXPECT_FALSE(WDDaemonPlugIn().needsWakeUp());
    EXPECT_TRUE(needsWakeUp(1));
    EXPECT_TRUE(needsWakeUp(true));
    EXPECT_TRUE(needsWakeUp("1"));
    for (const QVariant &value : {QVariant(0), QVariant(2), QVariant(-1), QVariant("yes"),
                                  QVariant(QVariantList{1}), QVariant((1LL << 32) + 1)})
        EXPECT_FALSE(needsWakeUp(value)) << qPrintable(value.toString());
}

TEST_F(WDDaemonPlugInTest, NeedsStartupForExactlyOneAStringWithThatDigitIncluded)
{
    EXPECT_FALSE(WDDaemonPlugIn().needsStartup());
    EXPECT_TRUE(needsStartup("1"));
    EXPECT_TRUE(needsStartup(1));
    for (const QVariant &value :
         {QVariant(0), QVariant(2), QVariant("2"), QVariant("on"), QVariant((1LL << 32) + 1)})
        EXPECT_FALSE(needsStartup(value)) << qPrintable(value.toString());
}

TEST_F(WDDaemonPlugInTest, NeedsNothingWithoutParameters)
{
    plugIn.setParameters(std::shared_ptr<const QVariantMap>());
    EXPECT_FALSE(plugIn.needsWakeUp());
    EXPECT_FALSE(plugIn.needsStartup());
}

TEST_F(WDDaemonPlugInTest, ActsInNobodysAgentWithoutADateAndLogsNothing)
{
    publishAs("Dozely Agent");
    EXPECT_FALSE(plugIn.actInUserAgentNow());
    EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(WDDaemonPlugInTest, AnticipatesNothingWithoutADateAndLogsThat)
{
    publishAs("Dozely Agent");
    EXPECT_FALSE(plugIn.anticipateInUserAgentNow());
    EXPECT_THAT(loggedTexts(), ElementsAre("anticipateInUserAgentNow impossible"));
}

TEST_F(WDDaemonPlugInTest, HandsTheOccurrenceToTheAgentOfTheLoggedInUser)
{
    publishAs("Dozely Agent");
    observe("UserAgentMustActEvent", "com.dozely.UserAgent");
    plugIn.setCalendarDate(date);
    plugIn.setParameters(QVariantMap{{"Command", "true"}, {"Alert", 1}});
    EXPECT_TRUE(plugIn.actInUserAgentNow());

    const NSNotification event = arrived();
    EXPECT_EQ(event.name(), "UserAgentMustActEvent");
    EXPECT_EQ(event.object(), QVariant("com.dozely.UserAgent"));
    EXPECT_EQ(event.userInfo().keys(),
              QStringList({"Schedule Bundle Path", "Schedule Date", "Schedule Parameters"}));
    EXPECT_EQ(event.userInfo()["Schedule Parameters"].toMap(), *plugIn.parameters());
    EXPECT_EQ(event.userInfo()["Schedule Date"].toDateTime(), date);
    EXPECT_EQ(event.userInfo()["Schedule Date"].toDateTime().timeZone().id(), "Europe/Paris");
    EXPECT_EQ(event.userInfo()["Schedule Bundle Path"], QVariant(pathOf("Test")));
    EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(WDDaemonPlugInTest, SendsAnEmptyDictionaryWhenThereAreNoParameters)
{
    publishAs("Dozely Agent");
    observe("UserAgentMustActEvent", "com.dozely.UserAgent");
    plugIn.setCalendarDate(date);
    plugIn.setParameters(std::shared_ptr<const QVariantMap>());
    EXPECT_TRUE(plugIn.actInUserAgentNow());
    const QVariant parameters = arrived().userInfo()["Schedule Parameters"];
    EXPECT_EQ(parameters.typeId(), QMetaType::QVariantMap);
    EXPECT_TRUE(parameters.toMap().isEmpty());
}

TEST_F(WDDaemonPlugInTest, AnnouncesTheOccurrenceToTheAgentOfTheLoggedInUser)
{
    publishAs("Dozely Agent");
    observe("UserAgentMustAnticipateEvent", "com.dozely.UserAgent");
    plugIn.setCalendarDate(date);
    plugIn.setParameters(QVariantMap{{"Alert", 1}});
    EXPECT_TRUE(plugIn.anticipateInUserAgentNow());

    const NSNotification event = arrived();
    EXPECT_EQ(event.object(), QVariant("com.dozely.UserAgent"));
    EXPECT_EQ(event.userInfo(), (QVariantMap{{"Schedule Parameters", QVariantMap{{"Alert", 1}}},
                                             {"Schedule Date", date},
                                             {"Schedule Bundle Path", pathOf("Test")}}));
    EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(WDDaemonPlugInTest, RaisesWhenItAnticipatesWithoutParameters)
{
    publishAs("Dozely Agent");
    plugIn.setCalendarDate(date);
    plugIn.setParameters(std::shared_ptr<const QVariantMap>());
    try {
        plugIn.anticipateInUserAgentNow();
        FAIL() << "nothing was raised";
    } catch (const NSException &exception) {
        EXPECT_EQ(exception.name(), NSInvalidArgumentException);
    }
    // Without a date there is nothing to build and nothing to raise.
    plugIn.setCalendarDate({});
    EXPECT_FALSE(plugIn.anticipateInUserAgentNow());
}

TEST_F(WDDaemonPlugInTest, RaisesWhenItHasNoBundleToName)
{
    publishAs("Dozely Agent");
    plugIn.setCalendarDate(date);
    plugIn.setBundle(nullptr);
    EXPECT_THROW(plugIn.actInUserAgentNow(), NSException);
}

TEST_F(WDDaemonPlugInTest, FailsSilentlyToActWhenTheLoggedInUserHasNoAgent)
{
    publishAs("Dozely Agent");
    observe("UserAgentMustActEvent", "com.dozely.UserAgent");
    plugIn.setCalendarDate(date);
    console->user = ConsoleUser::User{"bob", stranger};
    EXPECT_FALSE(plugIn.actInUserAgentNow());
    EXPECT_TRUE(observer->orders.isEmpty());
    EXPECT_THAT(loggedTexts(), IsEmpty());
    console->user->userId = NSProcessInfo::effectiveUserID();
    EXPECT_TRUE(plugIn.actInUserAgentNow());
}

TEST_F(WDDaemonPlugInTest, LogsThatItCannotAnticipateWhenTheLoggedInUserHasNoAgent)
{
    publishAs("Dozely Agent");
    plugIn.setCalendarDate(date);
    console->user = ConsoleUser::User{"bob", stranger};
    EXPECT_FALSE(plugIn.anticipateInUserAgentNow());
    EXPECT_THAT(loggedTexts(), ElementsAre("anticipateInUserAgentNow impossible"));
}

TEST_F(WDDaemonPlugInTest, ReachesNobodyWhenNobodyIsLoggedIn)
{
    beAProcessNamed("dozelyd"); // there is no agent of any user
    plugIn.setCalendarDate(date);
    console->user.reset();
    EXPECT_FALSE(plugIn.actInUserAgentNow());
    EXPECT_THAT(loggedTexts(), IsEmpty());
    EXPECT_FALSE(plugIn.anticipateInUserAgentNow());
    EXPECT_THAT(loggedTexts(), ElementsAre("anticipateInUserAgentNow impossible"));
}
