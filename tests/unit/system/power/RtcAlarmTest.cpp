// SPDX-License-Identifier: MIT
#include "support/PrintTo.h"
#include "unit/system/power/FakeRtc.h"

#include <QDir>

#include <unistd.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class RtcAlarmTest : public RtcFixture
{
protected:
    RtcAlarm alarm() { return RtcAlarm::find(rtc.writer()).value(); }
    qint64 reached = 0;
};

TEST_F(RtcAlarmTest, FindsNoneOnAMachineWithoutClocks)
{
    ASSERT_TRUE(QDir(root.join("/sys/class/rtc")).removeRecursively());
    EXPECT_FALSE(RtcAlarm::find());
}

TEST_F(RtcAlarmTest, FindsNoneWhereNoClockHasAnAlarm)
{
    ASSERT_TRUE(QFile::remove(root.join("/sys/class/rtc/rtc0/wakealarm")));
    EXPECT_FALSE(RtcAlarm::find());
}

TEST_F(RtcAlarmTest, ChoosesTheFirstClockThatHasAnAlarm)
{
    ASSERT_TRUE(QFile::remove(root.join("/sys/class/rtc/rtc0/wakealarm")));
    const FakeRtc tenth(root, "rtc10");
    const FakeRtc second(root, "rtc2");
    const FakeRtc first(root, "rtc1", false);
    const auto found = RtcAlarm::find();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->device(), "rtc2");
    EXPECT_EQ(found->clockName(), "rtc_fake rtc2");
}

TEST_F(RtcAlarmTest, WritesZeroThenTheTimeAndReadsItBack)
{
    EXPECT_EQ(alarm().set(in(600), &reached), 0);
    EXPECT_THAT(rtc.written, ElementsAre("0", QByteArray::number(in(600))));
    EXPECT_EQ(reached, in(600));
    EXPECT_EQ(alarm().armedFor(), in(600));
}

TEST_F(RtcAlarmTest, ReplacesAnAlarmThatIsSet)
{
    rtc.setAlarm(in(100));
    EXPECT_EQ(alarm().set(in(600), &reached), 0);
    EXPECT_EQ(rtc.alarm(), in(600));
}

TEST_F(RtcAlarmTest, RefusesTimesThatHavePassedWithoutTouchingTheAlarm)
{
    rtc.setAlarm(in(100));
    EXPECT_EQ(alarm().set(in(0), &reached), EINVAL);
    EXPECT_EQ(alarm().set(in(-5), &reached), EINVAL);
    EXPECT_THAT(rtc.written, IsEmpty());
    EXPECT_EQ(rtc.alarm(), in(100));
}

TEST_F(RtcAlarmTest, NoticesAnAlarmThatIsNotWhatWasSet)
{
    rtc.isDeaf = true;
    EXPECT_EQ(alarm().set(in(600), &reached), EIO);
    rtc.setAlarm(in(1200));
    EXPECT_EQ(alarm().set(in(600), &reached), EIO);
}

TEST_F(RtcAlarmTest, TakesWholeMinutesFromAClockThatKnowsNoSeconds)
{
    rtc.resolution = 60;
    EXPECT_EQ(alarm().set(in(630), &reached), 0);
    EXPECT_EQ(reached, in(600));
}

TEST_F(RtcAlarmTest, PassesOnWhatTheKernelRefuses)
{
    rtc.failure = EACCES;
    EXPECT_EQ(alarm().set(in(600), &reached), EACCES);
    EXPECT_EQ(alarm().setTowards(in(600), &reached), EACCES);
    EXPECT_EQ(alarm().clear(), EACCES);
    EXPECT_THAT(rtc.written, ElementsAre("0", "0", "0"));
}

