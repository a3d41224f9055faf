// SPDX-License-Identifier: MIT
#include "unit/communication/channel/CenterFixture.h"

#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/linux/FolderWatch_p.h"

#include <QElapsedTimer>

#include <utility>

using namespace dozely;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using Publishing = CenterFixture;
using SelfCheck = CenterFixture;
using Death = CenterFixture;

TEST_F(Publishing, WithoutAnObserverDoesNothingAndIsNotTriedAgain)
{
    center->setObserver(nullptr);
    center->createServerConnection();
    EXPECT_FALSE(center->socketPort());
    EXPECT_FALSE(center->connection());
    EXPECT_THAT(clock->pendingDelays(), IsEmpty());
}

TEST_F(Publishing, VendsTheObserverUnderTheProcesssNameAndChecksItAfterTenSeconds)
{
    center->createServerConnection();
    ASSERT_TRUE(center->connection());
    EXPECT_TRUE(isSocket(path("dozelyd")));
    EXPECT_EQ(center->connection()->receivePort(), center->socketPort());
    EXPECT_EQ(center->connection()->sendPort(), nullptr);
    EXPECT_EQ(center->connection()->rootObject(), root.get());
    EXPECT_EQ(center->connection()->delegate(), center.get());
    EXPECT_EQ(center->connection()->requestTimeout(), 5s);
    EXPECT_EQ(center->connection()->replyTimeout(), 5s);
    EXPECT_EQ(clock->pendingDelays(), delays({10'000}));
}

TEST_F(Publishing, IsTriedAgainAfterOneSecondWhenThePortCannotBeMade)
{
    removeSocketFolder();
    center->createServerConnection();
    EXPECT_FALSE(center->socketPort());
    EXPECT_FALSE(center->connection());
    EXPECT_EQ(clock->pendingDelays(), delays({1'000}));

    clock->advance(1s);
    EXPECT_FALSE(center->socketPort());
    EXPECT_EQ(clock->pendingDelays(), delays({1'000})) << "and again";

    PortFixture::root.makeSocketFolder();
    clock->advance(999ms);
    EXPECT_FALSE(center->socketPort());
    clock->advance(1ms);
    EXPECT_TRUE(center->socketPort());
    EXPECT_TRUE(isSocket(path("dozelyd")));
    EXPECT_EQ(clock->pendingDelays(), delays({10'000}));
    EXPECT_THAT(logged(), IsEmpty());
}

namespace
{
struct Check {
    const char *processName;
    QString ownName;     // under which the process listens
    QString checkedName; // that the self-check must reach
    friend void PrintTo(const Check &check, std::ostream *out) { *out << check.processName; }
};

class SelfCheckTarget : public CenterFixture, public testing::WithParamInterface<Check>
{
};
} // namespace

TEST_F(Publishing, UsesTheEffectiveUserIdInItsNameWhoeverTheRealUserIs)
{
    // Only root can have two identities; for anybody else the two are one.
    EXPECT_TRUE(Identity::holdsAs(Identity::becomeOrdinaryUserEffectively, [&] {
        NSProcessInfo::setProcessName("Dozely Agent");
        EXPECT_EQ(center->portName(), QString("Dozely Agent.%1").arg(Identity::ordinaryUserHere()));
    }));
}

TEST_P(SelfCheckTarget, IsWhatTheProcessNameSays)
{
    NSProcessInfo::setProcessName(GetParam().processName);
    center->createServerConnection();
    ASSERT_TRUE(isSocket(path(GetParam().ownName)));
    if (GetParam().checkedName == GetParam().ownName) {
        clock->advance(10s);
        EXPECT_EQ(root->pongs, 1);
    } else {
        Peer daemon(GetParam().checkedName);
        clock->advance(10s);
        EXPECT_EQ(daemon.root.pongs, 1);
        EXPECT_EQ(root->pongs, 0);
    }
    EXPECT_EQ(clock->pendingDelays(), delays({10'000})) << "answered YES";
}

INSTANTIATE_TEST_SUITE_P(
    Of, SelfCheckTarget,
    testing::Values(Check{"dozelyd", "dozelyd", "dozelyd"},
                    Check{"a dozelyd of another name", "dozelyd", "dozelyd"},
                    Check{"Dozely Agent", QString("Dozely Agent.%1").arg(::geteuid()),
                          QString("Dozely Agent.%1").arg(::geteuid())},
                    Check{"Dozely", QString("Dozely.%1").arg(::geteuid()),
                          QString("Dozely.%1").arg(::geteuid())},
                    Check{"Dozely Admin", QString("Dozely Admin.%1").arg(::geteuid()), "dozelyd"},
                    Check{"dozely agent", QString("dozely agent.%1").arg(::geteuid()), "dozelyd"}),
    [](const auto &info) {
        std::string name = info.param.processName;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

TEST_F(SelfCheck, RunsEveryTenSecondsAsLongAsItSucceeds)
{
    center->createServerConnection();
    clock->advance(9'999ms);
    EXPECT_EQ(root->pongs, 0);
    clock->advance(1ms);
    EXPECT_EQ(root->pongs, 1);
    clock->advance(30s);
    EXPECT_EQ(root->pongs, 4);
    EXPECT_EQ(clock->pendingDelays(), delays({10'000}));
}

TEST_F(SelfCheck, ThatFailsPublishesAnewATenthOfASecondLaterAndKeepsTheOldConnectionValid)
{
    center->createServerConnection();
    const auto old = center->connection();
    ASSERT_TRUE(QFile::remove(path("dozelyd")));

    clock->advance(10s);
    EXPECT_EQ(clock->pendingDelays(), delays({100}));
    EXPECT_EQ(center->connection(), old);
    clock->advance(99ms);
    EXPECT_FALSE(QFile::exists(path("dozelyd")));
    clock->advance(1ms);
    EXPECT_TRUE(isSocket(path("dozelyd")));
    EXPECT_NE(center->connection(), old);
    EXPECT_TRUE(old->isValid());
    EXPECT_EQ(clock->pendingDelays(), delays({10'000}));

    clock->advance(10s);
    EXPECT_EQ(root->pongs, 1) << "reached through the new file";
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(SelfCheck, RunsAtOnceWhenTheSocketFileIsTakenAway)
{
    center->createServerConnection();
    const auto old = center->connection();
    ASSERT_TRUE(QFile::remove(path("dozelyd")));
    ASSERT_TRUE(waitUntil([&] { return clock->pendingDelays() == delays({10'000, 100}); }));
    clock->advance(100ms);
    EXPECT_TRUE(isSocket(path("dozelyd")));
    EXPECT_NE(center->connection(), old);
    clock->advance(10s);
    EXPECT_EQ(root->pongs, 1) << "the check of the first publication was given up with it";
}

TEST_F(SelfCheck, RunsAtOnceAlsoWhereThePublicationMadeTheFolder)
{
    ASSERT_TRUE(QDir(PortFixture::root.join("/private")).removeRecursively());
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        center->createServerConnection();
        ASSERT_TRUE(QFile::remove(path("dozelyd")));
        EXPECT_TRUE(waitUntil([&] { return clock->pendingDelays().contains(100ms); }));
    }));
}

TEST_F(SelfCheck, RunsAtOnceWhenAnotherFileIsInTheSocketsPlace)
{
    center->createServerConnection();
    writeFile(path("other"));
    ASSERT_TRUE(QFile::rename(path("dozelyd"), path("stolen")));
    ASSERT_TRUE(QFile::rename(path("other"), path("dozelyd")));
    ASSERT_TRUE(waitUntil([&] { return clock->pendingDelays().contains(100ms); }));
    clock->advance(100ms);
    EXPECT_TRUE(isSocket(path("dozelyd")));
}

TEST_F(SelfCheck, RunsAtOnceWhenTheFolderIsReplaced)
{
    center->createServerConnection();
    ASSERT_TRUE(QFile::rename(ZDRUnixSocketPort::socketFolder(), PortFixture::root.join("/aside")));
    PortFixture::root.makeSocketFolder();
    ASSERT_TRUE(waitUntil([&] { return clock->pendingDelays().contains(100ms); }));
    clock->advance(100ms);
    EXPECT_TRUE(isSocket(path("dozelyd")));
    ASSERT_TRUE(QFile::remove(path("dozelyd"))) << "and the new folder is watched";
    ASSERT_TRUE(waitUntil([&] { return clock->pendingDelays().contains(100ms); }));
}

TEST_F(SelfCheck, IsNotBroughtForwardByOtherFiles)
{
    center->createServerConnection();
    writeFile(path("another"));
    int seen = 0;
    FolderWatch watch(QFile::encodeName(ZDRUnixSocketPort::socketFolder()), [&](const auto &) { ++seen; });
    ASSERT_TRUE(QFile::remove(path("another")));
    ASSERT_TRUE(waitUntil([&] { return seen > 0; }));
    EXPECT_EQ(clock->pendingDelays(), delays({10'000}));
    EXPECT_EQ(root->pongs, 0);
}

TEST_F(SelfCheck, RunsTenTimesASecondAtMostHoweverOftenTheFileIsTakenAway)
{
    center->createServerConnection();
    int published = 0;
    auto latest = center->connection();
    QElapsedTimer time;
    time.start();
    ASSERT_TRUE(waitUntil([&] {
        QFile::remove(path("dozelyd"));
        clock->advance(100ms);
        published += std::exchange(latest, center->connection()) != latest ? 1 : 0;
        return time.elapsed() > 1050;
    }));
    EXPECT_GE(published, 2);
    EXPECT_LE(published, time.elapsed() / 100 + 1);
}

TEST_F(SelfCheck, AnsweredNoPublishesAnew)
{
    root->onPong = [] { return false; };
    center->createServerConnection();
    const auto old = center->connection();
    clock->advance(10s);
    EXPECT_EQ(clock->pendingDelays(), delays({100}));
    clock->advance(100ms);
    EXPECT_NE(center->connection(), old);
}

TEST_F(SelfCheck, OfAProcessThatIsNoDaemonFailsWithoutTheDaemon)
{
    NSProcessInfo::setProcessName("Dozely Admin");
    center->createServerConnection();
    clock->advance(10s);
    EXPECT_EQ(clock->pendingDelays(), delays({100}));
}

TEST_F(SelfCheck, WithoutAnObserverEndsThePublication)
{
    center->createServerConnection();
    root.reset();
    clock->advance(10s);
    EXPECT_EQ(clock->pendingDelays(), delays({100}));
    clock->advance(100ms);
    EXPECT_THAT(clock->pendingDelays(), IsEmpty());
}

TEST_F(Death, OfTheServerConnectionIsLoggedAndItIsPublishedAnewByTheMainThread)
{
    center->createServerConnection();
    const auto dead = center->connection();
    dead->invalidate();
    EXPECT_THAT(logged(), ElementsAre("-[WDCommunicationCenter connectionHasDied:]"));
    EXPECT_FALSE(center->connection()) << "dropped at once, published from the event loop";
    EXPECT_FALSE(center->socketPort());

    ASSERT_TRUE(waitUntil([&] { return center->connection() != nullptr; }));
    EXPECT_TRUE(center->connection()->isValid());
    EXPECT_TRUE(center->pingDaemon());
    EXPECT_EQ(logged().size(), 1);
}

TEST_F(Death, OfTheListeningPortIsTheDeathOfTheServerConnection)
{
    center->createServerConnection();
    const auto dead = center->connection();
    center->socketPort()->invalidate();
    EXPECT_FALSE(dead->isValid());
    EXPECT_THAT(logged(), ElementsAre("-[WDCommunicationCenter connectionHasDied:]"));
    ASSERT_TRUE(waitUntil([&] { return center->connection() != nullptr; }));
    EXPECT_TRUE(center->pingDaemon());
}

TEST_F(Death, OfASupersededConnectionIsIgnored)
{
    center->createServerConnection();
    const auto old = center->connection();
    center->createServerConnection();
    const auto current = center->connection();
    ASSERT_NE(old, current);
    old->invalidate();
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_EQ(center->connection(), current);
    EXPECT_TRUE(current->isValid());
    EXPECT_TRUE(center->pingDaemon());
}

TEST_F(Death, ToldOfAnotherConnectionOrOfNoneIsIgnored)
{
    center->createServerConnection();
    const auto current = center->connection();
    const auto other =
        NSConnection::initWithReceivePortSendPort(ZDRUnixSocketPort::initAsServerWithName("other"), nullptr);
    center->connectionHasDied(
        NSNotification(NSConnectionDidDieNotification, QVariant::fromValue(other.get())));
    center->connectionHasDied(NSNotification(NSConnectionDidDieNotification));
    EXPECT_EQ(center->connection(), current);
    EXPECT_TRUE(current->isValid());
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(Death, OfOneClientsStreamIsNotTheServers)
{
    center->createServerConnection();
    const auto current = center->connection();
    {
        const auto client = NSConnection::connectionWithReceivePortSendPort(
            nullptr, ZDRUnixSocketPort::initAsClientWithName("dozelyd"));
        ASSERT_TRUE(client->rootProxy());
        client->invalidate();
    }
    EXPECT_TRUE(center->pingDaemon());
    EXPECT_EQ(center->connection(), current);
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(Death, OfASecondServerConnectionIsNoticedLikeThatOfTheFirst)
{
    center->createServerConnection();
    for (int deaths = 1; deaths <= 3; ++deaths) {
        center->connection()->invalidate();
        ASSERT_TRUE(waitUntil([&] { return center->connection() != nullptr; }));
        EXPECT_EQ(logged().size(), deaths);
    }
}

TEST_F(Death, ANewClientChangesNothing)
{
    center->createServerConnection();
    const auto current = center->connection();
    center->clientHasConnected(
        NSNotification(NSConnectionDidInitializeNotification, QVariant::fromValue(current.get())));
    EXPECT_EQ(center->connection(), current);
    EXPECT_EQ(clock->pendingDelays(), delays({10'000}));
}
