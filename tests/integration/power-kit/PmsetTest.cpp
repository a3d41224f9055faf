// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "support/Identity.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QFile>
#include <QProcess>

#include <vector>

#include <sys/stat.h>

#include <gmock/gmock.h>

using namespace dozely;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
constexpr char farAway[] = "03/14/30 06:55:00"; // 2030
constexpr char later[] = "12/31/30 23:59:59";

struct Outcome {
    int status;
    std::string output;
    std::string error;
};

Outcome outcomeOf(QProcess &process)
{
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}
} // namespace

/// The program itself, on a system below a scratch root that has a real-time clock.
class PmsetTest : public testing::Test
{
protected:
    PmsetTest()
    {
        qputenv("TZ", "Europe/Paris");
        put("name", "rtc_fake\n");
        put("wakealarm", "");
    }

    void put(const QString &name, const QByteArray &content)
    {
        root.makeFolder("/sys/class/rtc/rtc0");
        QFile file(root.join("/sys/class/rtc/rtc0/" + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
    }
    qint64 alarm() const
    {
        QFile file(root.join("/sys/class/rtc/rtc0/wakealarm"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : -1;
    }
    Outcome run(const QStringList &arguments, const QString &program = PMSET)
    {
        QProcess process;
        process.start(program, QStringList{"--root", root.path()} + arguments);
        return outcomeOf(process);
    }
    static PowerEventScheduler &scheduler() { return *Port<PowerEventScheduler>::current(); }

    ScratchRoot root;
};

TEST_F(PmsetTest, SchedulesLocalTimesUnderItsOwnName)
{
    EXPECT_EQ(run({"schedule", "wake", farAway}).status, 0);
    EXPECT_EQ(run({"schedule", "poweron", later}).status, 0);
    const QDateTime first({2030, 3, 14}, {5, 55}, Qt::UTC);
    const QDateTime second({2030, 12, 31}, {22, 59, 59}, Qt::UTC);
    EXPECT_THAT(scheduler().scheduledEvents(),
                ElementsAre(PowerEventScheduler::Event{first, "pmset", "wake"},
                            PowerEventScheduler::Event{second, "pmset", "poweron"}));
    EXPECT_EQ(alarm(), first.toSecsSinceEpoch());
    EXPECT_TRUE(scheduler().alarm()->isOurs);
}

TEST_F(PmsetTest, ListsEverybodysEvents)
{
    EXPECT_EQ(run({"-g", "sched"}).output, "No power events are scheduled.\n");
    scheduler().schedule(QDateTime({2030, 7, 1}, {10, 0}, Qt::UTC), "com.dozely", "poweron");
    run({"schedule", "wake", farAway});
    const Outcome outcome = run({"-g", "sched"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output,
              "poweron at 07/01/30 12:00:00 by com.dozely\nwake at 03/14/30 06:55:00 by pmset\n");
}

TEST_F(PmsetTest, KeepsOneEventOfEqualTimeAndType)
{
    scheduler().schedule(QDateTime({2030, 3, 14}, {5, 55}, Qt::UTC), "com.dozely", "wake");
    EXPECT_EQ(run({"schedule", "wake", farAway}).status, 0);
    EXPECT_THAT(scheduler().scheduledEvents(), SizeIs(1));
    EXPECT_EQ(run({"schedule", "poweron", farAway}).status, 0);
    EXPECT_EQ(run({"schedule", "poweron", farAway}).status, 0);
    EXPECT_THAT(scheduler().scheduledEvents(), SizeIs(2));
}

TEST_F(PmsetTest, CancelsWhoeverScheduledIt)
{
    scheduler().schedule(QDateTime({2030, 3, 14}, {5, 55}, Qt::UTC), "com.dozely", "wake");
    run({"schedule", "wake", later});
    EXPECT_EQ(run({"cancel", "poweron", farAway}).status, 1) << "another type";
    EXPECT_EQ(run({"cancel", "wake", farAway}).status, 0);
    EXPECT_EQ(run({"cancel", "wake", farAway}).status, 1) << "it is gone";
    EXPECT_EQ(scheduler().scheduledEvents().size(), 1);
    EXPECT_EQ(run({"cancel", "wake", later}).status, 0);
    EXPECT_EQ(alarm(), 0);
}

TEST_F(PmsetTest, CancelsAllThatItScheduledItself)
{
    scheduler().schedule(QDateTime({2030, 3, 14}, {5, 55}, Qt::UTC), "com.dozely", "wake");
    EXPECT_EQ(run({"cancelall"}).status, 0);
    run({"schedule", "wake", later});
    run({"schedule", "poweron", later});
    EXPECT_EQ(run({"cancelall"}).status, 0);
    ASSERT_THAT(scheduler().scheduledEvents(), SizeIs(1));
    EXPECT_EQ(scheduler().scheduledEvents().first().owner, "com.dozely");
}

TEST_F(PmsetTest, RefusesWhatItDoesNotUnderstand)
{
    const QStringList wrong[] = {{},
                                 {"schedule"},
                                 {"schedule", "wake"},
                                 {"schedule", "sleep", farAway},
                                 {"schedule", "wake", "tomorrow"},
                                 {"schedule", "wake", "02/30/30 06:55:00"},
                                 {"schedule", "wake", "03/14/30 24:00:00"},
                                 {"schedule", "wake", "3/14/30 06:55:00"},
                                 {"schedule", "wake", farAway, "more"},
                                 {"cancel", "wake"},
                                 {"cancelall", "now"},
                                 {"-g", "everything"},
                                 {"-g", "sched", "more"},
                                 {"--unknown"}};
    for (const QStringList &words : wrong) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 2) << qPrintable(words.join(' '));
        EXPECT_THAT(outcome.error, HasSubstr("pmset: "));
    }
    EXPECT_THAT(scheduler().scheduledEvents(), IsEmpty());
}

TEST_F(PmsetTest, RefusesADateThatHasPassed)
{
    const Outcome outcome = run({"schedule", "wake", "03/14/20 06:55:00"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error, "pmset: the date has passed\n");
}

TEST_F(PmsetTest, SaysInWordsAboutTimeWhatTheClockCannotKeep)
{
    // A file of the kernel that takes 0, and no number of today's seconds, as a clock of short reach does.
    const QString alarm = root.join("/sys/class/rtc/rtc0/wakealarm");
    ASSERT_TRUE(QFile::remove(alarm));
    ASSERT_TRUE(QFile::link("/proc/self/oom_score_adj", alarm));
    const Outcome outcome = run({"schedule", "wake", farAway});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error, "pmset: the machine's clock cannot keep that time\n");
    EXPECT_THAT(scheduler().scheduledEvents(), IsEmpty());
}

TEST_F(PmsetTest, FailsWithoutAClock)
{
    ASSERT_TRUE(QFile::remove(root.join("/sys/class/rtc/rtc0/wakealarm")));
    const Outcome outcome = run({"schedule", "wake", farAway});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error, "pmset: No such device.\n");
}

TEST_F(PmsetTest, OnlyTheSystemsOwnerMayChange)
{
    // "/" belongs to root, and nothing here is root's: for root, become somebody else; for others, ask for
    // "/".
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([] {
        QProcess process;
        process.start(PMSET, {"--root", "/", "schedule", "wake", farAway});
        const Outcome outcome = outcomeOf(process);
        EXPECT_EQ(outcome.status, 3);
        EXPECT_EQ(outcome.error, "pmset: only root may change power events\n");
    }));
}

TEST_F(PmsetTest, TellsItsVersionAndHelp)
{
    EXPECT_THAT(run({"--version"}).output, HasSubstr("pmset "));
    const std::string help = run({"--help"}).output;
    EXPECT_THAT(help, HasSubstr("pmset schedule wake|poweron DATE"));
    EXPECT_THAT(help, HasSubstr("[ORDER [TYPE DATE]]"));
}

TEST_F(PmsetTest, HasItsOwnNameWhateverTheLinkToItIsCalled)
{
    const QString link = root.join("/another");
    ASSERT_TRUE(QFile::link(PMSET, link));
    EXPECT_THAT(run({"--version"}, link).output, testing::StartsWith("pmset "));
}

TEST_F(PmsetTest, ManyAtOnceLoseNoEvent)
{
    constexpr int count = 12;
    std::vector<std::unique_ptr<QProcess>> processes;
    for (int i = 0; i < count; ++i) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(
            PMSET, {"--root", root.path(), "schedule", "wake", QString("03/%1/30 06:55:00").arg(10 + i)});
    }
    for (const auto &process : processes)
        EXPECT_EQ(outcomeOf(*process).status, 0);
    EXPECT_THAT(scheduler().scheduledEvents(), SizeIs(count));
    EXPECT_EQ(alarm(), QDateTime({2030, 3, 10}, {5, 55}, Qt::UTC).toSecsSinceEpoch());
}

