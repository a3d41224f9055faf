// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/NSBundle.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

using namespace dozely;

namespace
{
// An exception that passes through the dynamic linker and Qt's loader leaves their strings behind. That is
// theirs to lose; everything else is still looked for.
class ForeignLeaks
{
public:
#ifdef __SANITIZE_ADDRESS__
    ForeignLeaks()
    {
        __lsan_disable();
    }
    ~ForeignLeaks()
    {
        __lsan_enable();
    }
#else
    ForeignLeaks() {} // something for the scope to hold
#endif
    ForeignLeaks(const ForeignLeaks &) = delete;
    ForeignLeaks &operator=(const ForeignLeaks &) = delete;
};

constexpr char interfaceId[] = "com.dozely.test.Module/1";

/// A class of the test program, which lies in no bundle.
class Homeless : public QObject
{
    Q_OBJECT
};

class NSBundleTest : public testing::Test
{
protected:
    NSBundleTest() { UserLanguages::set({"fr"}); }
    ~NSBundleTest() override { UserLanguages::set({}); }

    void write(const QString &file, const QByteArray &content) const
    {
        const QString absolute = path + "/Contents/" + file;
        ASSERT_TRUE(QDir().mkpath(QFileInfo(absolute).path()));
        QFile written(absolute);
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(content);
    }

    void writeInfo(const QVariantMap &info) const
    {
        write("Info.plist", PropertyList::toData(info, PropertyList::Format::Xml));
    }

    /// Puts a module of this test program's into the bundle.
    void addModule(const QString &name) const
    {
        ASSERT_TRUE(QDir().mkpath(path + "/Contents/Linux"));
        ASSERT_TRUE(QFile::copy(QString(TEST_MODULES) + '/' + name, path + "/Contents/Linux/" + name));
    }

    std::shared_ptr<NSBundle> bundle() const { return NSBundle::bundleWithPath(path); }

    QTemporaryDir folder;
    QString path = folder.filePath("Test.plugin");
};

/// The sentence of a module that cannot be loaded; a note when it was.
std::string refusal(const std::shared_ptr<NSBundle> &bundle, const QString &module)
{
    const auto root = bundle->loadModule(module, interfaceId);
    return root ? "loaded" : root.error().text.toStdString();
}
} // namespace

TEST_F(NSBundleTest, IsAFolderWithAContentsFolder)
{
    EXPECT_FALSE(NSBundle::bundleWithPath(path));
    EXPECT_FALSE(NSBundle::bundleWithPath(""));
    ASSERT_TRUE(QDir().mkpath(path));
    EXPECT_FALSE(bundle());
    ASSERT_TRUE(QDir().mkpath(path + "/Contents"));
    ASSERT_TRUE(bundle());
    EXPECT_EQ(bundle()->bundlePath(), path);
}

TEST_F(NSBundleTest, IsTheSameObjectForTheSamePathWhileSomebodyHoldsIt)
{
    ASSERT_TRUE(QDir().mkpath(path + "/Contents"));
    const auto held = bundle();
    EXPECT_EQ(NSBundle::bundleWithPath(path + "/"), held);
    EXPECT_EQ(NSBundle::bundleWithPath(path + "/Contents/.."), held);
}

TEST_F(NSBundleTest, ReadsItsInfoDictionaryWhenItIsMade)
{
    writeInfo({{"CFBundleIdentifier", "com.dozely.Test"}, {"Number", 3}});
    const auto read = bundle();
    EXPECT_EQ(read->bundleIdentifier(), "com.dozely.Test");
    EXPECT_EQ(read->objectForInfoDictionaryKey("Number"), QVariant(3));
    EXPECT_FALSE(read->objectForInfoDictionaryKey("Missing").isValid());
    writeInfo({});
    EXPECT_EQ(bundle()->infoDictionary().size(), 2);
}

TEST_F(NSBundleTest, HasAnEmptyInfoDictionaryWhenTheFileIsMissingOrBad)
{
    ASSERT_TRUE(QDir().mkpath(path + "/Contents"));
    EXPECT_TRUE(bundle()->infoDictionary().isEmpty());
    EXPECT_TRUE(bundle()->bundleIdentifier().isNull());
    write("Info.plist", "<plist><dict><key>CFBundleIdentifier</key>");
    EXPECT_TRUE(bundle()->infoDictionary().isEmpty());
    write("Info.plist", PropertyList::toData(QVariantList{1}, PropertyList::Format::Xml));
    EXPECT_TRUE(bundle()->infoDictionary().isEmpty());
}

