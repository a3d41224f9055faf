// SPDX-License-Identifier: MIT
#include "PerformancesFixture.h"
#include "hosts/common/performing/PlaceLock.h"
#include "support/SignalProcess.h"

#include <csignal>
#include <ostream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

using testing::HasSubstr;

enum class Way { Forked, InUnits };

void PrintTo(Way way, std::ostream *stream)
{
    *stream << (way == Way::Forked ? "Forked" : "InUnits");
}

/// The same is expected of both ways to start a performer.
class PerformancesTest : public PerformancesFixture, public testing::WithParamInterface<Way>
{
protected:
    void SetUp() override
    {
        if (GetParam() == Way::InUnits)
            startManager();
        start();
    }
};

INSTANTIATE_TEST_SUITE_P(EachWay, PerformancesTest, testing::Values(Way::Forked, Way::InUnits),
                         testing::PrintToStringParamName());

TEST_P(PerformancesTest, TellTheEndOfEachOnceAndLeaveNothing)
{
    for (const QString name : {"one", "two"}) {
        ASSERT_TRUE(prepare(name));
        ASSERT_TRUE(performances->go(name));
    }
    EXPECT_EQ(outcome("one").failure, "");
    EXPECT_TRUE(outcome("two").hasBegun);
    EXPECT_EQ(marks(), "acted\nacted\n");
    EXPECT_EQ(files(), QStringList());
    EXPECT_FALSE(performances->go("one")) << "it has ended";
}

TEST_P(PerformancesTest, WaitForTheirMoment)
{
    ASSERT_TRUE(prepare("one"));
    ASSERT_TRUE(waitUntil([&] { return PlaceLock::isHeld(folder + "/one"); }));
    EXPECT_EQ(marks(), "");
    ASSERT_TRUE(performances->go("one"));
    EXPECT_TRUE(outcome("one").hasBegun);
}

TEST_P(PerformancesTest, TellThatOneEndedBeforeItsMoment)
{
    ASSERT_TRUE(prepare("one", "throw when asked"));
    EXPECT_EQ(outcome("one").failure, "the plug-in was told to");
    EXPECT_FALSE(outcome("one").hasBegun);
    EXPECT_FALSE(performances->go("one"));
}

TEST_P(PerformancesTest, SayThatNoneCouldBeStarted)
{
    performances = make(root.join("/no-performer"));
    ASSERT_TRUE(prepare("one"));
    EXPECT_THAT(failure("one"),
                HasSubstr(GetParam() == Way::Forked ? "no-performer could not be started"
                                                    : "ended without a word: the service manager"));
    EXPECT_FALSE(outcome("one").hasBegun);
    EXPECT_EQ(files(), QStringList());
}

TEST_P(PerformancesTest, GoOnWithoutTheirHostAndAreFoundByTheNext)
{
    ASSERT_TRUE(prepare("one", "wait"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    start();
    ASSERT_TRUE(performances->adopt("one", noting("one")));
    write("/marks.go", "");
    EXPECT_EQ(outcome("one").failure, "");
    EXPECT_EQ(marks(), "acted\nfinished\n");
    EXPECT_EQ(files(), QStringList());
}

TEST_P(PerformancesTest, ThatEndedWithoutTheirHostAreToldToTheNext)
{
    ASSERT_TRUE(prepare("one", "wait, then crash"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    start();
    write("/marks.go", "");
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder + "/one.outcome"); }));
    ASSERT_TRUE(performances->adopt("one", noting("one")));
    EXPECT_THAT(outcome("one").failure.toStdString(), HasSubstr("signal 11"));
}

TEST_P(PerformancesTest, ThatWereNotLetGoNeverBegin)
{
    ASSERT_TRUE(prepare("one"));
    ASSERT_TRUE(waitUntil([&] { return PlaceLock::isHeld(folder + "/one"); }));
    start();
    ASSERT_TRUE(waitUntil([&] { return !PlaceLock::isHeld(folder + "/one"); }));
    EXPECT_FALSE(performances->adopt("one", noting("one")));
    EXPECT_EQ(marks(), "");
}

