// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/PlugInLoader.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

#include <QDir>

#include <unistd.h>

using testing::HasSubstr;

class PlugInLoaderTest : public BundleFixture
{
protected:
    static QList<PlugInLoader::Source> trusted() { return {{QString(), {::geteuid()}}}; }

    /// Makes a plug-in; the sentence of its failure is kept.
    std::shared_ptr<WDPlugIn> make(const QString &fixedPath)
    {
        const auto bundle = loader.bundle(root.join(fixedPath));
        const auto plugIn = bundle ? loader.make(*bundle) : bundle.error();
        error = plugIn ? QString() : plugIn.error().text;
        return plugIn ? *plugIn : nullptr;
    }
    /// The sentence with which making a plug-in of a bundle with this module fails.
    std::string failureOf(const QString &module)
    {
        const QString name = QFileInfo(module).fileName();
        EXPECT_FALSE(make(makeBundle("Bad", {{"WDDaemonModule", name}}, {module})));
        return error.toStdString();
    }

    QString error;
    PlugInLoader loader{"WDDaemonModule", trusted()};
};

TEST_F(PlugInLoaderTest, MakesAPlugInWithItsBundleSet)
{
    const auto plugIn = make(makeProbe());
    ASSERT_TRUE(plugIn) << error.toStdString();
    EXPECT_TRUE(dynamic_cast<WDDaemonPlugIn *>(plugIn.get()));
    EXPECT_EQ(plugIn->bundle()->bundlePath(), root.join(QString(plugIns) + "/Probe.plugin"));
}

TEST_F(PlugInLoaderTest, MakesThePlugInOfItsRole)
{
    PlugInLoader forAgents("WDUserAgentModule", trusted());
    const auto bundle = forAgents.bundle(root.join(makeProbe()));
    ASSERT_TRUE(bundle);
    const auto plugIn = forAgents.make(*bundle);
    ASSERT_TRUE(plugIn);
    EXPECT_TRUE(dynamic_cast<WDUserAgentPlugIn *>(plugIn->get()));
}

TEST_F(PlugInLoaderTest, InitialisesAClassOnceAndTerminatesItAtTheEnd)
{
    const QString path = makeProbe();
    {
        PlugInLoader shortLived("WDDaemonModule", trusted());
        for (int i = 0; i < 2; ++i)
            EXPECT_TRUE(shortLived.make(*shortLived.bundle(root.join(path))));
        EXPECT_EQ(messages(), QStringList{"Probe initialised"});
    }
    EXPECT_EQ(messages(), QStringList({"Probe initialised", "Probe terminated"}));
}

TEST_F(PlugInLoaderTest, GoesOnWithAModuleThatIsWrittenOverAndSaysSoOnce)
{
    const QString path = makeProbe();
    ASSERT_TRUE(make(path));
    const QString module = path + "/Contents/Linux/ProbePlugIn.so";
    write(module, "This is no module any more."); // the same file, as "cp" does it
    for (int i = 0; i < 2; ++i) {
        const auto plugIn = make(path);
        ASSERT_TRUE(plugIn) << error.toStdString();
        plugIn->setParameters(QVariantMap{{"Time Out", -9LL}});
        EXPECT_EQ(plugIn->timeOut(), -9);
    }
    ASSERT_EQ(messages().filter("was replaced").size(), 1);
    EXPECT_THAT(
        messages().filter("was replaced").first().toStdString(),
        HasSubstr("The module ProbePlugIn.so of " + root.join(path).toStdString() + " was replaced: "));
    ASSERT_TRUE(QFile::remove(root.join(module)));
    ASSERT_TRUE(QFile::copy(PROBE_MODULE, root.join(module)));
    EXPECT_TRUE(make(path));
    EXPECT_EQ(messages().filter("was replaced").size(), 2) << "another one";
}