TEST_F(NSBundleTest, LooksForAResourceInTheUsersLanguagesThenInTheFolderThenInEnglish)
{
    UserLanguages::set({"pt-BR", "fr"});
    write("Resources/en.lproj/Edit.ui", "");
    EXPECT_EQ(bundle()->pathForResource("Edit", "ui"), path + "/Contents/Resources/en.lproj/Edit.ui");
    write("Resources/Edit.ui", "");
    EXPECT_EQ(bundle()->pathForResource("Edit", "ui"), path + "/Contents/Resources/Edit.ui");
    write("Resources/fr.lproj/Edit.ui", "");
    EXPECT_EQ(bundle()->pathForResource("Edit", "ui"), path + "/Contents/Resources/fr.lproj/Edit.ui");
    write("Resources/pt.lproj/Edit.ui", "");
    EXPECT_EQ(bundle()->pathForResource("Edit.ui", ""), path + "/Contents/Resources/pt.lproj/Edit.ui");
    EXPECT_TRUE(bundle()->pathForResource("Edit", "png").isNull());
}

TEST_F(NSBundleTest, HasNoResourceOutsideOfItself)
{
    write("Info.plist", "");
    write("Resources/x", "");
    EXPECT_TRUE(bundle()->pathForResource("../Info", "plist").isNull());
    EXPECT_TRUE(bundle()->pathForResource(path + "/Contents/Info", "plist").isNull());
    EXPECT_TRUE(bundle()->pathForResource("", "").isNull());
}

TEST_F(NSBundleTest, LooksForATextFromTheUsersLanguagesDownToEnglish)
{
    UserLanguages::set({"pt-BR"});
    write("Resources/pt-BR.lproj/Localizable.strings", "only = \"Brasil\";");
    write("Resources/pt.lproj/Localizable.strings", "only = Portugal; pt = \"Português\";");
    write("Resources/en.lproj/Localizable.strings", "only = England; pt = England; en = English;");
    EXPECT_EQ(bundle()->localizedStringForKey("only"), "Brasil");
    EXPECT_EQ(bundle()->localizedStringForKey("pt"), "Português");
    EXPECT_EQ(bundle()->localizedStringForKey("en"), "English");
}

TEST_F(NSBundleTest, AnswersTheValueOrTheKeyForATextThatItHasNot)
{
    ASSERT_TRUE(QDir().mkpath(path + "/Contents"));
    EXPECT_EQ(bundle()->localizedStringForKey("Plugin Name"), "Plugin Name");
    EXPECT_EQ(bundle()->localizedStringForKey("Plugin Name", "Command"), "Command");
}

TEST_F(NSBundleTest, KeepsItsTablesApart)
{
    write("Resources/fr.lproj/Localizable.strings", "a = Localizable;");
    write("Resources/fr.lproj/Errors.strings", "a = Errors;");
    EXPECT_EQ(bundle()->localizedStringForKey("a", {}, "Errors"), "Errors");
    EXPECT_EQ(bundle()->localizedStringForKey("a"), "Localizable");
    EXPECT_EQ(bundle()->localizedStringForKey("a", {}, "../fr.lproj/Errors"), "a");
}

TEST_F(NSBundleTest, GoesOnToTheNextLanguageWhenATableIsDamaged)
{
    write("Resources/fr.lproj/Localizable.strings", "a = \"sans fin");
    write("Resources/en.lproj/Localizable.strings", "a = English;");
    EXPECT_EQ(bundle()->localizedStringForKey("a"), "English");
}

TEST_F(NSBundleTest, LoadsTheRootObjectOfAModuleOnce)
{
    addModule("GoodModule.so");
    const auto loading = bundle();
    const auto root = loading->loadModule("GoodModule.so", interfaceId);
    ASSERT_TRUE(root) << qPrintable(root.error().text);
    EXPECT_EQ((*root)->objectName(), "good");
    EXPECT_EQ(*loading->loadModule("GoodModule.so", interfaceId), *root);
}

