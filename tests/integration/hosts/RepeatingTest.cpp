// SPDX-License-Identifier: MIT
//
// A schedule that repeats, in real processes and real time.
#include "hosts/daemon/OccurrenceDatabase.h"
#include "integration/hosts/HostsFixture.h"

using namespace std::chrono_literals;

/// Of fifteen occurrences, one every two seconds.
class RepeatingTest : public HostsTest
{
protected:
    static constexpr int count = 15;
    static constexpr int interval = 2; // seconds

    void write()
    {
        first = soon();
        QVariantMap entry = probeEntry("r", with(inDaemon, "Time Out", -1LL), first);
        entry.insert("Time Zone", "UTC");
        entry.insert(
            "Recurrence Rule",
            QVariantMap{{"Rule", QString("FREQ=SECONDLY;INTERVAL=%1;COUNT=%2").arg(interval).arg(count)},
                        {"Local Start", first.toString("yyyy-MM-ddTHH:mm:ss")}});
        writeStore({entry});
    }
    QDateTime at(int number) const { return first.addSecs(interval * number); }
    bool hasActedAt(const QDateTime &date) const { return actedAt(date) > 0; }
    qsizetype actedAt(const QDateTime &date) const
    {
        return countOf("Probe acts in the daemon: r, " + date.toString("yyyy-MM-dd HH:mm:ss"));
    }
    /// Orders something about the occurrence of that number.
    bool order(const QString &name, int number, const QVariantMap &more = {})
    {
        QVariantMap what = more;
        what.insert("Schedule Identifier", "r");
        what.insert("Schedule Date", at(number));
        return postAsAgentUser("daemon", NSNotification(name, "com.dozely.Admin", what));
    }
    /// The number of the occurrence that comes next but one.
    int upcoming() const { return int(first.secsTo(QDateTime::currentDateTimeUtc())) / interval + 2; }

    QDateTime first;
};

TEST_F(RepeatingTest, EachOccurrenceIsPerformedSkippedOrMissedAlsoWhenTheDaemonIsKilled)
{
    startDaemon();
    write();
    ASSERT_TRUE(waitUntil([&] { return hasActedAt(at(0)); }));
    const int skipped = upcoming();
    ASSERT_TRUE(order("DaemonMustSkipEvent", skipped));
    EXPECT_FALSE(order("DaemonMustSkipEvent", skipped)) << "it is decided upon";
    EXPECT_FALSE(order("DaemonMustPostponeEvent", count, {{"Schedule Delay", 3LL}})) << "there is none";
    // By half an interval, so that it has a moment of its own.
    int postponed = 0;
    ASSERT_TRUE(waitUntil([&] {
        postponed = upcoming() - 1;
        return postponed > skipped && order("DaemonMustPostponeEvent", postponed, {{"Schedule Delay", 3LL}});
    }));
    const QDateTime moment = at(postponed).addSecs(3);
    ASSERT_TRUE(waitUntil([&] { return hasActedAt(moment); }));
    kill(daemon);
    // Away for long enough to miss some.
    const QDateTime back = QDateTime::currentDateTimeUtc().addSecs(3 * interval);
    ASSERT_TRUE(waitUntil([&] { return QDateTime::currentDateTimeUtc() > back; }));
    startDaemon();
    ASSERT_TRUE(waitUntil([&] { return QDateTime::currentDateTimeUtc() > at(count); }, 60s));
    ASSERT_TRUE(waitUntil([&] {
        const auto outcomes = RecordedOutcomes::open();
        return outcomes && !*outcomes->isInUse("r");
    }));
    EXPECT_EQ(endOf(daemon), 0);

    OccurrenceDatabase database;
    ASSERT_TRUE(database.open(first).complaints.isEmpty());
    const auto rows = database.findLater({{"r", first.addSecs(-1)}});
    ASSERT_TRUE(rows);
    int performed = 0;
    int missed = 0;
    for (int i = 0; i < count; ++i) {
        const auto row = std::find_if(rows->cbegin(), rows->cend(),
                                      [&](const auto &one) { return one.first.second == at(i); });
        const auto ofRun = std::count_if(rows->cbegin(), rows->cend(), [&](const auto &one) {
            return one.second.run && one.second.run->first <= at(i) && at(i) < one.first.second;
        });
        const qsizetype acted = actedAt(i == postponed ? moment : at(i));
        EXPECT_LE(acted, 1) << i;
        if (row == rows->cend()) {
            EXPECT_EQ(acted, 0) << i;
            EXPECT_EQ(ofRun, 1) << i << " is in no record";
            ++missed;
            continue;
        }
        using enum OccurrenceState;
        const bool hasBegun = row->second.begun.isValid() && row->second.state != Removed;
        EXPECT_EQ(acted, hasBegun && row->second.state != Interrupted ? 1 : acted) << i;
        EXPECT_TRUE(hasBegun || acted == 0) << i;
        EXPECT_EQ(row->second.state == Removed, i == skipped) << i;
        EXPECT_EQ(row->second.postponedTo.isValid(), i == postponed) << i;
        performed += acted;
        missed += row->second.state == Missed || row->second.state == Skipped;
    }
    EXPECT_EQ(actedAt(at(postponed)), 0) << "not at its own date";
    EXPECT_GE(performed, 5);
    EXPECT_GE(missed, 2) << "while the daemon was away";
    EXPECT_GE(countOf("were missed"), 1);
    EXPECT_EQ(countOf("is skipped at the wish of"), 1);
    EXPECT_EQ(countOf("is postponed to"), 1);
}