TEST_F(PlugInLoaderTest, TakesCodeFromTheSystemAndInASessionFromTheHomeOfItsUserBelowARootThatIsThere)
{
    EXPECT_EQ(PlugInLoader::sourcesOfTheSystem().size(), 1);
    const auto sources = PlugInLoader::sourcesOfTheSession();
    ASSERT_EQ(sources.size(), 2);
    EXPECT_EQ(sources[1].folder, root.join(RealHomeDirectory() + plugIns));
    EXPECT_EQ(sources[1].owners, QList<quint32>({::geteuid(), ::geteuid()}));
    dozely::RootFolder::set(root.join("/nothing"));
    EXPECT_TRUE(PlugInLoader::sourcesOfTheSystem().isEmpty()) << "nobody owns it";
    EXPECT_TRUE(PlugInLoader::sourcesOfTheSession().isEmpty());
    dozely::RootFolder::set(root.path());
}

TEST_F(PlugInLoaderTest, SaysThatABundleIsMissing)
{
    EXPECT_FALSE(make("/no/such.plugin"));
    EXPECT_THAT(error.toStdString(), HasSubstr("There is no bundle"));
}

TEST_F(PlugInLoaderTest, SaysThatAFolderIsNoBundle)
{
    root.makeFolder("/empty.plugin");
    EXPECT_FALSE(make("/empty.plugin"));
    EXPECT_THAT(error.toStdString(), HasSubstr("is not a bundle"));
}

TEST_F(PlugInLoaderTest, RefusesPathsThatAreNotPlainAndAbsolute)
{
    makeProbe();
    for (const QString path : {"", "relative.plugin", "/a/../b.plugin"}) {
        const auto bundle = loader.bundle(path);
        ASSERT_FALSE(bundle);
        EXPECT_THAT(bundle.error().text.toStdString(), HasSubstr("is not a bundle's path"));
    }
}

TEST_F(PlugInLoaderTest, SaysThatABundleNamesNoModuleForTheRole)
{
    EXPECT_FALSE(make(makeBundle("Bare", {{"CFBundleIdentifier", "bare"}}, {})));
    EXPECT_THAT(error.toStdString(), HasSubstr("names no \"WDDaemonModule\""));
}

TEST_F(PlugInLoaderTest, ServesABundleWithoutModuleByTheBaseClassWhereThereIsOne)
{
    PlugInLoader withBase("WDDaemonModule", trusted(), [] { return std::make_unique<WDDaemonPlugIn>(); });
    const auto bundle = withBase.bundle(root.join(makeBundle("Bare", {{"CFBundleIdentifier", "bare"}}, {})));
    ASSERT_TRUE(bundle);
    const auto plugIn = withBase.make(*bundle);
    ASSERT_TRUE(plugIn);
    EXPECT_EQ((*plugIn)->pluginIdentifier(), "bare");
}

TEST_F(PlugInLoaderTest, SaysThatAModuleIsMissing)
{
    EXPECT_FALSE(make(makeBundle("Bad", {{"WDDaemonModule", "Missing.so"}}, {})));
    EXPECT_THAT(error.toStdString(), HasSubstr("The module Missing.so of"));
}

TEST_F(PlugInLoaderTest, FindsAModuleThatIsPutInPlaceLater)
{
    const QString path = makeBundle("Late", {{"WDDaemonModule", "ProbePlugIn.so"}}, {});
    const QString module = root.join(path + "/Contents/Linux/ProbePlugIn.so");
    EXPECT_FALSE(make(path));
    ASSERT_TRUE(QFile::copy(KIT_MODULES "/WrongInterface.so", module));
    ::chmod(qPrintable(module), 0755);
    EXPECT_FALSE(make(path));
    EXPECT_THAT(error.toStdString(), HasSubstr("it has the interface"));
    ASSERT_TRUE(QFile::remove(module));
    ASSERT_TRUE(QFile::copy(PROBE_MODULE, module));
    ::chmod(qPrintable(module), 0755);
    EXPECT_TRUE(make(path)) << error.toStdString();
    EXPECT_EQ(messages(), QStringList{"Probe initialised"});
}

