// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/DistributedNotificationExtensions.h"
#include "DozelyKit/core/foundation/Clock.h"

#include "DozelyKit/core/foundation/ProblemReport.h"
#include "OtherProcesses.h"
#include "StockBus.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/TypedCommands.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QTimeZone>

#include <sys/socket.h>
#include <sys/un.h>

using namespace dozely;

using namespace std::chrono_literals;
using namespace zandorSoftwaresExtensions;

namespace
{
void postWide(const QString &name, const QString &object = "com.example", const QVariantMap &userInfo = {})
{
    widePostNotificationName(center(), name, object, userInfo);
}

class WidePosting : public testing::Test
{
protected:
    WidePosting()
    {
        qunsetenv(StockBus::session);
        setProblemReport([this](const QString &line) { lines += line; });
    }
    ~WidePosting() override
    {
        center().removeObserver(&hearer);
        setProblemReport({});
    }
    void SetUp() override { ASSERT_TRUE(systemBus.isRunning()); }

    /// Observes, and waits until that is so: until a post of our own has come back.
    void observe(const QString &name, const QString &object = {})
    {
        center().addObserver(&hearer, "heard", name, object);
        ready();
    }

    void ready()
    {
        Hearer own;
        center().addObserver(&own, "heard", "Ready");
        postWide("Ready");
        ASSERT_TRUE(waitUntil([&] { return !own.calls.isEmpty(); }));
        center().removeObserver(&own);
        hearer.calls.clear();
    }

    bool hears(const QString &call)
    {
        return waitUntil([&] { return hearer.calls.contains(call); });
    }

    /// A socket in the place of the system bus that accepts connections and never says anything.
    int muteBus(const QByteArray &path)
    {
        const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
        EXPECT_EQ(::bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(descriptor, 8), 0);
        qputenv(StockBus::system, "unix:path=" + path);
        return descriptor;
    }

    StockBus systemBus{StockBus::Kind::System};
    Hearer hearer;
    QStringList lines;
};

QString call(const QString &name, uid_t user, const QString &object = "com.example")
{
    return QString("%1 %2 %3").arg(name, object).arg(user);
}
} // namespace

