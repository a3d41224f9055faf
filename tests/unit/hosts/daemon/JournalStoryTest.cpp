// SPDX-License-Identifier: MIT
#include "hosts/daemon/JournalStory.h"

#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "unit/hosts/daemon/PerformingFixture.h"

#include <array>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>

using namespace dozely;
using namespace std::chrono_literals;

namespace
{
/// A journal's socket below the scratch root, and what came to it.
class JournalSocket
{
public:
    explicit JournalSocket(const ScratchRoot &root)
        : m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        const QByteArray path = QFile::encodeName(root.makeFolder("/run/systemd/journal") + "/socket");
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
        EXPECT_EQ(::bind(m_socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    }

    /// The next entry by its fields; empty when there is none.
    QMap<QString, QString> next() const
    {
        std::array<char, 65536> buffer{};
        const auto size = ::recv(m_socket.get(), buffer.data(), buffer.size(), 0);
        QMap<QString, QString> fields;
        for (const QByteArray &line : QByteArray(buffer.data(), std::max<qsizetype>(size, 0)).split('\n')) {
            if (!line.isEmpty())
                fields.insert(QString::fromUtf8(line.left(line.indexOf('='))),
                              QString::fromUtf8(line.mid(line.indexOf('=') + 1)));
        }
        return fields;
    }

private:
    Descriptor m_socket;
};

/// A daemon with the schedule "a" of user 1000, which is not due.
class JournalStoryTest : public PerformingFixture
{
protected:
    JournalStoryTest()
    {
        Port<PowerEventScheduler>::current() = std::make_shared<ScheduledEvents>();
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        makeProbe();
        const QVariantMap a =
            changed(changed(entry("a", noon().addSecs(3600)), "Owner", 1000LL), "Name", "Backup");
        writeStore({a});
        occurrence.schedule = *Schedule::fromEntry(a);
        occurrence.date = occurrence.schedule.date;
        daemon = std::make_unique<DaemonController>(clock, std::make_shared<PinnedConsoleUser>(console));
        clock.advance(0ms);
        story = std::make_unique<JournalStory>(*daemon, clock);
    }

    void begin() { daemon->keeper().noteBegun({{occurrence, ActingPlace::Daemon}}); }

    FakeClock clock{noon()};
    std::shared_ptr<FakeConsoleUser> console = std::make_shared<FakeConsoleUser>();
    std::unique_ptr<DaemonController> daemon;
    std::unique_ptr<JournalStory> story;
    Occurrence occurrence;
};
} // namespace

TEST_F(JournalStoryTest, WhatBeginsIsToldAMomentAfterwards)
{
    const JournalSocket journal(root);
    begin();
    EXPECT_TRUE(journal.next().isEmpty()) << "nothing is in the way of the start";
    clock.advance(50ms);
    const auto entry = journal.next();
    EXPECT_EQ(entry["MESSAGE"], "Schedule \"Backup\" begins");
    EXPECT_EQ(entry["DOZELY_SCHEDULE"], "Backup");
    EXPECT_EQ(entry["DOZELY_IDENTIFIER"], "a");
    EXPECT_EQ(entry["DOZELY_OCCURRENCE"], "2026-03-14T13:00:00Z");
    EXPECT_EQ(entry["DOZELY_USER"], "1000");
    EXPECT_EQ(entry["DOZELY_OUTCOME"], "begun");
    EXPECT_EQ(entry["PRIORITY"], "6");
    EXPECT_EQ(entry["SYSLOG_IDENTIFIER"], "dozelyd");
    EXPECT_EQ(entry["MESSAGE_ID"].size(), 32);
    EXPECT_FALSE(entry.contains("DOZELY_UNIT")) << "no service manager";
    EXPECT_TRUE(journal.next().isEmpty());
}

TEST_F(JournalStoryTest, WhatIsNobodysIsToldAsRoots)
{
    const JournalSocket journal(root);
    occurrence.schedule.owner.reset();
    daemon->keeper().scheduler().setSchedules({occurrence.schedule});
    begin();
    clock.advance(50ms);
    EXPECT_EQ(journal.next()["DOZELY_USER"], "0");
}

TEST_F(JournalStoryTest, WhatBecameOfItIsToldWithItsReason)
{
    const JournalSocket journal(root);
    begin();
    PerformanceOutcome outcome;
    outcome.hasBegun = true;
    outcome.exitStatus = 3;
    outcome.ended = noon();
    daemon->keeper().noteEnd(occurrence, outcome, {});
    clock.advance(50ms);
    EXPECT_EQ(journal.next()["DOZELY_OUTCOME"], "begun");
    const auto entry = journal.next();
    EXPECT_EQ(entry["MESSAGE"], "Schedule \"Backup\" failed: exit 3");
    EXPECT_EQ(entry["DOZELY_OUTCOME"], "failed");
    EXPECT_EQ(entry["DOZELY_EXIT_STATUS"], "3");
    EXPECT_EQ(entry["PRIORITY"], "4");
}

TEST_F(JournalStoryTest, TheLogStaysAsItIsAndNothingHappensWithoutAJournal)
{
    const QStringList before = root.logLines();
    begin();
    clock.advance(50ms);
    EXPECT_EQ(root.logLines(), before);
    const JournalSocket journal(root);
    clock.advance(1s);
    EXPECT_TRUE(journal.next().isEmpty()) << "what nobody heard is not kept";
}

TEST_F(JournalStoryTest, WhatIsLeftIsToldAtTheEnd)
{
    const JournalSocket journal(root);
    begin();
    story.reset();
    EXPECT_EQ(journal.next()["DOZELY_OUTCOME"], "begun");
}

TEST_F(JournalStoryTest, AJournalThatTakesNothingHoldsNobodyUpAndIsToldLater)
{
    const JournalSocket journal(root);
    constexpr int many = 60; // more than a socket holds (net.unix.max_dgram_qlen)
    for (int i = 0; i < many; ++i)
        begin();
    for (int i = 0; i < many; ++i)
        clock.advance(50ms);
    int read = 0;
    for (int i = 0; i < many && read < many; ++i) {
        while (!journal.next().isEmpty())
            ++read;
        clock.advance(200ms);
    }
    EXPECT_EQ(read, many);
}

TEST(Journal, AValueOfSeveralLinesGoesWithItsLength)
{
    EXPECT_EQ(Journal::encoded({{"MESSAGE", "a"}, {"B", "x\ny"}}),
              QByteArray("MESSAGE=a\nB\n\x03\0\0\0\0\0\0\0x\ny\n", 24));
}

TEST(Journal, AnOverlongValueIsCutOff)
{
    EXPECT_EQ(Journal::encoded({{"A", QString(10'000, 'a')}}).size(), 2 + 4096 + 1);
}