TEST_F(PlugInLoaderTest, TakesNoModuleFromOutsideTheBundle)
{
    makeProbe();
    const QString elsewhere = "../../../Probe.plugin/Contents/Linux/ProbePlugIn.so";
    EXPECT_FALSE(make(makeBundle("Bad", {{"WDDaemonModule", elsewhere}}, {})));
    EXPECT_THAT(error.toStdString(), HasSubstr("its name is not a file name"));
}

TEST_F(PlugInLoaderTest, SaysThatAModuleIsOfAnotherInterface)
{
    EXPECT_THAT(failureOf(KIT_MODULES "/WrongInterface.so"), HasSubstr("WrongInterface.so"));
}

TEST_F(PlugInLoaderTest, SaysWhatAFactoryThrew)
{
    EXPECT_THAT(failureOf(KIT_MODULES "/FactoryThrows.so"), HasSubstr("no factory today"));
}

TEST_F(PlugInLoaderTest, SaysWhatTheInitialisationOfAClassThrew)
{
    const QString path =
        makeBundle("Breaking", {{"WDDaemonModule", "InitializeClassRefuses.so"}, {"Breaks Down", true}},
                   {KIT_MODULES "/InitializeClassRefuses.so"});
    EXPECT_FALSE(make(path));
    EXPECT_THAT(error.toStdString(), HasSubstr("no class today"));
}

TEST_F(PlugInLoaderTest, SaysWhatAConstructorThrew)
{
    EXPECT_THAT(failureOf(KIT_MODULES "/ConstructorThrows.so"),
                HasSubstr("Unmakeable: There is nothing to make."));
}

TEST_F(PlugInLoaderTest, AsksAClassThatRefusesOnlyOnce)
{
    const QString path = makeBundle("Refusing", {{"WDDaemonModule", "ProbePlugIn.so"}, {"Refuses", true}});
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(make(path));
        EXPECT_THAT(error.toStdString(), HasSubstr("does not want to be initialised"));
    }
    EXPECT_EQ(messages(), QStringList{"Probe initialised"});
}

TEST_F(PlugInLoaderTest, SaysThatAFactoryMadeNothing)
{
    PlugInLoader forPanes("WDPrefPaneModule", trusted());
    const auto bundle =
        forPanes.bundle(root.join(makeBundle("Odd", {{"WDPrefPaneModule", "ProbePlugIn.so"}})));
    ASSERT_TRUE(bundle);
    const auto plugIn = forPanes.make(*bundle);
    ASSERT_FALSE(plugIn);
    EXPECT_THAT(plugIn.error().text.toStdString(), HasSubstr("its factory made nothing"));
}

TEST_F(PlugInLoaderTest, RefusesABundleThatOthersMayWrite)
{
    const QString path = makeProbe();
    ASSERT_EQ(::chmod(qPrintable(root.join(path + "/Contents/Linux")), 0777), 0);
    EXPECT_FALSE(make(path));
    EXPECT_THAT(error.toStdString(), HasSubstr("is not trusted"));
    EXPECT_TRUE(messages().isEmpty()) << "no code of it may run";
}

TEST_F(PlugInLoaderTest, RefusesABundleOfAUserWhoIsNotTrusted)
{
    PlugInLoader ofAnother("WDDaemonModule", {{QString(), {::geteuid() + 1}}});
    const auto bundle = ofAnother.bundle(root.join(makeProbe()));
    ASSERT_FALSE(bundle);
    EXPECT_THAT(bundle.error().text.toStdString(), HasSubstr("belongs to user"));
}

TEST_F(PlugInLoaderTest, TrustsFurtherOwnersOnlyBelowTheirFolder)
{
    PlugInLoader loaderOfTwo("WDDaemonModule",
                             {{QString(), {::geteuid() + 1}}, {root.join(plugIns), {::geteuid()}}});
    const auto bundle = loaderOfTwo.bundle(root.join(makeProbe()));
    EXPECT_TRUE(bundle) << bundle.error().text.toStdString();
    ASSERT_TRUE(QDir().rename(root.join(QString(plugIns) + "/Probe.plugin"), root.join("/Probe.plugin")));
    EXPECT_FALSE(loaderOfTwo.bundle(root.join("/Probe.plugin")));
}
