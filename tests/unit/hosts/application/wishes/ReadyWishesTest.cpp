// SPDX-License-Identifier: MIT
#include "hosts/application/wishes/ReadyWishes.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/common/schedules/SchedulePolicies.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

using namespace dozely;

/// It is Saturday, 2026-03-14 06:00 UTC, 07:00 in Berlin.
class ReadyWishesTest : public testing::Test
{
protected:
    ReadyWishesTest()
    {
        qputenv("TZ", "Europe/Berlin");
        Port<Clock>::current() = clock;
    }
    static QString times(const QVariantMap &wish)
    {
        const QVariantMap repeats = wish.value("repeats").toMap();
        return repeats.value("rule").toString() + " " + repeats.value("localStart").toString() + " " +
               wish.value("date").toString();
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
};

TEST_F(ReadyWishesTest, BeginWithTheirNextTimeByClocksHere)
{
    EXPECT_EQ(times(ReadyWishes::switchOffInTheEvening()),
              "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR 2026-03-16T22:00:00 2026-03-16T21:00:00Z");
    EXPECT_EQ(times(ReadyWishes::wakeWithMusic()),
              "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR 2026-03-16T06:55:00 2026-03-16T05:55:00Z");
    EXPECT_EQ(times(ReadyWishes::backupAtNight()), "FREQ=DAILY 2026-03-15T03:00:00 2026-03-15T02:00:00Z");
    clock->jumpTo(QDateTime({2026, 3, 29}, {0, 30}, Qt::UTC)); // 01:30, and clocks skip 02:00 to 03:00
    EXPECT_EQ(times(ReadyWishes::backupAtNight()), "FREQ=DAILY 2026-03-29T03:00:00 2026-03-29T01:00:00Z");
}

TEST_F(ReadyWishesTest, SayNothingThatTheDoorDoesNotKnow)
{
    const QStringList known{"name",     "isEnabled", "bundlePath",  "parameters",   "date",
                            "timeZone", "actsIn",    "owner",       "repeats",      "missed",
                            "overlap",  "after",     "missedLimit", "staysWhenOver"};
    ASSERT_EQ(ReadyWishes::all().size(), 3);
    for (const QVariantMap &wish : ReadyWishes::all()) {
        for (const QString &key : wish.keys())
            EXPECT_TRUE(known.contains(key)) << qPrintable(key);
        EXPECT_FALSE(wish.value("name").toString().isEmpty());
        EXPECT_TRUE(
            wish.value("bundlePath").toString().startsWith("/Library/Application Support/Dozely/PlugIns/"));
        EXPECT_EQ(wish.value("timeZone"), QString());
        EXPECT_EQ(wish.value("isEnabled"), QVariant(true));
    }
}

TEST_F(ReadyWishesTest, TheEveningIsAnnounced)
{
    const QVariantMap wish = ReadyWishes::switchOffInTheEvening();
    EXPECT_TRUE(wish.value("bundlePath").toString().endsWith("/PowerOff.plugin"));
    EXPECT_EQ(wish.value("parameters").toMap(), QVariantMap({{"Alert", 1}, {"Delay before alert", 300}}));
    EXPECT_FALSE(wish.contains("actsIn")); // the bundle says it
}

TEST_F(ReadyWishesTest, TheMusicPlaysInTheSessionOfAMachineThatIsWoken)
{
    const QVariantMap wish = ReadyWishes::wakeWithMusic();
    const QVariantMap parameters = wish.value("parameters").toMap();
    EXPECT_EQ(wish.value("actsIn"), "session");
    EXPECT_TRUE(parameters.value("Program").toString().startsWith("/usr/bin/"));
    EXPECT_EQ(parameters.value("Arguments").toList().size(), 1);
    EXPECT_EQ(parameters.value("Needs Wake Up"), 1);
    EXPECT_EQ(parameters.value("Needs Startup"), 1);
}

TEST_F(ReadyWishesTest, TheBackupReplacesTheOldOneWhenTheNewOneIsWhole)
{
    const ScratchRoot root;
    const QVariantMap parameters = ReadyWishes::backupAtNight().value("parameters").toMap();
    QStringList arguments = parameters.value("Arguments").toStringList();
    const QString home = root.makeFolder("/home");
    const QString archive = root.makeFolder("/backups") + "/home.tar.gz";
    arguments.last().replace("/home;", home + ";").replace("/var/backups", root.join("/backups"));
    const QString program = parameters.value("Program").toString();
    EXPECT_EQ(QProcess::execute(program, arguments), 0);
    EXPECT_GT(QFileInfo(archive).size(), 0);
    EXPECT_EQ(QFileInfo(archive).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
    const QDateTime before = QFileInfo(archive).lastModified();
    ASSERT_TRUE(QDir().rmdir(home));
    EXPECT_NE(QProcess::execute(program, arguments), 0); // there is nothing to keep
    EXPECT_EQ(QFileInfo(archive).lastModified(), before);
}

TEST_F(ReadyWishesTest, TheBackupIsRootsAndTheMachineSleepsAgain)
{
    const QVariantMap wish = ReadyWishes::backupAtNight();
    EXPECT_EQ(wish.value("actsIn"), "daemon");
    EXPECT_TRUE(SchedulePolicies::afterActionNamed(wish.value("after").toString()) == AfterAction::Sleep);
    EXPECT_TRUE(SchedulePolicies::missedPolicyNamed(wish.value("missed").toString()) ==
                MissedPolicy::RunOnce);
    EXPECT_EQ(wish.value("parameters").toMap().value("Needs Wake Up"), 1);
    EXPECT_EQ(wish.value("parameters").toMap().value("Program"), "/bin/sh");
}
