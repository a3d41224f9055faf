// SPDX-License-Identifier: MIT
#include "hosts/daemon/ServiceNotices.h"

#include "DozelyKit/core/foundation/Descriptor.h"
#include "support/FakeClock.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::StartsWith;

/// In the place of the manager of services.
class ServiceNoticesTest : public testing::Test
{
protected:
    ServiceNoticesTest()
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray path = folder.filePath("notify").toUtf8();
        std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
        EXPECT_EQ(::bind(manager.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        qputenv("NOTIFY_SOCKET", path);
    }
    ~ServiceNoticesTest() override
    {
        for (const char *name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"})
            qunsetenv(name);
    }
    /// What it has been told since the last time.
    std::vector<std::string> told() const
    {
        std::vector<std::string> notices;
        char buffer[512];
        ssize_t size = 0;
        while ((size = ::recv(manager.get(), buffer, sizeof buffer, MSG_DONTWAIT)) > 0)
            notices.emplace_back(buffer, static_cast<size_t>(size));
        return notices;
    }

    const QTemporaryDir folder;
    const Descriptor manager{::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
    FakeClock clock{QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC)};
};

TEST_F(ServiceNoticesTest, TellThatTheServiceIsReadyAndStops)
{
    {
        ServiceNotices notices(clock);
        EXPECT_THAT(told(), ElementsAre());
        notices.ready();
        EXPECT_THAT(told(), ElementsAre("READY=1"));
        clock.advance(1h);
        EXPECT_THAT(told(), ElementsAre()) << "nobody watches";
    }
    EXPECT_THAT(told(), ElementsAre("STOPPING=1"));
}

TEST_F(ServiceNoticesTest, TellWhenSomethingIsReadAgainAndWhenThatIsDone)
{
    ServiceNotices notices(clock);
    notices.reload([&] { EXPECT_THAT(told(), ElementsAre(StartsWith("RELOADING=1\nMONOTONIC_USEC="))); });
    EXPECT_THAT(told(), ElementsAre("READY=1"));
}

TEST_F(ServiceNoticesTest, FeedTheWatchdogTwiceInItsTime)
{
    qputenv("WATCHDOG_USEC", "60000000");
    qputenv("WATCHDOG_PID", QByteArray::number(::getpid()));
    ServiceNotices notices(clock);
    clock.advance(1min);
    EXPECT_THAT(told(), ElementsAre()) << "not before it is ready";
    notices.ready();
    EXPECT_THAT(told(), ElementsAre("READY=1", "WATCHDOG=1"));
    clock.advance(29s);
    EXPECT_THAT(told(), ElementsAre());
    clock.advance(1s);
    EXPECT_THAT(told(), ElementsAre("WATCHDOG=1"));
    clock.advance(30s);
    EXPECT_THAT(told(), ElementsAre("WATCHDOG=1"));
}

TEST_F(ServiceNoticesTest, DoNotFeedTheWatchdogOfAnotherProcess)
{
    qputenv("WATCHDOG_USEC", "60000000");
    qputenv("WATCHDOG_PID", QByteArray::number(::getppid()));
    ServiceNotices notices(clock);
    notices.ready();
    EXPECT_THAT(told(), ElementsAre("READY=1"));
}
