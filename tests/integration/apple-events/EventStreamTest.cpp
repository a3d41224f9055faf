// SPDX-License-Identifier: MIT
//
// The streams that the main thread keeps to other processes.
#include "EventFixture.h"

#include "DozelyKit/communication/events/AESender_p.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "support/FakeClock.h"

#include <QSemaphore>
#include <QSet>

#include <filesystem>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
class EventStream : public EventFixture
{
protected:
    EventStream()
    {
        AESender::forgetStreams(); // an earlier test's, by another clock
        Port<Clock>::current() = clock;
    }
    ~EventStream() override
    {
        AESender::forgetStreams();
        Port<Clock>::current() = usualClock;
    }

    /// Time passes while this thread is busy with something else: no timer runs.
    void beBusyFor(std::chrono::milliseconds duration) const
    {
        QSemaphore none;
        clock->acquire(none, duration);
    }

    /// The sockets of this process, each by a name that no other ever has.
    static QSet<QString> sockets()
    {
        QSet<QString> names;
        for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code error; // the descriptor that reads the folder is gone by now, or will be
            const auto name = QString::fromStdString(std::filesystem::read_symlink(entry, error).string());
            if (name.startsWith("socket:"))
                names.insert(name);
        }
        return names;
    }

    /// The streams that are open to other processes.
    QSet<QString> streams() const { return sockets() - before; }

    /// The stream that was opened for an event to the host; empty where one that was kept has carried it.
    QString openedFor(const Host &host) const
    {
        const QSet<QString> known = streams();
        AppleEvent reply;
        EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
        const QSet<QString> opened = streams() - known;
        EXPECT_LE(opened.size(), 1);
        return opened.isEmpty() ? QString() : *opened.begin();
    }

    const std::shared_ptr<Clock> usualClock = Port<Clock>::current();
    const std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    const QSet<QString> before = sockets();
};
} // namespace

TEST_F(EventStream, IsUsedAgainWithinASecondAndThenWithinHalfAMinuteOfEachUse)
{
    const Host host = start();
    EXPECT_NE(openedFor(host), "");
    beBusyFor(999ms);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(openedFor(host), "") << i;
        beBusyFor(29'999ms);
    }
    EXPECT_EQ(openedFor(host), "");
    EXPECT_EQ(streams().size(), 1);
}

TEST_F(EventStream, GivesWayToAFreshOneWhenItWasNotUsedForSoLong)
{
    const Host host = start();
    QString old = openedFor(host);
    for (const bool isUsedAgain : {false, true}) {
        if (isUsedAgain) {
            EXPECT_EQ(openedFor(host), "");
        }
        beBusyFor(isUsedAgain ? 30s : 1s);
        const QString fresh = openedFor(host);
        EXPECT_NE(fresh, "") << "the receiver may be about to close the old one";
        EXPECT_EQ(streams(), QSet<QString>{fresh}) << "the old one is closed";
        EXPECT_NE(fresh, old);
        old = fresh;
    }
}

TEST_F(EventStream, IsClosedInTimeWhileThisProcessDoesNothing)
{
    const Host often = start();
    const Host once = start();
    const QString lasting = openedFor(often);
    ASSERT_EQ(openedFor(often), "");
    clock->advance(10s);
    ASSERT_NE(openedFor(once), "");
    clock->advance(999ms);
    EXPECT_EQ(streams().size(), 2);
    clock->advance(1ms);
    EXPECT_EQ(streams(), QSet<QString>{lasting});
    clock->advance(18'999ms);
    EXPECT_EQ(streams(), QSet<QString>{lasting});
    clock->advance(1ms);
    EXPECT_TRUE(streams().isEmpty());
    EXPECT_TRUE(clock->pendingDelays().isEmpty()) << "there is nothing to look at";
}

TEST_F(EventStream, ThatWasUsedLongestAgoMakesRoomForASeventeenth)
{
    std::vector<Host> hosts;
    while (hosts.size() < 17)
        hosts.push_back(startSilent());
    for (const Host &host : hosts)
        ASSERT_EQ(host->ask("listen"), "yes");
    QStringList opened;
    for (size_t i = 0; i < 16; ++i) {
        opened += openedFor(hosts[i]);
        ASSERT_EQ(openedFor(hosts[i]), "");
        beBusyFor(1s);
    }
    ASSERT_EQ(streams(), QSet<QString>(opened.begin(), opened.end()));
    ASSERT_EQ(openedFor(hosts[0]), "") << "all sixteen are kept";
    const QString last = openedFor(hosts[16]);
    EXPECT_NE(last, "");
    EXPECT_EQ(QSet<QString>(opened.begin(), opened.end()) - streams(), QSet<QString>{opened[1]});
    EXPECT_EQ(openedFor(hosts[0]), "");
    EXPECT_NE(openedFor(hosts[1]), "");
}
