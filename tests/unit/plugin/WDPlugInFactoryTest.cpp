// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"

#include "PlugInFixture.h"

#include "DozelyKit/core/foundation/NSException.h"

using namespace dozely;

namespace
{
using testing::HasSubstr;

/// Loads modules as a host does.
class WDPlugInFactoryTest : public PlugInFixture
{
protected:
    /// A bundle whose daemon module is `module` of this test program's.
    std::shared_ptr<NSBundle> bundleWith(const QString &module, QVariantMap info = {}) const
    {
        const QString linux = pathOf("Test") + "/Contents/Linux";
        QDir().mkpath(linux);
        QFile::copy(QString(TEST_MODULES) + '/' + module, linux + '/' + module);
        info.insert("CFBundleIdentifier", "com.dozely.Test");
        info.insert("WDDaemonModule", module);
        return makeBundle("Test", info);
    }

    /// The factory for a role, null with `error` filled in.
    WDPlugInFactory *factoryOf(const std::shared_ptr<NSBundle> &bundle,
                               const QString &role = "WDDaemonModule")
    {
        const QString module = bundle->objectForInfoDictionaryKey(role).toString();
        const auto object = bundle->loadModule(module, WDPlugInFactory_iid);
        error = object ? std::string() : object.error().text.toStdString();
        return object ? qobject_cast<WDPlugInFactory *>(*object) : nullptr;
    }

    std::string error;
};
} // namespace

TEST_F(WDPlugInFactoryTest, MakesAPlugInThatKnowsItsBundle)
{
    const auto bundle = bundleWith("GoodPlugIn.so");
    WDPlugInFactory *factory = factoryOf(bundle);
    ASSERT_TRUE(factory) << error;
    EXPECT_TRUE(factory->initializeClass(bundle));
    const auto plugIn = factory->make();
    ASSERT_TRUE(dynamic_cast<WDDaemonPlugIn *>(plugIn.get()));
    EXPECT_EQ(plugIn->bundle(), bundle);
    EXPECT_EQ(plugIn->pluginIdentifier(), "com.dozely.Test");
    factory->terminateClass();
}

TEST_F(WDPlugInFactoryTest, MakesAnObjectForEachRoleOfOneModule)
{
    const auto bundle = bundleWith("GoodPlugIn.so", {{"WDUserAgentModule", "GoodPlugIn.so"}});
    WDPlugInFactory *daemon = factoryOf(bundle);
    WDPlugInFactory *agent = factoryOf(bundle, "WDUserAgentModule");
    ASSERT_TRUE(daemon && agent) << error;
    EXPECT_EQ(daemon, agent);
    EXPECT_TRUE(dynamic_cast<WDDaemonPlugIn *>(daemon->makeForRole("WDDaemonModule").get()));
    EXPECT_TRUE(dynamic_cast<WDUserAgentPlugIn *>(agent->makeForRole("WDUserAgentModule").get()));
}

TEST_F(WDPlugInFactoryTest, LetsAPlugInOverrideItsRole)
{
    const auto bundle = bundleWith("GoodPlugIn.so");
    WDPlugInFactory *factory = factoryOf(bundle);
    ASSERT_TRUE(factory) << error;
    const auto made = factory->make();
    dynamic_cast<WDDaemonPlugIn &>(*made).actInDaemon();
    EXPECT_EQ(made->parameters()->value("Acted"), QVariant(true));
}

TEST_F(WDPlugInFactoryTest, GivesTheNameFromThePlugInsTexts)
{
    UserLanguages::set({"fr"});
    const auto bundle = bundleWith("GoodPlugIn.so");
    write("Test", "Resources/fr.lproj/Localizable.strings", "\"Plugin Name\" = \"Commande\";");
    WDPlugInFactory *factory = factoryOf(bundle);
    ASSERT_TRUE(factory) << error;
    EXPECT_EQ(factory->make()->pluginName(), "Commande");
    UserLanguages::set({});
}

