// SPDX-License-Identifier: MIT
#include "hosts/daemon/ZoneWatch.h"
#include "support/FakeClock.h"
#include "support/WaitUntil.h"
#include "unit/hosts/HostFixture.h"

using namespace std::chrono_literals;

class ZoneWatchTest : public HostFixture
{
protected:
    ZoneWatchTest()
    {
        QObject::connect(&watch, &ZoneWatch::changed, &watch, [this] { ++changes; });
    }
    /// The watcher tells from the event loop, and waits for the clock to let the change settle.
    bool waitForChange(int number)
    {
        return waitUntil([&] {
            clock.advance(50ms);
            return changes == number;
        });
    }

    FakeClock clock{noon()};
    ZoneWatch watch{clock};
    int changes = 0;
};

TEST_F(ZoneWatchTest, TellsOfANewTimeZone)
{
    write("/etc/localtime", "TZif2");
    EXPECT_TRUE(waitForChange(1));
}

TEST_F(ZoneWatchTest, TellsOfAClockThatKeepsAnotherTime)
{
    write("/etc/adjtime", "LOCAL");
    EXPECT_TRUE(waitForChange(1));
}

TEST_F(ZoneWatchTest, TellsOfNewZoneData)
{
    write("/usr/share/zoneinfo/tzdata.zi", "# version 2026a");
    EXPECT_TRUE(waitForChange(1));
    ASSERT_TRUE(QFile::remove(root.join("/usr/share/zoneinfo/tzdata.zi")));
    write("/usr/share/zoneinfo/tzdata.zi", "# version 2026b");
    EXPECT_TRUE(waitUntil([&] {
        clock.advance(50ms);
        return changes >= 2;
    }));
}

TEST_F(ZoneWatchTest, TellsOfNothingElseBesideThem)
{
    write("/etc/localtime", "TZif2");
    ASSERT_TRUE(waitForChange(1));
    write("/etc/motd", "hello");
    // The folder's change is told, and only then.
    EXPECT_TRUE(waitUntil([&] { return clock.pendingDelays().contains(50ms); }));
    clock.advance(50ms);
    EXPECT_EQ(changes, 1);
}
