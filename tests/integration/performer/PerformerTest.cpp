// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ChildProgram.h"
#include "DozelyKit/system/machine/RunningProgram.h"
#include "PerformerFixture.h"
#include "hosts/common/performing/OrderStream.h"
#include "hosts/common/performing/PerformanceOutcome.h"
#include "hosts/common/performing/PlaceLock.h"
#include "support/SignalProcess.h"

#include <csignal>
#include <sys/socket.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

/// One performer, a real process, below a scratch root.
class PerformerTest : public PerformerFixture
{
protected:
    PerformerTest()
    {
        order.place = folder + "/one";
        EXPECT_TRUE(PlaceLock::make(order.place));
    }

    void start()
    {
        int ends[2];
        ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        host.reset(ends[0]);
        const Descriptor theirs(ends[1]);
        ChildProgram program{PERFORMER_PROGRAM, {"--root", root.path()}, {}};
        program.input = theirs.get();
        performer = program.start([this](const Result<ChildProgram::Ending> &how) { ending = how; });
    }

    /// Has it do something, at once; what became of it.
    PerformanceOutcome perform(const QString &wish)
    {
        begin(wish);
        return outcome();
    }
    void begin(const QString &wish)
    {
        order.parameters.insert("Do", wish);
        start();
        EXPECT_TRUE(OrderStream::send(host.get(), order));
        EXPECT_TRUE(OrderStream::go(host.get()));
    }
    PerformanceOutcome outcome()
    {
        EXPECT_TRUE(waitUntil([&] { return ending.has_value(); }));
        QFile file(PerformanceOutcome::pathBeside(order.place));
        if (!file.open(QIODevice::ReadOnly))
            return {false, "there is no outcome"};
        const auto read = PerformanceOutcome::fromData(file.readAll());
        return read ? *read : PerformanceOutcome{false, read.error().text};
    }
    int exitStatus() const { return ending && *ending ? (*ending)->status : -1; }

    Descriptor host;
    std::optional<Result<ChildProgram::Ending>> ending;
    std::unique_ptr<RunningProgram> performer;
};

TEST_F(PerformerTest, PerformsOnceAndWritesDownThatItDid)
{
    const PerformanceOutcome done = perform("nothing");
    EXPECT_TRUE(done.hasBegun);
    EXPECT_EQ(done.failure, "");
    EXPECT_EQ(done.exitStatus, 0);
    EXPECT_TRUE(done.ended.isValid());
    EXPECT_EQ(marks(), "acted\n");
    EXPECT_EQ(exitStatus(), 0);
    EXPECT_TRUE(PlaceLock::takeBack(order.place)) << "the lock is free again";
}

TEST_F(PerformerTest, ActsWhenItIsLetGoAndNotBefore)
{
    start();
    ASSERT_TRUE(OrderStream::send(host.get(), order));
    ASSERT_TRUE(waitUntil([&] { return PlaceLock::isHeld(order.place); })) << "it is ready";
    EXPECT_EQ(marks(), "");
    EXPECT_FALSE(PlaceLock::takeBack(order.place)) << "it is too late for that";
    EXPECT_TRUE(OrderStream::go(host.get()));
    EXPECT_TRUE(outcome().hasBegun);
    EXPECT_EQ(marks(), "acted\n");
}

TEST_F(PerformerTest, DoesNothingForAHostThatEndsBeforeItIsTime)
{
    start();
    ASSERT_TRUE(OrderStream::send(host.get(), order));
    host.reset();
    ASSERT_TRUE(waitUntil([&] { return ending.has_value(); }));
    EXPECT_EQ(marks(), "");
    EXPECT_FALSE(QFile::exists(PerformanceOutcome::pathBeside(order.place)));
}

TEST_F(PerformerTest, GoesOnWhenTheHostEndsAfterwards)
{
    begin("go on");
    host.reset();
    EXPECT_EQ(outcome().failure, "");
    EXPECT_EQ(marks(), "acted\nfinished\n");
}

TEST_F(PerformerTest, TellsTheExitStatusOfTheProgramThatAnActionRan)
{
    order.parameters.insert("Exit Status", 3LL);
    EXPECT_EQ(perform("go on").exitStatus, 3);
    EXPECT_EQ(exitStatus(), 1);
}

TEST_F(PerformerTest, TellsWhyThePlugInSaysThatItFailedWhereThereIsNoStatus)
{
    order.parameters.insert("Failure", "nobody answers");
    order.parameters.insert("Exit Status", 3LL);
    const PerformanceOutcome ended = perform("go on");
    EXPECT_EQ(ended.exitStatus, 3);
    EXPECT_EQ(ended.failure, "");
    ending.reset();
    order.place = folder + "/another";
    EXPECT_TRUE(PlaceLock::make(order.place));
    order.parameters.insert("Exit Status", -1LL);
    EXPECT_EQ(perform("go on").failure, "nobody answers");
}

