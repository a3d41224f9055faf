// SPDX-License-Identifier: MIT
//
// What plug-ins post from a process that works for the daemon.
#include "hosts/common/performing/ForkedStart.h"
#include "hosts/common/performing/Performances.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "integration/hosts/HostsFixture.h"

#include <QDir>
#include <QTimeZone>

#include <sys/stat.h>

using namespace dozely;

/// A performer beside a daemon and an agent.
class PerformerBesideHosts : public HostsTest
{
protected:
    PerformerBesideHosts() { root.makeFolder("/var/lib/dozely/performing"); }

    PerformanceOutcome perform(PerformanceOrder order)
    {
        Performances performances(std::make_unique<ForkedStart>(PERFORMER_PROGRAM),
                                  root.join("/var/lib/dozely/performing"), *Port<Clock>::current());
        std::optional<PerformanceOutcome> outcome;
        order.schedule = "Backup";
        order.date = noon().toTimeZone(QTimeZone("Europe/Paris"));
        EXPECT_TRUE(performances.prepare("one", order, [&](const auto &told) { outcome = told; }));
        EXPECT_TRUE(performances.go("one"));
        EXPECT_TRUE(waitUntil([&] { return outcome.has_value(); }));
        return outcome.value_or(PerformanceOutcome{false, "there is no outcome"});
    }

    /// The sockets of the folder, and which each is.
    QMap<QString, ino_t> sockets() const
    {
        QMap<QString, ino_t> sockets;
        for (const QString &name : QDir(socketPath("")).entryList(QDir::System | QDir::Files)) {
            struct stat status {
            };
            EXPECT_EQ(::lstat(qPrintable(socketPath(name)), &status), 0);
            sockets.insert(name, status.st_ino);
        }
        return sockets;
    }
};

TEST_F(PerformerBesideHosts, HandsAnOccurrenceToTheAgentAndLeavesAllSocketsAlone)
{
    startDaemon();
    startAgent();
    const auto former = sockets();
    PerformanceOrder order;
    order.bundlePath = schedule("any").fullBundlePath();
    order.parameters = {{"Text", "from a performer"}};
    order.deed = PerformanceOrder::Deed::HandOver;
    order.consoleUser = agentUser();
    EXPECT_EQ(perform(order).delivery, PerformanceOutcome::Delivery::Received);
    EXPECT_TRUE(logs("Probe acts in the session: from a performer"));
    EXPECT_TRUE(sockets().contains("dozelyd"));
    EXPECT_EQ(sockets(), former) << "neither taken away nor added to";
}

TEST_F(PerformerBesideHosts, ReachesTheDaemonWithWhatAnActionPosts)
{
    startDaemon();
    writeStore({probeEntry("asked for", inDaemon, QDateTime::currentDateTimeUtc().addDays(1))});
    ASSERT_TRUE(logs("Schedules: 1"));
    PerformanceOrder order;
    order.bundlePath =
        root.join(makeBundle("Trouble", {{"WDDaemonModule", "TroublePlugIn.so"}}, {TROUBLE_MODULE}));
    order.parameters = {{"Do", "post"}, {"Schedule", "asked for"}, {"Marks", root.join("/marks")}};
    EXPECT_EQ(perform(order).failure, "");
    EXPECT_EQ(read("/marks"), "acted\nreceived\n");
    EXPECT_TRUE(logs("Probe acts in the daemon: asked for"));
}