TEST_F(NSBundleTest, GoesOnWithAModuleWhoseFileIsWrittenOver)
{
    addModule("GoodModule.so");
    const auto loading = bundle();
    const auto root = loading->loadModule("GoodModule.so", interfaceId);
    ASSERT_TRUE(root);
    write("Linux/GoodModule.so", "This is no module any more."); // the same file, as "cp" does it
    EXPECT_STREQ((*root)->metaObject()->className(), "GoodModule");
    EXPECT_TRUE((*root)->inherits("GoodModule"));
    EXPECT_EQ(NSBundle::bundleForClass((*root)->metaObject()), loading);
    std::unique_ptr<QObject> another((*root)->metaObject()->newInstance());
    ASSERT_TRUE(another) << "its code runs, too";
    EXPECT_EQ(another->objectName(), "good");
}

TEST_F(NSBundleTest, RefusesAModuleOfAnotherInterfaceBeforeAnyOfItsCodeRuns)
{
    addModule("ForeignModule.so");
    const QString mark = folder.filePath("ran");
    qputenv("FOREIGN_MODULE_RAN", mark.toUtf8());
    EXPECT_THAT(refusal(bundle(), "ForeignModule.so"),
                testing::HasSubstr("\"com.dozely.test.Other/1\" instead of \"com.dozely.test.Module/1\""));
    EXPECT_FALSE(QFile::exists(mark));
    // The mark does appear when the module is asked for by its own interface.
    EXPECT_TRUE(bundle()->loadModule("ForeignModule.so", "com.dozely.test.Other/1"));
    EXPECT_TRUE(QFile::exists(mark));
}

TEST_F(NSBundleTest, RefusesALoadedModuleUnderAnotherInterface)
{
    addModule("GoodModule.so");
    const auto loading = bundle();
    ASSERT_TRUE(loading->loadModule("GoodModule.so", interfaceId));
    EXPECT_FALSE(loading->loadModule("GoodModule.so", "com.dozely.test.Other/1"));
}

TEST_F(NSBundleTest, CatchesWhatTheConstructorOfARootObjectThrows)
{
    addModule("ThrowingModule.so");
    EXPECT_THAT(refusal(bundle(), "ThrowingModule.so"), testing::HasSubstr("it raised \"no root today\""));
}

TEST_F(NSBundleTest, CatchesWhatAStaticObjectThrowsAndNeverTriesTheHalfMadeModuleAgain)
{
    addModule("StaticThrowModule.so");
    addModule("GoodModule.so");
    {
        const ForeignLeaks foreign;
        EXPECT_THAT(refusal(bundle(), "StaticThrowModule.so"),
                    testing::HasSubstr("it raised \"static trouble\""));
    }
    EXPECT_THAT(refusal(bundle(), "StaticThrowModule.so"), testing::HasSubstr("it raised an exception"));
    EXPECT_TRUE(bundle()->loadModule("GoodModule.so", interfaceId)); // others still load
}

TEST_F(NSBundleTest, RefusesAModuleThatNeedsWhatTheProcessHasNot)
{
    addModule("UnresolvedModule.so");
    EXPECT_THAT(refusal(bundle(), "UnresolvedModule.so"), testing::HasSubstr("nobodyDefinesThis"));
}

TEST_F(NSBundleTest, RefusesAFileThatIsNoModule)
{
    write("Linux/text.so", "This is a text.");
    EXPECT_THAT(refusal(bundle(), "text.so"), testing::HasSubstr("this is not a module"));
}

TEST_F(NSBundleTest, RefusesAModuleThatIsNotThere)
{
    ASSERT_TRUE(QDir().mkpath(path + "/Contents"));
    EXPECT_THAT(refusal(bundle(), "missing.so"), testing::HasSubstr("there is no such module"));
}

TEST_F(NSBundleTest, LoadsModulesFromItsOwnFolderOnly)
{
    addModule("GoodModule.so");
    for (const char *name : {"../Linux/GoodModule.so", "..", "", "./GoodModule.so"})
        EXPECT_THAT(refusal(bundle(), name), testing::HasSubstr("not the name of a module")) << name;
    EXPECT_THAT(refusal(NSBundle::kitBundle(), "GoodModule.so"),
                testing::HasSubstr("not the name of a module"));
}

