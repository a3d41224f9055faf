// SPDX-License-Identifier: MIT
#include "hosts/agent/TimeLeft.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;

using TimeLeft::inWords;
using TimeLeft::untilNextStep;

TEST(TimeLeft, IsSaidInMinutesAndInTheLastOneInSeconds)
{
    EXPECT_EQ(inWords(4min, "en"), "in 4 minutes");
    EXPECT_EQ(inWords(3min + 1ms, "en"), "in 4 minutes");
    EXPECT_EQ(inWords(1min, "en"), "in 1 minute");
    EXPECT_EQ(inWords(59s, "en"), "in 59 seconds");
    EXPECT_EQ(inWords(20s, "en"), "in 20 seconds");
    EXPECT_EQ(inWords(1ms, "en"), "in 1 second");
    EXPECT_EQ(inWords(0s, "en"), "now");
    EXPECT_EQ(inWords(-5s, "en"), "now");
    EXPECT_EQ(inWords(90min, "en"), "in 90 minutes");
    EXPECT_EQ(inWords(2h, "en"), "in 120 minutes");
    EXPECT_EQ(inWords(2h + 1ms, "en"), "in 2 hours");
    EXPECT_EQ(inWords(2h + 20min, "en"), "in 2 hours");
    EXPECT_EQ(inWords(48h, "en"), "in 48 hours");
    EXPECT_EQ(inWords(48h + 1ms, "en"), "in 2 days");
    EXPECT_EQ(inWords(71h, "en"), "in 3 days");
}

TEST(TimeLeft, IsSaidInTheLanguageOfTheOtherTexts)
{
    EXPECT_EQ(inWords(4min, "de"), "in 4 Minuten");
    EXPECT_EQ(inWords(1min, "de"), "in 1 Minute");
    EXPECT_EQ(inWords(20s, "fr"), "dans 20 secondes");
    EXPECT_EQ(inWords(20s, "es"), "dentro de 20 segundos");
    EXPECT_EQ(inWords(20s, "ja"), "20 秒後");
    EXPECT_TRUE(inWords(2min, "ar").contains("دقيقتين")) << "the dual";
    EXPECT_TRUE(inWords(4min, "ar").contains("دقائق"));
}

TEST(TimeLeft, StepsAtMostTenTimesASecondAndExactlyWhenTheWordsChange)
{
    for (const auto whole : {5s, 20s, 60s, 90s, 600s, 7200s, 86400s}) {
        std::chrono::milliseconds left = whole;
        int steps = 0;
        int stepsOfASecond = 0;
        std::chrono::milliseconds secondBegan = left;
        QString words = inWords(left, "en");
        while (left > 0ms) {
            const auto step = std::min(untilNextStep(left, whole), left);
            ASSERT_GT(step, 0ms);
            // Nothing that the words say changes on the way, unless they are rounded.
            if (step > 1ms && left <= 2h) {
                ASSERT_EQ(inWords(left - step + 1ms, "en"), words) << left.count() << " of " << whole.count();
            }
            left -= step;
            words = inWords(left, "en");
            ++steps;
            stepsOfASecond = secondBegan - left < 1s ? stepsOfASecond + 1 : 1;
            if (secondBegan - left >= 1s)
                secondBegan = left;
            ASSERT_LE(stepsOfASecond, 10);
        }
        EXPECT_LE(steps, whole < 86400s ? 600 : 2000);
    }
}