TEST_F(WDPlugInFactoryTest, TakesTheNameFromTheBundleOfTheClassNotFromTheBundleThatWasSet)
{
    UserLanguages::set({"en"});
    const auto bundle = bundleWith("GoodPlugIn.so");
    write("Test", "Resources/en.lproj/Localizable.strings", "\"Plugin Name\" = \"Own\";");
    write("Other", "Resources/en.lproj/Localizable.strings", "\"Plugin Name\" = \"Foreign\";");
    WDPlugInFactory *factory = factoryOf(bundle);
    ASSERT_TRUE(factory) << error;
    const auto plugIn = factory->make();
    plugIn->setBundle(makeBundle("Other", {{"CFBundleIdentifier", "com.dozely.Other"}}));
    EXPECT_EQ(plugIn->pluginName(), "Own");
    EXPECT_EQ(plugIn->pluginIdentifier(), "com.dozely.Other");
    UserLanguages::set({});
}

TEST_F(WDPlugInFactoryTest, AnswersTheKeyAsTheNameOfABundleWithoutTexts)
{
    WDPlugInFactory *factory = factoryOf(bundleWith("GoodPlugIn.so"));
    ASSERT_TRUE(factory) << error;
    EXPECT_EQ(factory->make()->pluginName(), "Plugin Name");
}

TEST_F(WDPlugInFactoryTest, RefusesToWorkWhenInitializeClassSaysSo)
{
    const auto bundle = bundleWith("InitializeClassRefuses.so", {{"Refuses", true}});
    WDPlugInFactory *factory = factoryOf(bundle);
    ASSERT_TRUE(factory) << error;
    EXPECT_FALSE(factory->initializeClass(bundle));
    EXPECT_TRUE(factory->initializeClass(makeBundle("Willing", {{"Refuses", false}})));
}

TEST_F(WDPlugInFactoryTest, LetsTheHostCatchWhatAConstructorOfAPlugInThrows)
{
    WDPlugInFactory *factory = factoryOf(bundleWith("ConstructorThrows.so"));
    ASSERT_TRUE(factory) << error;
    EXPECT_THROW(factory->make(), NSException);
    EXPECT_THROW(factory->make(), std::exception); // for a host that knows no better
}

TEST_F(WDPlugInFactoryTest, IsAbsentWhenItsConstructorThrows)
{
    EXPECT_FALSE(factoryOf(bundleWith("FactoryThrows.so")));
    EXPECT_THAT(error, HasSubstr("it raised \"no factory today\""));
}

TEST_F(WDPlugInFactoryTest, IsAbsentInAModuleOfAnotherInterface)
{
    EXPECT_FALSE(factoryOf(bundleWith("WrongInterface.so")));
    EXPECT_THAT(error,
                HasSubstr("\"com.dozely.WDPlugInFactory/2\" instead of \"com.dozely.WDPlugInFactory/1\""));
}

TEST_F(WDPlugInFactoryTest, IsAbsentInAFileThatIsNoLibrary)
{
    const auto bundle = makeBundle("Test", {{"WDDaemonModule", "Test.so"}});
    write("Test", "Linux/Test.so", "not a library");
    EXPECT_FALSE(factoryOf(bundle));
    EXPECT_THAT(error, HasSubstr("this is not a module"));
}

TEST_F(WDPlugInFactoryTest, IsAbsentWithoutTheModule)
{
    EXPECT_FALSE(factoryOf(makeBundle("Test", {{"WDDaemonModule", "Test.so"}})));
    EXPECT_THAT(error, HasSubstr("there is no such module"));
}

TEST_F(WDPlugInFactoryTest, IsAbsentWhenTheInfoDictionaryIsMissingOrBad)
{
    write("Test", "Linux/Test.so", "whatever");
    const auto missing = NSBundle::bundleWithPath(pathOf("Test"));
    ASSERT_TRUE(missing);
    EXPECT_FALSE(factoryOf(missing));
    EXPECT_THAT(error, HasSubstr("not the name of a module"));
    write("Bad", "Info.plist", "<plist version=\"1.0\"><dict><key>WDDaemonModule</key><string>Test.so");
    const auto bad = NSBundle::bundleWithPath(pathOf("Bad"));
    ASSERT_TRUE(bad);
    EXPECT_FALSE(factoryOf(bad));
    EXPECT_THAT(error, HasSubstr("not the name of a module"));
}