TEST_F(PmsetTest, ServesTheFallbackOfASystemThatItLiesIn)
{
    // The power manager's own scheduler fails, as where another program keeps it from its clock.
    class Failing : public PowerEventScheduler
    {
    public:
        qint32 schedule(const QDateTime &, const QString &, const QString &) override { return 1; }
        qint32 cancel(const QDateTime &, const QString &, const QString &) override { return 1; }
        QList<Event> scheduledEvents() override { return {}; }
        qint32 arm(Phase) override { return 1; }
        void keepArmed() override {}
        std::optional<Alarm> alarm() override { return {}; }
        Controller controller() override { return {}; }
        std::optional<QVariantMap> controllerProperties() override { return {}; }
        QString testAlarm(const QDateTime &) override { return {}; }
        qint32 putBackAlarm(const QDateTime &) override { return 0; }
    };
    root.makeFolder("/usr/bin");
    ASSERT_TRUE(QFile::copy(PMSET, root.join("/usr/bin/pmset")));
    const auto real = Port<PowerEventScheduler>::current();
    Port<PowerEventScheduler>::current() = std::make_shared<Failing>();
    const QDateTime date({2030, 3, 14}, {5, 55}, Qt::UTC);
    EXPECT_EQ(ZDRPowerManager::sharedInstance()->setAutoEventAtDate("AutoWake", date), -1);
    EXPECT_TRUE(root.logContent().contains("...OK !"));
    EXPECT_THAT(real->scheduledEvents(), ElementsAre(PowerEventScheduler::Event{date, "pmset", "wake"}));
}
