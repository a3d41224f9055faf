// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "HomeFixture.h"

#include <QDir>

#include <sys/stat.h>

using namespace dozely;

using zandorSoftwaresExtensions::userPreferedLanguages;

namespace
{
constexpr char preferences[] = "/Library/Preferences/.GlobalPreferences.plist";

class LanguagesTest : public HomeFixture, public testing::WithParamInterface<const char *>
{
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Formats, LanguagesTest, testing::Values("FMT_XML", "FMT_BINARY"));

TEST_P(LanguagesTest, AreThoseOfTheGlobalPreferencesInTheirOrder)
{
    UserLanguages::set({"es"});
    writeList(preferences, "{'AppleLanguages': ['fr-CA', 'en', 'de'], 'Other': 7}", GetParam());
    EXPECT_EQ(userPreferedLanguages(), QStringList({"fr-CA", "en", "de"}));
}

TEST_P(LanguagesTest, LeaveOutWhatIsNoText)
{
    writeList(preferences, "{'AppleLanguages': ['fr', 7, ['en'], 'de']}", GetParam());
    EXPECT_EQ(userPreferedLanguages(), QStringList({"fr", "de"}));
}

TEST_P(LanguagesTest, AreTheLocalesWhenThePreferencesNameNone)
{
    UserLanguages::set({"pt-BR"});
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"})); // there is no file
    writeList(preferences, "{'Other': 7}", GetParam());
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"}));
    writeList(preferences, "{'AppleLanguages': 'fr'}", GetParam());
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"}));
    write(preferences, "bplist00 cut off");
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"}));
}

TEST_P(LanguagesTest, AreTheLocalesWhenThePreferencesAreCutOffOrHuge)
{
    UserLanguages::set({"pt-BR"});
    writeList(preferences, "{'AppleLanguages': ['fr', 'de']}", GetParam());
    QFile file(inHome(preferences));
    const QByteArray whole = content(preferences);
    ASSERT_TRUE(file.resize(whole.size() / 2));
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"}));
    EXPECT_EQ(content(preferences), whole.first(whole.size() / 2));
    write(preferences, whole);
    ASSERT_TRUE(file.resize(100LL << 20)); // the rest is a hole
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"}));
    EXPECT_EQ(QFileInfo(file).size(), 100LL << 20);
}

TEST_F(HomeFixture, LanguagesAreTheLocalesWhenAFolderALinkOrAPipeIsInThePlaceOfThePreferences)
{
    UserLanguages::set({"pt-BR"});
    root.makeFolder(RealHomeDirectory() + preferences);
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"}));
    ASSERT_TRUE(QDir().rmdir(inHome(preferences)));
    ASSERT_TRUE(QFile::link(inHome("/nowhere"), inHome(preferences)));
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"}));
    EXPECT_FALSE(QFileInfo::exists(inHome("/nowhere")));
    ASSERT_TRUE(QFile::remove(inHome(preferences)));
    ASSERT_EQ(::mkfifo(qPrintable(inHome(preferences)), 0600), 0);
    EXPECT_EQ(userPreferedLanguages(), QStringList({"pt-BR", "pt"}));
}