TEST_P(PerformancesTest, WhosePerformerWasKilledAreToldAsThat)
{
    ASSERT_TRUE(prepare("one", "hang"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    const QList<pid_t> processes = processesOfAction();
    ASSERT_EQ(processes.size(), 3);
    ASSERT_TRUE(signalProcess(processes[0], SIGKILL));
    EXPECT_EQ(failure("one"), GetParam() == Way::Forked
                                  ? "its performer ended without a word"
                                  : "its performer ended without a word: the service manager calls that "
                                    "\"signal\"");
    EXPECT_TRUE(waitUntil([&] { return !isAlive(processes[1]); })) << "nothing goes on unwatched";
    EXPECT_TRUE(waitUntil([&] { return !isAlive(processes[2]); }));
}

TEST_P(PerformancesTest, AreTakenToGoOnWhileNobodyCanTell)
{
    ASSERT_EQ(::symlink("nowhere", QFile::encodeName(folder + "/one").constData()), 0);
    EXPECT_TRUE(PlaceLock::isHeld(folder + "/one")) << "it cannot be opened";
    EXPECT_FALSE(PlaceLock::isHeld(folder + "/two"));
}

TEST_P(PerformancesTest, TakeAPlaceThatWasLeftBehind)
{
    write("/var/lib/dozely/performing/one", "");
    ASSERT_TRUE(prepare("one"));
    ASSERT_TRUE(performances->go("one"));
    EXPECT_EQ(outcome("one").failure, "");
}

TEST_P(PerformancesTest, AreNoneInThePlaceOfOneThatGoesOn)
{
    write("/var/lib/dozely/performing/one", "");
    const auto held = PlaceLock::take(folder + "/one");
    ASSERT_TRUE(held);
    EXPECT_FALSE(prepare("one"));
    EXPECT_TRUE(PlaceLock::isHeld(folder + "/one"));
}

TEST_P(PerformancesTest, GoOnInTheSpareFolderWhileNothingCanBeMadeInTheOther)
{
    root.makeFolder("/spare");
    const auto startAnother = [&] {
        performances = make(PERFORMER_PROGRAM, Whose::Machine, root.join("/no-folder"), root.join("/spare"));
    };
    startAnother();
    ASSERT_TRUE(prepare("one", "wait"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    startAnother();
    ASSERT_TRUE(performances->adopt("one", noting("one")));
    write("/marks.go", "");
    EXPECT_EQ(outcome("one").failure, "");
    EXPECT_TRUE(QDir(root.join("/spare")).entryList(QDir::Files).isEmpty());
}

TEST_P(PerformancesTest, AreToldAgainUntilTheHostHasThemOnDisk)
{
    ASSERT_TRUE(performances->prepare("one", order, [this](const PerformanceOutcome &outcome) {
        performances->keep("one");
        outcomes["kept"] += outcome;
    }));
    ASSERT_TRUE(performances->go("one"));
    EXPECT_EQ(outcome("kept").failure, "");
    EXPECT_EQ(files(), QStringList("one.outcome"));
    start();
    performances->sweep({"one"});
    ASSERT_TRUE(performances->adopt("one", [this](const PerformanceOutcome &outcome) {
        performances->keep("one");
        outcomes["again"] += outcome;
    }));
    EXPECT_EQ(outcome("again"), outcome("kept"));
    performances->forget("one");
    EXPECT_EQ(files(), QStringList());
}

TEST_P(PerformancesTest, TellThatTheyHaveBegunBeforeTheyEnd)
{
    order.parameters.insert("Do", "wait");
    int begun = 0;
    ASSERT_TRUE(performances->prepare("one", order, noting("one"), [&] { ++begun; }));
    ASSERT_TRUE(waitUntil([&] { return PlaceLock::isHeld(folder + "/one"); }));
    EXPECT_EQ(begun, 0);
    ASSERT_TRUE(performances->go("one"));
    EXPECT_TRUE(waitUntil([&] { return begun == 1; }));
    EXPECT_TRUE(outcomes["one"].isEmpty());
    write("/marks.go", "");
    EXPECT_EQ(outcome("one").failure, "");
    EXPECT_EQ(begun, 1);
}

TEST_P(PerformancesTest, AreTakenBackWhileNoPerformerHasComeToThem)
{
    // One that takes its time before it begins.
    const QString hold = root.join("/hold");
    const QString steps = root.join("/steps");
    ASSERT_EQ(::mkfifo(qPrintable(hold), 0600), 0);
    write("/slow", QString("#!/bin/sh\necho begun >> '%1'\nread go < '%2'\n'%3' \"$@\"\necho ended >> '%1'\n")
                       .arg(steps, hold, PERFORMER_PROGRAM)
                       .toUtf8());
    ASSERT_EQ(::chmod(qPrintable(root.join("/slow")), 0755), 0);
    performances = make(root.join("/slow"));
    ASSERT_TRUE(prepare("one"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return content("/steps") == "begun\n"; }));
    EXPECT_TRUE(performances->takeBack("one"));
    EXPECT_FALSE(performances->takeBack("one")) << "there is none any more";
    EXPECT_EQ(files(), QStringList());
    QFile late(hold);
    ASSERT_TRUE(late.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    EXPECT_EQ(late.write("\n"), 1);
    EXPECT_TRUE(waitUntil([&] { return content("/steps") == "begun\nended\n"; }));
    EXPECT_EQ(marks(), "");
    EXPECT_TRUE(outcomes["one"].isEmpty());
}

TEST_P(PerformancesTest, AreNotTakenBackOnceAPerformerHasCome)
{
    ASSERT_TRUE(prepare("one", "hang"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return processesOfAction().size() == 3; }));
    EXPECT_FALSE(performances->takeBack("one"));
    // It has ended without a word, and this process has not heard of that.
    for (const pid_t process : processesOfAction())
        ASSERT_TRUE(signalProcess(process, SIGKILL));
    while (PlaceLock::isHeld(folder + "/one")) {
    }
    EXPECT_FALSE(performances->takeBack("one"));
    EXPECT_THAT(failure("one"), HasSubstr("ended without a word"));
}

TEST_P(PerformancesTest, EndWhenTheyAreAskedTo)
{
    ASSERT_TRUE(prepare("adopted", "wait"));
    ASSERT_TRUE(performances->go("adopted"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    start();
    ASSERT_TRUE(prepare("own", "wait"));
    ASSERT_TRUE(performances->go("own"));
    ASSERT_TRUE(performances->adopt("adopted", noting("adopted")));
    ASSERT_TRUE(prepare("only ready", "wait"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\nacted\n"; }));
    performances->askAllToEnd();
    for (const QString name : {"adopted", "own"})
        EXPECT_EQ(outcome(name).failure, "it was asked to end") << name.toStdString();
    EXPECT_FALSE(outcome("only ready").failure.isEmpty());
    EXPECT_EQ(marks(), "acted\nacted\n") << "they did not come to their ends";
}

TEST_P(PerformancesTest, LeaveWordForAHostThatHasKeptNothing)
{
    ASSERT_TRUE(prepare("one", "wait"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    EXPECT_TRUE(performances->ofEarlierHosts().isEmpty()) << "it is this one's";
    start();
    const auto earlier = performances->ofEarlierHosts();
    ASSERT_EQ(earlier.keys(), QStringList("one"));
    EXPECT_EQ(earlier["one"].bundlePath, order.bundlePath);
    EXPECT_EQ(earlier["one"].parameters, order.parameters);
    EXPECT_EQ(earlier["one"].date, order.date);
    write("/marks.go", "");
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder + "/one.outcome"); }));
}

TEST_P(PerformancesTest, ThatGoOnAndNobodyKnowsAreSweptWhenTheyEnd)
{
    ASSERT_TRUE(prepare("one", "wait"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    start();
    performances->sweep({});
    EXPECT_EQ(files(), QStringList("one"));
    write("/marks.go", "");
    EXPECT_TRUE(waitUntil([&] { return files().isEmpty(); }));
    EXPECT_EQ(marks(), "acted\nfinished\n");
}

TEST_P(PerformancesTest, HaveNothingLeftOfWhatNobodyAsksForAnyMore)
{
    ASSERT_TRUE(prepare("kept", "wait, then crash"));
    ASSERT_TRUE(performances->go("kept"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    start();
    write("/marks.go", "");
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder + "/kept.outcome"); }));
    write("/var/lib/dozely/performing/old", "");
    write("/var/lib/dozely/performing/old.outcome", "");
    write("/var/lib/dozely/performing/old.outcome.new", "");
    write("/var/lib/dozely/performing/kept.making", "");
    performances->sweep({"kept"});
    EXPECT_EQ(files(), QStringList({"kept", "kept.outcome"}));
}

TEST_P(PerformancesTest, OfManyAtOnceAllEnd)
{
    constexpr int many = 60;
    for (int i = 0; i < many; ++i) {
        ASSERT_TRUE(prepare(QString::number(i)));
        ASSERT_TRUE(performances->go(QString::number(i)));
    }
    for (int i = 0; i < many; ++i)
        EXPECT_TRUE(outcome(QString::number(i)).hasBegun);
    EXPECT_EQ(marks().count('\n'), many);
}

TEST_P(PerformancesTest, ThatAreCalledOffAreNotInTheWayOfTheNextOfTheirName)
{
    for (int i = 1; i <= 20; ++i) {
        ASSERT_TRUE(prepare("one"));
        performances->callOff("one");
        ASSERT_TRUE(prepare("one"));
        ASSERT_TRUE(performances->go("one"));
        EXPECT_EQ(failure("one"), "");
        outcomes.clear();
        EXPECT_EQ(marks().count('\n'), i);
    }
}

TEST_P(PerformancesTest, KeepTheLimitsOfTheirActions)
{
    order.limits.program.nice = 7;
    order.limits.program.ioWeight = 25;
    order.limits.program.memory = muchMemory;
    ASSERT_TRUE(prepare("one", "tell limits"));
    ASSERT_TRUE(performances->go("one"));
    EXPECT_EQ(failure("one"), "");
    EXPECT_EQ(linesAbout("is not to be had"), QStringList());
    // The stand-in for the service manager keeps none itself: there, nobody may have kept them.
    const QByteArray asStarted =
        "acted\nnice " + QByteArray::number(::getpriority(PRIO_PROCESS, 0)) + " io 0/0 data -1\n";
    EXPECT_EQ(marks(), GetParam() == Way::Forked ? "acted\nnice 7 io 2/6 data 109951162777600\n" : asStarted);
}

TEST_P(PerformancesTest, WhoseOutputNobodyReadsGoOn)
{
    ASSERT_TRUE(prepare("one", "print"));
    ASSERT_TRUE(performances->go("one"));
    EXPECT_TRUE(outcome("one").output.endsWith("line 100000\n"));
    EXPECT_EQ(failure("one"), "");
}