TEST_F(WidePosting, ReachesTheProcessesOfEveryUserAtOnce)
{
    observe("Name");
    OtherProcess listener(someUser(0), [](const auto &tell) {
        Hearer own;
        center().addObserver(&own, "heard", "Name");
        center().addObserver(&own, "heard", "Ready");
        postWide("Ready");
        waitUntil([&] { return own.calls.size() == 1; });
        tell("ready");
        waitUntil([&] { return own.calls.size() == 2; });
        tell(own.calls.last());
    });
    ASSERT_EQ(listener.line(), "ready");
    const OtherProcess poster(someUser(1), [](const auto &) { postWide("Name"); });
    EXPECT_EQ(listener.line(), call("Name", someUser(1)));
    EXPECT_TRUE(hears(call("Name", someUser(1))));
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(WidePosting, TellsWhoPostedByTheWordOfTheBus)
{
    observe("Name");
    const OtherProcess first(someUser(0), [](const auto &) { postWide("Name", "first", {{"User", 0}}); });
    EXPECT_TRUE(hears(call("Name", someUser(0), "first")));
    const OtherProcess second(someUser(1), [](const auto &) { postWide("Name", "second"); });
    EXPECT_TRUE(hears(call("Name", someUser(1), "second")));
    postWide("Name", "own");
    EXPECT_TRUE(hears(call("Name", ::geteuid(), "own")));
    EXPECT_EQ(hearer.calls.size(), 3);
}

TEST_F(WidePosting, DoesNotTakeAPosterThatHasGoneForAnybody)
{
    observe("Name");
    {
        OtherProcess poster(someUser(0), [](const auto &tell) {
            postWide("Name");
            tell("posted");
        });
        ASSERT_EQ(poster.line(), "posted");
    } // ended before this process looked
    EXPECT_TRUE(hears("Name com.example ?"));
}

TEST_F(WidePosting, KeepsTheOrderOfWhatOnePosterPosts)
{
    observe({});
    const OtherProcess poster(someUser(0), [](const auto &) {
        for (int i = 0; i < 50; ++i)
            postWide(QString("Name %1").arg(i));
    });
    ASSERT_TRUE(waitUntil([&] { return hearer.calls.size() == 50; }));
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(hearer.calls.at(i), call(QString("Name %1").arg(i), someUser(0)));
}

TEST_F(WidePosting, ReachesObserversByNameAndSenderWithWildcards)
{
    Hearer everything;
    Hearer everySender;
    Hearer everyName;
    Hearer exact;
    center().addObserver(&everything, "heard", {});
    center().addObserver(&everySender, "heard", "One");
    center().addObserver(&everyName, "heard", {}, "a");
    center().addObserver(&exact, "heard", "One", "a");
    ready();
    for (Hearer *each : {&everything, &everySender, &everyName, &exact})
        each->calls.clear();
    postWide("One", "a");
    postWide("One", "b");
    postWide("Two", "a");
    postWide("One", QString());
    postWide("End", "b");
    const QString user = QString::number(::geteuid());
    ASSERT_TRUE(waitUntil([&] { return everything.calls.contains("End b " + user); }));
    EXPECT_EQ(everything.calls.size(), 5); // and none twice
    EXPECT_EQ(everySender.calls, QStringList({"One a " + user, "One b " + user, "One  " + user}));
    EXPECT_EQ(everyName.calls, QStringList({"One a " + user, "Two a " + user}));
    EXPECT_EQ(exact.calls, QStringList("One a " + user));
}

TEST_F(WidePosting, CarriesEveryKindOfValue)
{
    observe("Name");
    const QVariantMap userInfo{{"Truth", true},
                               {"Number", -5},
                               {"Large", qulonglong(18'000'000'000'000'000'000U)},
                               {"Fraction", 0.25},
                               {"Text", "Zo\u00eb"},
                               {"Bytes", QByteArray("\0\xff", 2)},
                               {"List", QVariantList{1, "two", QVariantMap{{"k", 3.0}}}}};
    postWide("Name", "com.example", userInfo);
    ASSERT_TRUE(waitUntil([&] { return hearer.calls.size() == 1; }));
    EXPECT_EQ(hearer.last.userInfo(), userInfo);
    const QVariantMap odd{{"Date", QDateTime({2026, 3, 14}, {19, 30}, QTimeZone("Europe/Vienna"))},
                          {"NUL", QString::fromLatin1("a\0b\0c", 5)},
                          {"Nothing", QVariant()}};
    postWide("Name", {}, odd);
    ASSERT_TRUE(waitUntil([&] { return hearer.calls.size() == 2; }));
    EXPECT_EQ(hearer.last.userInfo(), odd);
    EXPECT_FALSE(hearer.last.object().isValid());
}

TEST_F(WidePosting, IsNotWhatAPostToTheOwnSessionIs)
{
    StockBus sessionBus(StockBus::Kind::Session);
    ASSERT_TRUE(sessionBus.isRunning());
    observe({});
    OtherProcess elsewhere(::geteuid(), [](const auto &tell) {
        qunsetenv(StockBus::session); // another session
        qunsetenv("XDG_RUNTIME_DIR");
        Hearer own;
        center().addObserver(&own, "heard", {});
        postWide("Ready");
        waitUntil([&] { return own.calls.size() == 1; });
        tell("ready");
        waitUntil([&] { return own.calls.size() == 2; });
        tell(own.calls.last());
    });
    ASSERT_EQ(elsewhere.line(), "ready");
    const QString user = QString::number(::geteuid());
    center().postNotificationName("Session", "a", {}, 0);
    center().postNotificationName("Session", "b", {}, NSDistributedNotificationDeliverImmediately);
    center().postNotificationNameDeliverImmediately("Session", "c", {}, true);
    ASSERT_TRUE(hears("Session c " + user));
    center().postNotificationName("Wide", "d", {}, NSDistributedNotificationPostToAllSessions);
    EXPECT_EQ(elsewhere.line(), "Wide d " + user); // and nothing before
    EXPECT_TRUE(hears("Wide d " + user));
    hearer.calls.removeAll("Ready com.example " + user);
    EXPECT_EQ(hearer.calls,
              QStringList({"Session a " + user, "Session b " + user, "Session c " + user, "Wide d " + user}));
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(WidePosting, ReachesSuspendedCentresToo)
{
    observe("Name");
    center().setSuspended(true);
    center().postNotificationName("Name", "later", {}, NSDistributedNotificationPostToAllSessions);
    postWide("Name", "now");
    const QString user = QString::number(::geteuid());
    ASSERT_TRUE(hears("Name now " + user));
    EXPECT_EQ(hearer.calls.size(), 1);
    center().setSuspended(false);
    EXPECT_EQ(hearer.calls.last(), "Name later " + user);
}

TEST_F(WidePosting, UnderstandsWhatPeoplePostByHand)
{
    observe("Name");
    const QString path = "/com/dozely/Notifications";
    const QString signal = "com.dozely.DistributedNotifications.Posted";
    EXPECT_EQ(QProcess::execute("gdbus", {"emit", "--system", "--object-path", path, "--signal", signal,
                                          "'Name'", "'gdbus'", "{'key': <uint16 1>}", "uint32 1"}),
              0);
    ASSERT_TRUE(waitUntil([&] { return hearer.calls.size() == 1; }));
    EXPECT_EQ(hearer.last.object(), QVariant("gdbus"));
    EXPECT_EQ(hearer.last.userInfo(), QVariantMap({{"key", 1U}}));
    EXPECT_EQ(QProcess::execute("busctl", {"--system", "emit", path, "com.dozely.DistributedNotifications",
                                           "Posted", "ssa{sv}", "Name", "busctl", "1", "key", "s", "v"}),
              0);
    ASSERT_TRUE(waitUntil([&] { return hearer.calls.size() == 2; }));
    EXPECT_EQ(hearer.last.userInfo(), QVariantMap({{"key", "v"}}));
    EXPECT_EQ(QProcess::execute("dbus-send", {"--system", "--type=signal", path, signal, "string:Name",
                                              "string:dbus-send", "dict:string:string:key,v"}),
              0);
    ASSERT_TRUE(waitUntil([&] { return hearer.calls.size() == 3; }));
    EXPECT_EQ(hearer.last.object(), QVariant("dbus-send"));
    EXPECT_EQ(hearer.last.userInfo(), QVariantMap({{"key", "v"}}));
}

TEST_F(WidePosting, UnderstandsWhatTheDocumentTellsPeopleToType)
{
    observe("MyNotification");
    QStringList posts = typedCommands("wire-protocol.md", "## Notifications to everybody");
    const QStringList monitors = posts.filter("dbus-monitor");
    ASSERT_EQ(monitors.size(), 1);
    posts.removeAll(monitors.first());
    EXPECT_EQ(posts.size(), 2);
    for (const QString &command : posts) {
        hearer.calls.clear();
        EXPECT_EQ(QProcess::execute("bash", {"-ec", command}), 0) << qPrintable(command);
        ASSERT_TRUE(waitUntil([&] { return hearer.calls.size() == 1; })) << qPrintable(command);
        EXPECT_EQ(hearer.last.object(), QVariant("com.example.Sender"));
        EXPECT_EQ(hearer.last.userInfo(), QVariantMap({{"key", -1}})) << qPrintable(command);
    }
    QProcess monitor;
    monitor.start("bash", {"-ec", "exec " + monitors.first()});
    QByteArray seen;
    EXPECT_TRUE(waitUntil([&] {
        postWide("MyNotification"); // until it looks on
        seen += monitor.readAllStandardOutput();
        return seen.contains("MyNotification");
    })) << seen.constData();
    monitor.kill();
    monitor.waitForFinished();
}

TEST_F(WidePosting, PassesOverWhatIsNoNotification)
{
    observe({});
    const QStringList emit{"--system", "emit", "/com/dozely/Notifications",
                           "com.dozely.DistributedNotifications", "Posted"};
    const QList<QStringList> wrong{{},
                                   {"s", "Name"},
                                   {"u", "1"},
                                   {"ss", "Name", "a"},
                                   {"sss", "Name", "a", "b"},
                                   {"ssa{sv}s", "Name", "a", "0", "1"},
                                   {"sayu", "Name", "2", "1", "2", "1"},
                                   {"ssa{sv}", "", "a", "0"},
                                   {"ssa{sv}u", "Name", QString(70'000, 'x'), "0", "1"},
                                   {"say", "Name", "0"}};
    for (const QStringList &arguments : wrong)
        ASSERT_EQ(QProcess::execute("busctl", emit + arguments), 0)
            << qPrintable(arguments.join(' ').left(40));
    postWide("End");
    ASSERT_TRUE(hears(call("End", ::geteuid())));
    EXPECT_EQ(hearer.calls.size(), 1);
}

TEST_F(WidePosting, SaysInOneLineWhatCannotBePosted)
{
    postWide("");
    postWide("Name", {}, {{"k", QByteArray(100'000, 'x')}});
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith("The notification \"\" is not posted: ")) << qPrintable(lines[0]);
    EXPECT_EQ(lines[1], "The notification \"Name\" is not posted: it is larger than 65536 bytes.");
}

TEST_F(WidePosting, DropsAFloodAndHearsTheOthers)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    observe("Flood");
    clock->advance(1h); // what that cost is forgotten
    constexpr int posts = 1000;
    OtherProcess flooder(someUser(0), [](const auto &tell) {
        postWide("Flood", "first");
        tell("first");
        for (int i = 0; i < posts; ++i)
            postWide("Flood", "more");
        postWide("Flood", "last");
        tell("posted");
    });
    ASSERT_EQ(flooder.line(), "first");
    ASSERT_EQ(flooder.line(), "posted");
    ASSERT_TRUE(waitUntil([&] { return !hearer.calls.isEmpty(); }));
    // Of one poster that is not known yet 64 are held, and none is delivered beyond the user's measure.
    if (someUser(0) == someUser(1))
        clock->advance(1h);
    const OtherProcess another(someUser(1), [](const auto &) { postWide("Flood", "another"); });
    ASSERT_TRUE(hears(call("Flood", someUser(1), "another")));
    EXPECT_GE(hearer.calls.size(), 64);
    EXPECT_LE(hearer.calls.size(), 258);
    EXPECT_LE(lines.size(), 1);
}

TEST_F(WidePosting, DropsWhatAKnownPosterPostsBeyondItsMeasure)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    observe("Flood");
    clock->advance(1h);
    OtherProcess flooder(someUser(0), [](const auto &tell) {
        Hearer own;
        center().addObserver(&own, "heard", "Go");
        postWide("Go");
        waitUntil([&] { return !own.calls.isEmpty(); });
        postWide("Flood", "first");
        tell("first");
        waitUntil([&] { return own.calls.size() >= 2; });
        for (int i = 0; i < 1000; ++i)
            postWide("Flood", "more");
        tell("posted");
    });
    ASSERT_EQ(flooder.line(), "first");
    ASSERT_TRUE(hears(call("Flood", someUser(0), "first"))); // so that it is known who that is
    postWide("Go");
    ASSERT_EQ(flooder.line(), "posted");
    Hearer end;
    center().addObserver(&end, "heard", "End");
    if (someUser(0) != ::geteuid()) {
        postWide("End");
        ASSERT_TRUE(waitUntil([&] { return !end.calls.isEmpty(); }));
    } else {
        ASSERT_TRUE(waitUntil([&] { return !lines.isEmpty(); }));
    }
    center().removeObserver(&end);
    EXPECT_EQ(hearer.calls.size(), 256);
    EXPECT_EQ(lines,
              QStringList(
                  QString("User %1 posts too many notifications: some are not delivered.").arg(someUser(0))));
}

TEST_F(WidePosting, MissesNothingWhileOthersBeginAndEndToObserve)
{
    observe("Name");
    constexpr int posts = 20;
    // What is posted meanwhile has come, and nobody has looked at it yet.
    const auto postMeanwhile = [] {
        OtherProcess poster(someUser(0), [](const auto &tell) {
            for (int i = 0; i < posts; ++i)
                postWide("Name");
            tell("posted");
        });
        EXPECT_EQ(poster.line(), "posted");
    };
    Hearer other;
    qsizetype expected = 0;
    const auto hearsAll = [&] {
        expected += posts;
        Hearer end;
        center().addObserver(&end, "heard", "End");
        postWide("End");
        EXPECT_TRUE(waitUntil([&] { return !end.calls.isEmpty(); }));
        center().removeObserver(&end);
        return hearer.calls.size() == expected;
    };
    postMeanwhile();
    center().addObserver(&other, "heard", "Other");
    EXPECT_TRUE(hearsAll()) << hearer.calls.size();
    postMeanwhile();
    center().removeObserver(&other);
    EXPECT_TRUE(hearsAll()) << hearer.calls.size();
    postMeanwhile();
    center().addObserver(&other, "heard", {}); // everything
    EXPECT_TRUE(hearsAll()) << hearer.calls.size();
    postMeanwhile();
    center().removeObserver(&other);
    EXPECT_TRUE(hearsAll()) << hearer.calls.size();
}

TEST_F(WidePosting, GoesOnWhenTheBusWasStartedAgain)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    observe("Name");
    systemBus.stop();
    ASSERT_TRUE(waitUntil([&] { return !lines.isEmpty(); }));
    clock->advance(1h); // there is still none, and it is looked for every minute
    EXPECT_EQ(lines,
              QStringList{"The system's message bus has gone: notifications of other processes are not "
                          "heard until it is there again."});
    systemBus.restart(StockBus::Kind::System);
    ASSERT_TRUE(systemBus.isRunning());
    std::chrono::milliseconds passed{0};
    ASSERT_TRUE(waitUntil([&] {
        clock->advance(5ms);
        passed += 5ms;
        return lines.size() == 2;
    }));
    EXPECT_LE(passed, 500ms);
    EXPECT_EQ(lines[1], "The system's message bus is there again: notifications are heard.");
    ready();
    const OtherProcess poster(someUser(0), [](const auto &) { postWide("Name"); });
    EXPECT_TRUE(hears(call("Name", someUser(0))));
}

TEST_F(WidePosting, HearsAPosterWhoseNameOnTheBusWasAnothersOnTheFormerBus)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    observe("Name");
    // Of these nobody can be asked any more who they were.
    for (int number = 0; number < 6; ++number) {
        OtherProcess poster(someUser(0), [](const auto &tell) {
            postWide("Name");
            tell("posted");
        });
        ASSERT_EQ(poster.line(), "posted");
    }
    systemBus.stop();
    ASSERT_TRUE(waitUntil([&] { return !lines.isEmpty(); }));
    hearer.calls.clear();
    systemBus.restart(StockBus::Kind::System);
    ASSERT_TRUE(systemBus.isRunning());
    ASSERT_TRUE(waitUntil([&] {
        clock->advance(5ms);
        return lines.size() == 2;
    }));
    ready();
    for (int number = 0; number < 6; ++number) {
        hearer.calls.clear();
        const OtherProcess poster(someUser(0), [](const auto &) { postWide("Name"); });
        EXPECT_TRUE(hears(call("Name", someUser(0)))) << number;
    }
}

TEST_F(WidePosting, NoticesABusThatWasStartedAgainWhenItPosts)
{
    postWide("Before");
    systemBus.restart(StockBus::Kind::System);
    ASSERT_TRUE(systemBus.isRunning());
    OtherProcess listener(someUser(0), [](const auto &tell) {
        Hearer own;
        center().addObserver(&own, "heard", {});
        postWide("Ready");
        waitUntil([&] { return own.calls.size() == 1; });
        tell("ready");
        waitUntil([&] { return own.calls.size() == 2; });
        tell(own.calls.last());
    });
    ASSERT_EQ(listener.line(), "ready");
    postWide("After"); // the connection that this process has is one to the bus before
    EXPECT_EQ(listener.line(), call("After", ::geteuid()));
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(WidePosting, SaysInOneLineThatThereIsNoBus)
{
    systemBus.stop();
    postWide("Name");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith("The notification \"Name\" is not posted: there is no message bus"));
    qputenv(StockBus::session, "unix:path=/nonexistent");
    center().postNotificationName("Session", "a", {}, 0);
    EXPECT_EQ(lines.size(), 2);
}

TEST_F(WidePosting, IsHeardByAProcessWithoutASession)
{
    qunsetenv("XDG_RUNTIME_DIR"); // nor DBUS_SESSION_BUS_ADDRESS: a daemon
    observe("Name");
    postWide("Name");
    EXPECT_TRUE(hears(call("Name", ::geteuid())));
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(WidePosting, WaitsForAMuteBusTwoSecondsAndNoLonger)
{
    systemBus.stop();
    const QTemporaryDir folder;
    const int descriptor = muteBus(folder.filePath("bus").toUtf8());
    QElapsedTimer time;
    time.start();
    postWide("Name");
    EXPECT_GE(time.elapsed(), 1'900);
    EXPECT_LT(time.elapsed(), 20'000);
    EXPECT_EQ(lines.size(), 1);
    ::close(descriptor);
}

TEST_F(WidePosting, EndsForAnObserverThatIsTakenBack)
{
    observe("Name");
    center().removeObserver(&hearer);
    Hearer other;
    center().addObserver(&other, "heard", "End");
    postWide("Name");
    postWide("End");
    ASSERT_TRUE(waitUntil([&] { return !other.calls.isEmpty(); }));
    EXPECT_TRUE(hearer.calls.isEmpty());
    center().removeObserver(&other);
}