TEST_F(RtcAlarmTest, GoesAsFarAsTheClockReaches)
{
    constexpr qint64 hour = 3600;
    constexpr qint64 day = 86'400;
    const std::pair<qint64, qint64> cases[] = {
        {1000, 900},     {hour, hour - 60},         {12 * hour, 12 * hour - 60},
        {day, day - 60}, {31 * day, 28 * day - 60}, {366 * day, 365 * day - 60}};
    for (const auto &[horizon, step] : cases) {
        rtc.horizon = horizon;
        EXPECT_EQ(alarm().set(in(400 * day), &reached), EINVAL);
        EXPECT_EQ(alarm().setTowards(in(400 * day), &reached), 0);
        EXPECT_EQ(reached, in(step));
    }
}

TEST_F(RtcAlarmTest, TakesNoStepBeyondTheTimeItself)
{
    rtc.horizon = 10;
    EXPECT_EQ(alarm().setTowards(in(3600), &reached), EINVAL);
    EXPECT_EQ(rtc.alarm(), 0);
}

TEST_F(RtcAlarmTest, IsNotSetWhenTheFileSaysSo)
{
    EXPECT_FALSE(alarm().armedFor());
    rtc.setAlarm(in(100));
    EXPECT_EQ(alarm().armedFor(), in(100));
    pass(101s);
    EXPECT_FALSE(alarm().armedFor()) << "it has gone off";
}

TEST_F(RtcAlarmTest, FollowsAClockInLocalTime)
{
    rtc.setOffset(7200);
    EXPECT_EQ(alarm().fromDate(now().addSecs(60)), in(7260));
    EXPECT_EQ(alarm().toDate(in(7260)), now().addSecs(60));
    EXPECT_EQ(alarm().set(alarm().fromDate(now().addSecs(60)), &reached), 0);
    EXPECT_EQ(rtc.alarm(), in(7260));
}

TEST_F(RtcAlarmTest, TakesASecondsDifferenceForNone)
{
    rtc.setOffset(-1);
    EXPECT_EQ(alarm().fromDate(now().addSecs(60)), in(60));
    rtc.setOffset(-12 * 3600 + 2);
    EXPECT_EQ(alarm().fromDate(now().addSecs(60)), in(60 - 12 * 3600));
}

TEST_F(RtcAlarmTest, FollowsAClockThatIsWrong)
{
    for (const qint64 offset : {-1'000'000'007LL, -40LL, 3LL, 500'000'123LL}) {
        rtc.setOffset(offset);
        EXPECT_EQ(alarm().fromDate(now().addSecs(60)), in(60 + offset));
    }
}

TEST_F(RtcAlarmTest, AsksWhetherAMuteClockKeepsLocalTime)
{
    qputenv("TZ", "Asia/Kolkata"); // five and a half hours
    ::tzset();
    rtc.stopTelling();
    EXPECT_EQ(alarm().fromDate(now()), in(0));
    root.makeFolder("/etc");
    const auto putAdjtime = [this](const QByteArray &content) {
        QFile file(root.join("/etc/adjtime"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
    };
    putAdjtime("0.0 0 0.0\n0\nLOCAL\n");
    EXPECT_EQ(alarm().fromDate(now()), in(19'800));
    putAdjtime("0.0 0 0.0\n0\nUTC\n");
    EXPECT_EQ(alarm().fromDate(now()), in(0));
    putAdjtime("LOCAL\n");
    EXPECT_EQ(alarm().fromDate(now()), in(0)) << "it is the third line that tells";
}

TEST_F(RtcAlarmTest, CountsAFractionAsAWholeSecond)
{
    EXPECT_EQ(alarm().fromDate(now().addMSecs(60'001)), in(61));
}

TEST_F(RtcAlarmTest, WritesToTheKernelsFile)
{
    const auto real = RtcAlarm::find();
    ASSERT_TRUE(real);
    EXPECT_EQ(real->set(in(600), &reached), 0);
    EXPECT_EQ(rtc.alarm(), in(600));
    EXPECT_EQ(RtcAlarm::writeKernelFile(root.join("/sys/class/rtc/rtc7/wakealarm"), "0"), ENOENT);
}
