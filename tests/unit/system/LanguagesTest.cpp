// SPDX-License-Identifier: MIT
#include "system/UserDefaultsExtensions.h"

#include "HomeFixture.h"
#include "platform/NSBundle.h"

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
