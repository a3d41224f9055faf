// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "integration/power-kit/PowerRecorder.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
constexpr int sequences = 2500; // in each of four tests
constexpr int longestSequence = 8;

/// What a listener who knows the rules expects to hear about one kind of operation.
struct Expectation {
    QString begin;
    QString end;
    bool hasBegun = false;
    bool isRecent = false; // the last signal that counted came within half a minute

    /// The message for a signal; null for none.
    QString hear(bool begins)
    {
        if (begins == hasBegun && isRecent)
            return {};
        hasBegun = begins;
        isRecent = true;
        return begins ? begin : end;
    }
    /// Asks whether it is over, knowing that it is.
    QString findEnd() { return hasBegun ? hear(false) : QString(); }
};
} // namespace

/// Drives a login manager through sequences of what may happen, right or wrong.
class RandomPowerTest : public testing::TestWithParam<unsigned>
{
protected:
    RandomPowerTest()
    {
        Port<Clock>::current() = clock;
        setProblemReport([](const QString &) {});
        recorder.after = [this] { noteConsent(); };
    }
    ~RandomPowerTest() override { setProblemReport({}); }

    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        logind.appear();
        recorder.listen();
        logind.settle();
    }

    /// No delay lock is left behind by any consent to something that begins.
    void noteConsent()
    {
        const QString message = recorder.messages.last();
        if (message != "sleep" && message != "off")
            return;
        ++consents;
        locksAfterConsent += logind.held("delay").size();
    }

    void expect(const QString &message)
    {
        if (message.isNull())
            return;
        expected += message;
        waits += message == "sleep" || message == "off" ? 1 : 0;
    }

    bool isBusy() const { return logind.isPreparingForSleep || logind.isPreparingForShutdown; }

    void pass(std::chrono::seconds time)
    {
        // Whoever thinks that something is on its way asks after half a minute.
        clock->advance(time);
        sleep.isRecent = false;
        shutdown.isRecent = false;
        if (isThere && !logind.isPreparingForSleep)
            expect(sleep.findEnd());
        if (isThere && !logind.isPreparingForShutdown)
            expect(shutdown.findEnd());
    }

    void come()
    {
        logind.appear();
        isThere = true;
        expect(sleep.findEnd());
        expect(shutdown.findEnd());
    }

    /// One thing that happens. False when it cannot happen now.
    bool happen(int what)
    {
        lastStep = what;
        const bool isSleeping = logind.isPreparingForSleep;
        const bool isStopping = logind.isPreparingForShutdown;
        switch (what) {
        case 0: // falls asleep
        case 1: // without telling
            if (!isThere || isBusy())
                return false;
            logind.prepareForSleep(true, what == 0);
            expect(what == 0 ? sleep.hear(true) : QString());
            return true;
        case 2: // wakes, or could not sleep
        case 3: // without telling
            if (!isSleeping)
                return false;
            logind.prepareForSleep(false, what == 2);
            expect(what == 2 ? sleep.hear(false) : QString());
            return true;
        case 4: // shuts down
        case 5: // without telling
            if (!isThere || isBusy())
                return false;
            logind.prepareForShutdown(true, what == 4);
            expect(what == 4 ? shutdown.hear(true) : QString());
            return true;
        case 6: // and does not
            if (!isStopping)
                return false;
            logind.prepareForShutdown(false);
            expect(shutdown.hear(false));
            return true;
        case 7: // says it once more
            if (!isThere)
                return false;
            logind.emitSignal("PrepareForSleep", isSleeping);
            expect(sleep.hear(isSleeping));
            return true;
        case 8:
            if (!isThere || !isStopping)
                return false;
            logind.emitSignal("PrepareForShutdown", true);
            expect(shutdown.hear(true));
            return true;
        case 9: // begins or ends to refuse locks
            logind.refusal = logind.refusal.isEmpty() ? "org.freedesktop.DBus.Error.AccessDenied" : "";
            return true;
        case 10: // restarts
            if (!isThere)
                return false;
            logind.vanish();
            come();
            return true;
        case 11: // goes
            if (!isThere)
                return false;
            logind.vanish();
            isThere = false;
            return true;
        case 12: // comes
            if (isThere)
                return false;
            come();
            return true;
        default: // time passes
            pass(31s);
            return true;
        }
    }

    /// Brings the manager to rest, and the listener with it.
    void rest()
    {
        logind.refusal.clear();
        if (!isThere)
            happen(12);
        logind.settle();
        if (logind.isPreparingForSleep)
            happen(3);
        if (logind.isPreparingForShutdown)
            logind.prepareForShutdown(false, false);
        for (int i = 0; i < 3; ++i) {
            pass(31s);
            logind.settle();
        }
    }

    PrivateBus bus;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    FakeLogind logind;
    LogindPower power;
    PowerRecorder recorder{power};

    bool isThere = true;
    Expectation sleep{"sleep", "wake"};
    Expectation shutdown{"off", "stay"};
    QStringList expected;
    qsizetype waits = 0;
    qsizetype consents = 0;
    qsizetype locksAfterConsent = 0;
    int lastStep = -1;
};

TEST_P(RandomPowerTest, EveryWaitIsConsentedOnceAndNoLockIsLeaked)
{
    std::mt19937 random(GetParam());
    std::uniform_int_distribution<int> step(0, 14);
    std::uniform_int_distribution<int> length(1, longestSequence);
    for (int sequence = 0; sequence < sequences; ++sequence) {
        QStringList story;
        for (int left = length(random); left > 0;) {
            if (!happen(step(random)))
                continue;
            --left;
            story += QString::number(lastStep);
            logind.settle();
            ASSERT_EQ(recorder.messages.join(' ').toStdString(), expected.join(' ').toStdString())
                << "sequence " << sequence << ", steps " << qPrintable(story.join(' '));
            ASSERT_LE(logind.held("delay").size(), 1);
        }
        rest();
        ASSERT_EQ(recorder.messages.join(' ').toStdString(), expected.join(' ').toStdString())
            << "sequence " << sequence << ", at rest after " << qPrintable(story.join(' '));
        ASSERT_EQ(logind.held("delay").size(), 1)
            << "sequence " << sequence << " " << qPrintable(story.join(' '));
        ASSERT_TRUE(power.holdsDelayLock());
        ASSERT_EQ(consents, waits);
        ASSERT_EQ(locksAfterConsent, 0);
        recorder.messages.clear();
        expected.clear();
    }
    EXPECT_EQ(logind.mostHeld, 1);
    EXPECT_GT(waits, sequences / 4) << "the sequences have to be worth something";
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomPowerTest, testing::Values(1U, 22U, 333U, 4444U));