TEST_F(PerformerTest, TellsThePlugInItsScheduleBeforeTheParameters)
{
    EXPECT_EQ(perform("tell its schedule when asked").failure, "");
    EXPECT_EQ(marks(), "Backup\nacted\n");
}

TEST_F(PerformerTest, TellsThePlugInNoScheduleThatIsNotKnown)
{
    order.schedule = order.bundlePath.section('/', -1);
    EXPECT_EQ(perform("tell its schedule when asked").failure, "");
    EXPECT_EQ(marks(), "\nacted\n");
}

TEST_F(PerformerTest, SaysWhatAnActionRaised)
{
    const PerformanceOutcome raised = perform("throw");
    EXPECT_TRUE(raised.hasBegun);
    EXPECT_EQ(raised.failure, "the plug-in was told to");
}

TEST_F(PerformerTest, SaysThatABundleThatRaisesBeforeItsActionHasNotBegun)
{
    const PerformanceOutcome raised = perform("throw when asked");
    EXPECT_FALSE(raised.hasBegun);
    EXPECT_EQ(raised.failure, "the plug-in was told to");
    EXPECT_EQ(marks(), "");
}

TEST_F(PerformerTest, SaysThatABundleIsNotThere)
{
    order.bundlePath += ".gone";
    const PerformanceOutcome refused = perform("nothing");
    EXPECT_FALSE(refused.hasBegun);
    EXPECT_THAT(refused.failure.toStdString(), StartsWith("There is no bundle"));
}

TEST_F(PerformerTest, SaysHowAnActionEndedItsProcess)
{
    EXPECT_EQ(perform("exit").failure, "its process ended by itself with status 0");
    EXPECT_EQ(exitStatus(), 1);
}

TEST_F(PerformerTest, SaysBySignalWhichAnActionWasEnded)
{
    const PerformanceOutcome crashed = perform("crash");
    EXPECT_TRUE(crashed.hasBegun);
    EXPECT_THAT(crashed.failure.toStdString(), HasSubstr("was ended by signal 11"));
}

TEST_F(PerformerTest, EndsAnActionThatTakesTooLong)
{
    order.limits.longest = 1s;
    EXPECT_EQ(perform("hang").failure, "it took longer than 1 s");
}

TEST_F(PerformerTest, EndsAnActionWhenItIsAskedTo)
{
    begin("hang");
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    performer->sendSignal(SIGTERM);
    EXPECT_EQ(outcome().failure, "it was asked to end");
}

TEST_F(PerformerTest, KillsWhatDoesNotEndWhenItIsAskedTo)
{
    order.limits.longest = 1s;
    order.limits.timeToEnd = 0s;
    EXPECT_EQ(perform("refuse to end").failure, "it took longer than 1 s");
}

TEST_F(PerformerTest, KillsWhatAnActionHasLeftInASessionOfItsOwn)
{
    order.limits.longest = 1s;
    order.limits.timeToEnd = 0s;
    EXPECT_EQ(perform("leave a child that does not end").failure, "it took longer than 1 s");
    EXPECT_EQ(marks(), "acted\n");
}

TEST_F(PerformerTest, OutlivesAnActionThatIsGoneWhenItIsLetGo)
{
    order.parameters.insert("Do", "tell its processes when asked");
    start();
    ASSERT_TRUE(OrderStream::send(host.get(), order));
    ASSERT_TRUE(waitUntil([&] { return processesOfAction().size() == 2; }));
    const pid_t supervisor = processesOfAction()[0];
    const pid_t actor = processesOfAction()[1];
    ASSERT_TRUE(signalProcess(supervisor, SIGSTOP)); // so that it hears both at once
    ASSERT_TRUE(signalProcess(actor, SIGKILL));
    ASSERT_TRUE(waitUntil([&] { return !isAlive(actor); }));
    EXPECT_TRUE(OrderStream::go(host.get()));
    ASSERT_TRUE(signalProcess(supervisor, SIGCONT));
    EXPECT_THAT(outcome().failure.toStdString(), HasSubstr("was ended by signal 9"));
    EXPECT_FALSE(outcome().hasBegun);
}

TEST_F(PerformerTest, KeepsTheEndOfWhatAnActionPrints)
{
    const PerformanceOutcome printed = perform("print");
    EXPECT_EQ(printed.output.size(), PerformanceOutcome::mostOutput);
    EXPECT_TRUE(printed.output.endsWith("line 99999\nline 100000\n"));
}