TEST_F(NSBundleTest, ContainsTheClassesOfItsModules)
{
    addModule("GoodModule.so");
    const auto loading = bundle();
    const auto root = loading->loadModule("GoodModule.so", interfaceId);
    ASSERT_TRUE(root);
    EXPECT_EQ(NSBundle::bundleForClass((*root)->metaObject()), loading);
}

TEST_F(NSBundleTest, ContainsAClassThatIsRegisteredWithIt)
{
    ASSERT_TRUE(QDir().mkpath(path + "/Contents"));
    const auto own = bundle();
    EXPECT_FALSE(NSBundle::bundleForClassNamed("WDUserAgentController"));
    NSBundle::registerClass("WDUserAgentController", own);
    EXPECT_EQ(NSBundle::bundleForClassNamed("WDUserAgentController"), own);
    NSBundle::registerClass(Homeless::staticMetaObject.className(), own);
    EXPECT_EQ(NSBundle::bundleForClass(&Homeless::staticMetaObject), own);
    NSBundle::registerClass(Homeless::staticMetaObject.className(), nullptr);
}

TEST_F(NSBundleTest, DoesNotContainAClassOfAProgramOutsideOfAnyBundle)
{
    EXPECT_FALSE(NSBundle::bundleForClass(&Homeless::staticMetaObject));
    EXPECT_FALSE(NSBundle::mainBundle());
}

TEST_F(NSBundleTest, OfTheLibraryContainsTheLibrarysClasses)
{
    EXPECT_EQ(NSBundle::bundleForClass(&AbsoluteTimer::staticMetaObject), NSBundle::kitBundle());
    EXPECT_EQ(NSBundle::kitBundle()->bundleIdentifier(), "com.dozely.Kit");
    EXPECT_EQ(NSBundle::kitBundle()->pathForResource("Info", "plist"), ":/DozelyKit/Info.plist");
}

TEST_F(NSBundleTest, IsTheMainBundleOfTheProgramInIt)
{
    const auto linesOf = [](const QString &program) {
        QProcess process;
        process.start(program, QStringList());
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    };
    const QString application = folder.filePath("Test.app");
    const auto place = [&](const QString &file) {
        const QString program = folder.path() + file;
        QDir().mkpath(QFileInfo(program).path());
        return QFile::copy(TEST_MODULES "/bundle_probe", program) ? program : QString();
    };
    const QString inner = application + "/Contents/Helpers/Inner.app";
    EXPECT_EQ(linesOf(place("/Test.app/Contents/Linux/Probe")), QStringList({application, application}));
    EXPECT_EQ(linesOf(place("/Test.app/Contents/Helpers/Inner.app/Contents/Linux/Probe")),
              QStringList({inner, inner}));
    EXPECT_EQ(linesOf(place("/Test.app/Contents/Other/Probe")), QStringList({"none", application}));
    EXPECT_EQ(linesOf(place("/Test.plugin/Contents/Linux/Probe")), QStringList({"none", path}));
    EXPECT_EQ(linesOf(place("/Probe")), QStringList({"none", "none"}));
}

TEST(UserLanguages, HoldTheirMoreGeneralFormsBehindThem)
{
    UserLanguages::set({"pt-BR", "zh_Hant_TW", "pt-PT"});
    EXPECT_EQ(UserLanguages::current(), QStringList({"pt-BR", "pt", "zh-Hant-TW", "zh-Hant", "zh", "pt-PT"}));
    UserLanguages::set({});
}

TEST(UserLanguages, AreThoseOfTheLocaleUnlessSet)
{
    // The locale is read once a process.
    qputenv("LANGUAGE", "");
    qputenv("LC_ALL", "fr_CA.UTF-8");
    const QStringList languages = UserLanguages::current();
    EXPECT_TRUE(languages.contains("fr-CA") && languages.contains("fr")) << languages.join(' ').toStdString();
}

TEST(UserLanguages, AreNoneInThePlainLocale)
{
    qputenv("LANGUAGE", "");
    qputenv("LC_ALL", "C");
    EXPECT_EQ(UserLanguages::current(), QStringList());
    for (const char *plain : {"C", "POSIX", "C.UTF-8"}) {
        UserLanguages::set({plain, "de-DE"});
        EXPECT_EQ(UserLanguages::current(), QStringList({"de-DE", "de"})) << plain;
    }
    UserLanguages::set({});
}

#include "NSBundleTest.moc"
