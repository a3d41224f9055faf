// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "OrderFixture.h"

#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/core/foundation/NSException.h"

using namespace dozely;

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what it is asked to load.
class FakeLoader : public InterfaceFileLoader
{
public:
    bool loadNibNamed(const QString &name, const NSBundle &bundle, QObject *owner) override
    {
        names += name;
        bundlePath = bundle.bundlePath();
        lastOwner = owner;
        return true;
    }
    QStringList names;
    QString bundlePath;
    QObject *lastOwner = nullptr;
};

class WDUserAgentPlugInTest : public OrderFixture
{
protected:
    WDUserAgentPlugInTest() { plugIn.setBundle(bundle); }

    WDUserAgentPlugIn plugIn;
};
} // namespace

TEST_F(WDUserAgentPlugInTest, SendsTheOccurrenceToTheDaemon)
{
    publishAs("dozelyd");
    observe("DaemonMustActEvent", "com.dozely.Daemon");
    plugIn.setCalendarDate(date);
    plugIn.setParameters(QVariantMap{{"Command", "true"}});
    plugIn.actInDaemonNow();
    EXPECT_EQ(arrived().object(), QVariant("com.dozely.Daemon"));
    EXPECT_EQ(arrived().userInfo(), (QVariantMap{{"Schedule Parameters", QVariantMap{{"Command", "true"}}},
                                                 {"Schedule Date", date},
                                                 {"Schedule Bundle Path", pathOf("Test")}}));
    EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(WDUserAgentPlugInTest, SendsAnEmptyDictionaryWhenThereAreNoParameters)
{
    publishAs("dozelyd");
    observe("DaemonMustActEvent", "com.dozely.Daemon");
    plugIn.setCalendarDate(date);
    plugIn.setParameters(std::shared_ptr<const QVariantMap>());
    plugIn.actInDaemonNow();
    const QVariant parameters = arrived().userInfo()["Schedule Parameters"];
    EXPECT_EQ(parameters.typeId(), QMetaType::QVariantMap);
    EXPECT_TRUE(parameters.toMap().isEmpty());
}

TEST_F(WDUserAgentPlugInTest, CancelsAnEventWithoutSendingItsParameters)
{
    publishAs("dozelyd");
    observe("DaemonMustRemoveEvent", "com.dozely.Daemon");
    plugIn.setCalendarDate(date);
    plugIn.setParameters(QVariantMap{{"Command", "true"}});
    plugIn.cancelEvent();
    EXPECT_EQ(arrived().object(), QVariant("com.dozely.Daemon"));
    EXPECT_EQ(arrived().userInfo(),
              (QVariantMap{{"Schedule Date", date}, {"Schedule Bundle Path", pathOf("Test")}}));
    EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(WDUserAgentPlugInTest, LogsThatItCannotSendAnOccurrenceWithoutADate)
{
    publishAs("dozelyd");
    observe("DaemonMustActEvent", "com.dozely.Daemon");
    plugIn.actInDaemonNow();
    EXPECT_TRUE(observer->orders.isEmpty());
    EXPECT_THAT(loggedTexts(), ElementsAre("actInDaemonNow impossible"));
}

TEST_F(WDUserAgentPlugInTest, LogsThatItCannotCancelAnEventWithoutADate)
{
    publishAs("dozelyd");
    observe("DaemonMustRemoveEvent", "com.dozely.Daemon");
    plugIn.cancelEvent();
    EXPECT_TRUE(observer->orders.isEmpty());
    EXPECT_THAT(loggedTexts(), ElementsAre("cancelEvent impossible"));
}

TEST_F(WDUserAgentPlugInTest, LogsNothingWhenTheDaemonIsNotThere)
{
    beAProcessNamed("Dozely Agent");
    plugIn.setCalendarDate(date);
    plugIn.actInDaemonNow();
    plugIn.cancelEvent();
    EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(WDUserAgentPlugInTest, LoadsTheInterfaceFileThatItsBundleNames)
{
    const auto loader = std::make_shared<FakeLoader>();
    Port<InterfaceFileLoader>::current() = loader;
    plugIn.setBundle(makeBundle("Panel", {{"WDUserAgentNib", "AgentPanel"}}));
    plugIn.loadNib();
    EXPECT_EQ(loader->names, QStringList("AgentPanel"));
    EXPECT_EQ(loader->bundlePath, pathOf("Panel"));
    EXPECT_EQ(loader->lastOwner, &plugIn);
}

TEST_F(WDUserAgentPlugInTest, LoadsNothingAndRaisesNothingWithoutANameInItsBundle)
{
    const auto loader = std::make_shared<FakeLoader>();
    Port<InterfaceFileLoader>::current() = loader;
    EXPECT_NO_THROW(plugIn.loadNib());
    plugIn.setBundle(nullptr);
    EXPECT_NO_THROW(plugIn.loadNib());
    EXPECT_TRUE(loader->names.isEmpty());
}

TEST_F(WDUserAgentPlugInTest, LoadsNothingInAProcessWithoutInterface)
{
    ASSERT_FALSE(Port<InterfaceFileLoader>::current());
    plugIn.setBundle(makeBundle("Panel", {{"WDUserAgentNib", "AgentPanel"}}));
    EXPECT_NO_THROW(plugIn.loadNib());
}