TEST_F(PerformerTest, HasAnActionWaitThatPrintsFasterThanItIsRead)
{
    EXPECT_TRUE(perform("print 8 MiB").output.endsWith("xend")) << "nothing of it is lost";
    const qint64 milliseconds = marks().mid(QByteArrayView("acted\n").size()).toLongLong();
    EXPECT_GE(milliseconds, 900) << "8 MiB a second";
}

TEST_F(PerformerTest, PerformsNothingAtAPlaceThatSomebodyHas)
{
    const auto held = PlaceLock::take(order.place);
    ASSERT_TRUE(held);
    begin("nothing");
    ASSERT_TRUE(waitUntil([&] { return ending.has_value(); }));
    EXPECT_EQ(exitStatus(), 1);
    EXPECT_EQ(marks(), "");
}

TEST_F(PerformerTest, PerformsNothingAtAPlaceThatTheHostHasTakenBack)
{
    EXPECT_TRUE(PlaceLock::takeBack(order.place));
    begin("nothing");
    ASSERT_TRUE(waitUntil([&] { return ending.has_value(); }));
    EXPECT_EQ(exitStatus(), 1);
    EXPECT_EQ(marks(), "");
}

TEST_F(PerformerTest, RefusesWhatIsNoOrder)
{
    start();
    ASSERT_EQ(::send(host.get(), "G", 1, MSG_NOSIGNAL), 1);
    ASSERT_TRUE(waitUntil([&] { return ending.has_value(); }));
    EXPECT_EQ(exitStatus(), 1);
}

TEST_F(PerformerTest, HandsOverInThePlugInsOwnWay)
{
    order.bundlePath =
        root.join(makeBundle("OwnWay", {{"WDDaemonModule", "TroublePlugIn.so"}, {"Own Way", true}}));
    order.deed = PerformanceOrder::Deed::HandOver;
    order.parameters.insert("Hand Over", "itself");
    const PerformanceOutcome done = perform("nothing");
    EXPECT_EQ(done.failure, "");
    EXPECT_EQ(done.delivery, PerformanceOutcome::Delivery::Received);
    EXPECT_EQ(marks(), "handed over\n") << "and does not act";
}

TEST_F(PerformerTest, SaysThatAnAgentWhichIsNotThereHasNotHadAnOccurrence)
{
    order.deed = PerformanceOrder::Deed::HandOver;
    order.consoleUser = 4711;
    const PerformanceOutcome done = perform("nothing");
    EXPECT_EQ(done.failure, "");
    EXPECT_EQ(done.delivery, PerformanceOutcome::Delivery::NotSent);
    EXPECT_EQ(marks(), "");
}

TEST_F(PerformerTest, SaysWhatHandingOverRaised)
{
    order.bundlePath =
        root.join(makeBundle("OwnWay", {{"WDDaemonModule", "TroublePlugIn.so"}, {"Own Way", true}}));
    order.deed = PerformanceOrder::Deed::HandOver;
    order.parameters.insert("Hand Over", "throw");
    const PerformanceOutcome done = perform("nothing");
    EXPECT_EQ(done.failure, "the plug-in was told to");
    EXPECT_EQ(done.delivery, PerformanceOutcome::Delivery::NotSent);
}

TEST_F(PerformerTest, AnnouncesThroughTheAgent)
{
    order.deed = PerformanceOrder::Deed::Announce;
    order.consoleUser = 4711;
    EXPECT_EQ(perform("nothing").delivery, PerformanceOutcome::Delivery::NotSent);
    EXPECT_EQ(messages().filter("anticipateInUserAgentNow impossible").size(), 1);
}

TEST_F(PerformerTest, SaysThatWhatBecameOfItCouldNotBeWrittenDownAndLeavesNoHalfOfIt)
{
    const QString place = PerformanceOutcome::pathBeside(order.place);
    ASSERT_TRUE(QDir().mkpath(place + "/in-the-way"));
    perform("nothing");
    EXPECT_EQ(marks(), "acted\n");
    EXPECT_NE(exitStatus(), 0);
    EXPECT_THAT(messages().join('\n').toStdString(),
                HasSubstr("What became of schedule \"Backup\" could not be written down: Is a directory"));
    EXPECT_FALSE(QFile::exists(PerformanceOutcome::unfinishedPathBeside(order.place)));
}

TEST_F(PerformerTest, RefusesAnOrderOfTheOtherRole)
{
    order.role = PerformanceOrder::Role::Session;
    begin("nothing");
    ASSERT_TRUE(waitUntil([&] { return ending.has_value(); }));
    EXPECT_EQ(exitStatus(), 1);
    EXPECT_EQ(marks(), "");
}
