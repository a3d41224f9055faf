// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/Platform.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "hosts/common/orders/EventReceiver.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/common/plugins/RunningActions.h"
#include "hosts/common/program/HostOptions.h"
#include "hosts/common/program/TerminationWatcher.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"
#include "unit/hosts/BundleFixture.h"

#include <QTimer>

using testing::HasSubstr;
using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

using HostOptionsTest = HostFixture;

TEST_F(HostOptionsTest, RelocateTheSystem)
{
    const QString folder = root.makeFolder("/inner");
    EXPECT_FALSE(HostOptions("").parse({"program", "--root", folder}));
    EXPECT_EQ(RootFolder::path(), folder);
}

TEST_F(HostOptionsTest, PrintHelpAndVersionAndEndWith0)
{
    HostOptions help("Does something.");
    CaptureStdout();
    EXPECT_EQ(help.parse({"program", "--help"}), 0);
    const std::string text = GetCapturedStdout();
    EXPECT_THAT(text, HasSubstr("Does something."));
    EXPECT_THAT(text, HasSubstr("--root <DIR>"));
    EXPECT_THAT(text, HasSubstr("--version"));
    HostOptions version("");
    CaptureStdout();
    EXPECT_EQ(version.parse({"program", "--version"}), 0);
    EXPECT_THAT(GetCapturedStdout(), testing::MatchesRegex("[^ ]+ [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(HostOptionsTest, RefuseWhatTheyDoNotKnowWith2)
{
    CaptureStderr();
    EXPECT_EQ(HostOptions("").parse({"program", "--frobnicate"}), 2);
    EXPECT_THAT(GetCapturedStderr(), HasSubstr("frobnicate"));
}

TEST_F(HostOptionsTest, RefuseARootFolderWithASentenceAnd2)
{
    const QString former = RootFolder::path();
    const QString longest = root.makeFolder("/" + QString(80, 'x'));
    for (const QString &folder : {QString("relative"), root.join("/missing"), longest}) {
        CaptureStderr();
        EXPECT_EQ(HostOptions("").parse({"program", "--root", folder}), 2);
        EXPECT_THAT(GetCapturedStderr(), HasSubstr(RootFolder::refusal(folder).toStdString()));
        EXPECT_FALSE(RootFolder::refusal(folder).isEmpty());
        EXPECT_EQ(RootFolder::path(), former);
    }
}

/// A lock that stays taken makes the fake clock count a failed wait.
class GuardedPostingTest : public BundleFixture
{
protected:
    GuardedPostingTest() { Platform::current().clock = clock; }
    ~GuardedPostingTest() override { GuardedPosting::giveBackAllLocks(); }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<WDCommunicationCenter> center = WDCommunicationCenter::sharedInstance();
};

TEST_F(GuardedPostingTest, LogsWhatAPostRaisedInOneLineAndGivesTheLockBack)
{
    EXPECT_FALSE(GuardedPosting::guardAgentOfUser(501, [this]() -> bool {
        EXPECT_TRUE(center->lockAgentAccessForUser(501));
        throw NSException("Gone", "The target died.");
    }));
    EXPECT_EQ(messages(), QStringList{"The request to the agent of user 501 failed: Gone: The target died."});
    EXPECT_TRUE(center->lockAgentAccessForUser(501));
    EXPECT_FALSE(GuardedPosting::guardDaemon([this]() -> bool {
        EXPECT_TRUE(center->lockDaemonAccess());
        throw NSException("Gone", "The target died.");
    }));
    EXPECT_TRUE(center->lockDaemonAccess());
    EXPECT_TRUE(clock->failedWaits.isEmpty());
}

TEST_F(GuardedPostingTest, LeavesTheLockAloneWhenNothingWasRaised)
{
    EXPECT_TRUE(
        GuardedPosting::guardAgentOfUser(501, [this] { return center->lockAgentAccessForUser(501); }));
    EXPECT_FALSE(center->lockAgentAccessForUser(501));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(GuardedPostingTest, StopsExceptionsOfAnyType)
{
    EXPECT_FALSE(GuardedPosting::thrownBy([] {}));
    EXPECT_EQ(GuardedPosting::thrownBy([] { throw std::runtime_error("one\ntwo"); }), "one two");
    EXPECT_EQ(GuardedPosting::thrownBy([] { throw 7; }), "an exception of an unknown type");
}

TEST_F(GuardedPostingTest, GivesAllLocksBackAfterAPlugInRaised)
{
    EXPECT_TRUE(GuardedPosting::guardPlugIn([this] {
        EXPECT_TRUE(center->lockDaemonAccess() && center->lockAgentAccessForUser(1) &&
                    center->lockPrefPaneAccessForUser(2));
        throw 7;
    }));
    EXPECT_TRUE(center->lockDaemonAccess() && center->lockAgentAccessForUser(1) &&
                center->lockPrefPaneAccessForUser(2));
}

TEST(EventReceiver, HandsEventsOnFromTheEventLoopUntilItsContextIsGone)
{
    auto context = std::make_unique<QObject>();
    QList<ReceivedEvent> received;
    EventReceiver::receive("Event", "sender", context.get(),
                           [&](const ReceivedEvent &event) { received += event; });
    const auto post = [] {
        WDNotificationCenter::defaultCenter()->postNotification(
            NSNotification("Event", "sender", {{"Key", "value"}}));
    };
    post();
    EXPECT_TRUE(received.isEmpty()) << "whoever posts is answered first";
    EXPECT_TRUE(waitUntil([&] { return received.size() == 1; }));
    EXPECT_EQ(received[0].name, "Event");
    EXPECT_EQ(received[0].userInfo.value("Key"), "value");
    EXPECT_FALSE(received[0].peer) << "posted here, by nobody elsewhere";
    post();
    context.reset();
    post();
    QCoreApplication::processEvents();
    EXPECT_EQ(received.size(), 1);
}

/// An action that goes on until it is told to finish.
class LongAction : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    Q_INVOKABLE bool isActing() const { return acting; }
    bool acting = true;
Q_SIGNALS:
    void actionDidFinish();
};

class RaisingAction : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    Q_INVOKABLE bool isActing() const { throw std::runtime_error("cannot say"); }
};

using RunningActionsTest = BundleFixture;

TEST_F(RunningActionsTest, DropAPlugInThatDoesNotSayThatItActs)
{
    RunningActions running;
    auto plugIn = std::make_shared<WDDaemonPlugIn>();
    const std::weak_ptr<WDDaemonPlugIn> watched = plugIn;
    bool finished = false;
    running.keep(std::move(plugIn), [&] { finished = true; });
    EXPECT_FALSE(finished) << "from the event loop only";
    EXPECT_TRUE(waitUntil([&] { return finished; }));
    EXPECT_TRUE(watched.expired());
}

TEST_F(RunningActionsTest, KeepAPlugInUntilItNoLongerActs)
{
    RunningActions running;
    auto plugIn = std::make_shared<LongAction>();
    LongAction &action = *plugIn;
    const std::weak_ptr<LongAction> watched = plugIn;
    int finished = 0;
    running.keep(std::move(plugIn), [&] { ++finished; });
    QCoreApplication::processEvents();
    Q_EMIT action.actionDidFinish(); // too early: it still acts
    QCoreApplication::processEvents();
    ASSERT_FALSE(watched.expired());
    EXPECT_EQ(running.current().size(), 1u);
    action.acting = false;
    Q_EMIT action.actionDidFinish();
    Q_EMIT action.actionDidFinish();
    EXPECT_TRUE(waitUntil([&] { return watched.expired(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(finished, 1);
}

TEST_F(RunningActionsTest, DropAPlugInThatCannotSayWhetherItActs)
{
    RunningActions running;
    bool finished = false;
    running.keep(std::make_shared<RaisingAction>(), [&] { finished = true; });
    EXPECT_TRUE(waitUntil([&] { return finished; }));
    ASSERT_EQ(messages().size(), 1);
    EXPECT_THAT(messages().first().toStdString(), HasSubstr("cannot say"));
}

#include "HostCommonTest.moc"

TEST(WhereAnActionBelongs, IsSaidByTheParameterThenByTheBundleThenByItsModules)
{
    const QVariantMap module{{"WDDaemonModule", "x.so"}};
    const QVariantMap saysSession{{"WDDaemonModule", "x.so"}, {"WDActsInUserAgent", true}};
    const QVariantMap saysDaemon{{"WDActsInUserAgent", false}};
    const auto inSession = [](const QVariant &parameter, const QVariantMap &info) {
        return ActionPlace::actsInUserAgent({{"Acts In User Agent", parameter}}, info);
    };
    EXPECT_TRUE(inSession(1LL, module));
    EXPECT_TRUE(inSession("1", saysDaemon));
    EXPECT_TRUE(inSession(true, module));
    EXPECT_FALSE(inSession(0LL, saysSession));
    EXPECT_FALSE(inSession(2LL, saysSession));
    EXPECT_TRUE(ActionPlace::actsInUserAgent({}, saysSession));
    EXPECT_FALSE(ActionPlace::actsInUserAgent({}, saysDaemon));
    EXPECT_FALSE(ActionPlace::actsInUserAgent({}, module));
    EXPECT_TRUE(ActionPlace::actsInUserAgent({}, {}));
}

TEST(WhereAnActionBelongs, IsTheSessionForTrueAndOneAloneAndNeedsAModuleWithAName)
{
    const auto inSession = [](const char *key, const QVariant &value) {
        return ActionPlace::actsInUserAgent({}, {{key, value}});
    };
    EXPECT_TRUE(inSession("WDActsInUserAgent", 1LL));
    EXPECT_TRUE(inSession("WDActsInUserAgent", "1"));
    EXPECT_FALSE(inSession("WDActsInUserAgent", 2LL));
    EXPECT_FALSE(inSession("WDActsInUserAgent", "true"));
    EXPECT_TRUE(inSession("WDDaemonModule", ""));
    EXPECT_FALSE(inSession("WDDaemonModule", "x.so"));
}
