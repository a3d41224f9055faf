// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "PlugInFixture.h"

#include "DozelyKit/core/bundles/InterfaceFileLoader.h"

using namespace dozely;

namespace
{
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

class WDPrefPanePlugInTest : public PlugInFixture
{
protected:
    int number(const QString &key) const { return plugIn.parameters()->value(key, -1).toInt(); }
    WDPrefPanePlugIn plugIn;
};
} // namespace

TEST_F(WDPrefPanePlugInTest, NeedsNothingAndOffersNothingWhenItIsFresh)
{
    EXPECT_FALSE(plugIn.isBaseModule());
    EXPECT_FALSE(plugIn.needsWakeUp());
    EXPECT_FALSE(plugIn.needsStartup());
    EXPECT_FALSE(plugIn.needsWakeUpByDefault());
    EXPECT_FALSE(plugIn.needsStartupByDefault());
    EXPECT_TRUE(plugIn.defaultParameters().isEmpty());
    EXPECT_EQ(plugIn.actionString(), "-");
    EXPECT_EQ(plugIn.setupView(), nullptr);
    EXPECT_EQ(plugIn.timeOut(), -180);
    EXPECT_EQ(plugIn.pluginName(), "Plugin Name");
}

TEST_F(WDPrefPanePlugInTest, WritesItsPowerRequirementsAsNumbersIntoTheDictionaryThatItAnswers)
{
    const auto parameters = plugIn.parameters();
    plugIn.setNeedsWakeUp(true);
    plugIn.setNeedsStartup(true);
    EXPECT_EQ(parameters->value("Needs Wake Up"), QVariant(1));
    EXPECT_EQ(parameters->value("Needs Startup"), QVariant(1));
    EXPECT_TRUE(plugIn.needsWakeUp());
    EXPECT_TRUE(plugIn.needsStartup());
    plugIn.setNeedsWakeUp(false);
    plugIn.setNeedsStartup(false);
    EXPECT_EQ(number("Needs Wake Up"), 0);
    EXPECT_EQ(number("Needs Startup"), 0);
    EXPECT_FALSE(plugIn.needsWakeUp());
    EXPECT_FALSE(plugIn.needsStartup());
    EXPECT_EQ(plugIn.parameters(), parameters);
}

TEST_F(WDPrefPanePlugInTest, NeedsWhatIsNotZeroWhereTheDaemonWantsExactlyOne)
{
    WDDaemonPlugIn daemonSide;
    for (const QVariant &value : {QVariant(2), QVariant(-1), QVariant("7")}) {
        plugIn.setParameters(QVariantMap{{"Needs Wake Up", value}, {"Needs Startup", value}});
        daemonSide.setParameters(*plugIn.parameters());
        EXPECT_TRUE(plugIn.needsWakeUp());
        EXPECT_TRUE(plugIn.needsStartup());
        EXPECT_FALSE(daemonSide.needsWakeUp());
        EXPECT_FALSE(daemonSide.needsStartup());
    }
    for (const QVariant &value : {QVariant(0), QVariant("no"), QVariant()}) {
        plugIn.setParameters(QVariantMap{{"Needs Wake Up", value}, {"Needs Startup", value}});
        EXPECT_FALSE(plugIn.needsWakeUp());
        EXPECT_FALSE(plugIn.needsStartup());
    }
    plugIn.setNeedsWakeUp(true);
    daemonSide.setParameters(*plugIn.parameters());
    EXPECT_TRUE(daemonSide.needsWakeUp()) << "what this side writes, both sides read alike";
}

TEST_F(WDPrefPanePlugInTest, LosesRequirementsWithoutADictionary)
{
    plugIn.setParameters(std::shared_ptr<const QVariantMap>());
    plugIn.setNeedsWakeUp(true);
    plugIn.setNeedsStartup(true);
    EXPECT_FALSE(plugIn.needsWakeUp());
    EXPECT_FALSE(plugIn.needsStartup());
    EXPECT_EQ(plugIn.parameters(), nullptr);
}

TEST_F(WDPrefPanePlugInTest, LoadsTheInterfaceFileThatItsBundleNames)
{
    const auto loader = std::make_shared<FakeLoader>();
    Port<InterfaceFileLoader>::current() = loader;
    plugIn.setBundle(makeBundle("Panel", {{"WDEditNibFile", "Settings"}, {"WDUserAgentNib", "Other"}}));
    plugIn.loadNib();
    EXPECT_EQ(loader->names, QStringList("Settings"));
    EXPECT_EQ(loader->bundlePath, pathOf("Panel"));
    EXPECT_EQ(loader->lastOwner, &plugIn);
}

TEST_F(WDPrefPanePlugInTest, LoadsNothingWhenItsBundleNamesNoInterfaceFile)
{
    const auto loader = std::make_shared<FakeLoader>();
    Port<InterfaceFileLoader>::current() = loader;
    plugIn.loadNib();
    plugIn.setBundle(makeBundle("Panel", {{"WDUserAgentNib", "Other"}}));
    plugIn.loadNib();
    EXPECT_TRUE(loader->names.isEmpty());
    EXPECT_EQ(plugIn.setupView(), nullptr);
}

TEST_F(WDPrefPanePlugInTest, LoadsNothingInAProcessWithoutInterfaceLibrary)
{
    ASSERT_FALSE(Port<InterfaceFileLoader>::current());
    plugIn.setBundle(makeBundle("Panel", {{"WDEditNibFile", "Settings"}}));
    plugIn.loadNib();
    EXPECT_EQ(plugIn.setupView(), nullptr);
}

TEST_F(WDPrefPanePlugInTest, FillsNothingUnlessOverridden)
{
    plugIn.setParameters(QVariantMap{{"Alert", 1}});
    plugIn.fillSetupInterfaceFromParameters();
    plugIn.fillParametersFromSetupInterface();
    EXPECT_EQ(*plugIn.parameters(), (QVariantMap{{"Alert", 1}}));
    const WDPrefPanePlugInProtocol &protocol = plugIn;
    EXPECT_EQ(protocol.actionString(), "-");
}
