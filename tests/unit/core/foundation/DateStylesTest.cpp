// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DateStyles_p.h"

#include "support/PrintTo.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <array>
#include <ctime>

using namespace dozely;

namespace
{
class DateStylesTest : public testing::Test
{
protected:
    DateStylesTest()
    {
        for (const char *const variable : {"LC_ALL", "LC_TIME", "LANG"})
            qunsetenv(variable);
        setLocalZone("Europe/Paris");
    }

    static void setLocalZone(const char *zone)
    {
        qputenv("TZ", zone);
        ::tzset();
    }

    const QDateTime date{{2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris")};
};

struct Expectation {
    const char *locale;
    const char16_t *date;
    const char16_t *time;
};

class DateStylesOf : public DateStylesTest, public testing::WithParamInterface<Expectation>
{
};
} // namespace

TEST_P(DateStylesOf, AreThoseOfTheUsersLocale)
{
    qputenv("LANG", GetParam().locale);
    EXPECT_EQ(DateStyles::mediumDate(date), QString::fromUtf16(GetParam().date));
    EXPECT_EQ(DateStyles::shortTime(date), QString::fromUtf16(GetParam().time));
}

INSTANTIATE_TEST_SUITE_P(Locale, DateStylesOf,
                         testing::Values(Expectation{"en_US.UTF-8", u"Mar 14, 2026", u"6:55\u202fAM"},
                                         Expectation{"en_GB.UTF-8", u"14 Mar 2026", u"06:55"},
                                         Expectation{"fr_FR.UTF-8", u"14 mars 2026", u"06:55"},
                                         Expectation{"de_DE@euro", u"14.03.2026", u"06:55"},
                                         Expectation{"es_ES.UTF-8", u"14 mar 2026", u"6:55"},
                                         Expectation{"ja_JP.UTF-8", u"2026/03/14", u"6:55"},
                                         Expectation{"C.UTF-8", u"Mar 14, 2026", u"06:55"}),
                         [](const auto &parameter) {
                             const std::string locale = parameter.param.locale;
                             return locale.substr(0, locale.find_first_of(".@"));
                         });

TEST_F(DateStylesTest, TakeTheLocaleForDatesBeforeTheGeneralOne)
{
    qputenv("LANG", "en_US.UTF-8");
    qputenv("LC_TIME", "de_DE.UTF-8");
    EXPECT_EQ(DateStyles::mediumDate(date), "14.03.2026");
    qputenv("LC_ALL", "fr_FR.UTF-8");
    EXPECT_EQ(DateStyles::mediumDate(date), "14 mars 2026");
}

TEST_F(DateStylesTest, TakeAnEmptyVariableForNone)
{
    qputenv("LC_ALL", "");
    qputenv("LANG", "de_DE.UTF-8");
    EXPECT_EQ(DateStyles::mediumDate(date), "14.03.2026");
}

TEST_F(DateStylesTest, AreInTheLocalZoneWhateverZoneTheDateIsIn)
{
    qputenv("LANG", "de_DE.UTF-8");
    setLocalZone("Pacific/Auckland");
    const QDateTime evening({2026, 3, 14}, {21, 30}, QTimeZone("Europe/Paris"));
    EXPECT_EQ(DateStyles::mediumDate(evening), "15.03.2026");
    EXPECT_EQ(DateStyles::shortTime(evening), "09:30");
}

TEST_F(DateStylesTest, AreInSummerTimeWhenTheDateIsWhateverTheSeasonNow)
{
    qputenv("LANG", "de_DE.UTF-8");
    EXPECT_EQ(DateStyles::shortTime(QDateTime({2026, 7, 1}, {10, 0}, Qt::UTC)), "12:00");
    EXPECT_EQ(DateStyles::shortTime(QDateTime({2026, 1, 1}, {10, 0}, Qt::UTC)), "11:00");
}

// Zones whose rules changed after ICU's own data were made.
TEST_F(DateStylesTest, FollowTheZoneDataOfTheMachine)
{
    qputenv("LANG", "de_DE.UTF-8");
    for (const char *const zone : {"Asia/Almaty", "America/Nuuk", "America/Mexico_City"}) {
        setLocalZone(zone);
        for (const QDate day : {QDate(2026, 3, 14), QDate(2026, 7, 1)}) {
            const QDateTime moment(day, {6, 55}, Qt::UTC);
            const std::time_t seconds = moment.toSecsSinceEpoch();
            std::tm local{};
            ::localtime_r(&seconds, &local);
            std::array<char, 16> expected{};
            ASSERT_GT(std::strftime(expected.data(), expected.size(), "%H:%M", &local), 0U);
            EXPECT_EQ(DateStyles::shortTime(moment), expected.data()) << zone;
        }
    }
}

TEST_F(DateStylesTest, AreNothingForNoDate)
{
    EXPECT_TRUE(DateStyles::mediumDate({}).isNull());
    EXPECT_TRUE(DateStyles::shortTime({}).isNull());
}
