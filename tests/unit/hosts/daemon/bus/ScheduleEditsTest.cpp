// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/ScheduleEdits.h"

#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/bus/PolkitAuthority.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

using namespace dozely;
using namespace std::chrono_literals;

namespace
{
constexpr quint32 anna = 501;

/// Wishes of root, whom nobody is asked about.
class ScheduleEditsTest : public BundleFixture
{
protected:
    ScheduleEditsTest()
    {
        makeProbe();
        QObject::connect(&edits, &ScheduleEdits::edited,
                         [this](const QString &identifier) { edited += identifier; });
    }

    using Altered = ScheduleEdits::Altered;
    using Alter = std::function<Result<Altered>(QList<Schedule> &)>;

    static Schedule of(const QString &identifier, std::optional<quint32> owner = anna)
    {
        Schedule schedule = HostFixture::schedule(identifier);
        schedule.owner = owner;
        return schedule;
    }
    static Alter adding(const Schedule &schedule)
    {
        return [schedule](QList<Schedule> &schedules) {
            schedules += schedule;
            return Result<Altered>(Altered{{}, schedule});
        };
    }
    /// In the place of the first.
    static Alter replacingBy(const Schedule &schedule)
    {
        return [schedule](QList<Schedule> &schedules) {
            const Altered altered{std::exchange(schedules.first(), schedule), schedule};
            return Result<Altered>(altered);
        };
    }
    static Result<Altered> removeFirst(QList<Schedule> &schedules)
    {
        return Altered{schedules.takeFirst(), {}};
    }
    void perform(const Alter &alter, bool mustBeFeasible = false)
    {
        outcomes.clear();
        edits.perform(
            {{"com.dozely.somebody", 0}, alter, mustBeFeasible}, [this](const Result<Altered> &altered) {
                outcomes += altered ? QString("done")
                                    : QString::fromUtf8(altered.error().name) + ": " + altered.error().text;
            });
    }
    static void store(const QList<Schedule> &schedules)
    {
        ASSERT_TRUE(ScheduleStore::edit([&](QList<Schedule> &stored) {
            stored = schedules;
            return true;
        }));
    }
    static QStringList stored()
    {
        QStringList identifiers;
        const auto content = ScheduleStore::read();
        for (const Schedule &schedule : content ? content->schedules : QList<Schedule>())
            identifiers += schedule.identifier;
        return identifiers;
    }

    FakeClock clock{noon()};
    PolkitAuthority authority{clock};
    ScheduleEdits edits{clock, authority};
    QStringList edited;
    QStringList outcomes;
};
} // namespace

TEST_F(ScheduleEditsTest, WriteTheStoreAndTellWhichScheduleIsAnother)
{
    perform(adding(of("a")));
    EXPECT_EQ(outcomes, QStringList("done"));
    EXPECT_EQ(stored(), QStringList("a"));
    perform(adding(of("b")));
    perform(removeFirst);
    EXPECT_EQ(stored(), QStringList("b"));
    EXPECT_EQ(edited, QStringList({"a", "b", "a"}));
}

TEST_F(ScheduleEditsTest, LeaveTheStoreAsItIsWhereTheWishIsRefused)
{
    store({of("a")});
    perform([](QList<Schedule> &schedules) -> Result<Altered> {
        schedules.clear();
        return Error{"There is no such schedule.", "a.name"};
    });
    EXPECT_EQ(outcomes, QStringList("a.name: There is no such schedule."));
    EXPECT_EQ(stored(), QStringList("a"));
    EXPECT_EQ(edited, QStringList());
}

TEST_F(ScheduleEditsTest, GiveAUserTwoHundredSchedules)
{
    QList<Schedule> many{of("other", anna + 1), of("roots", std::nullopt)};
    for (int i = 1; i < ScheduleEdits::mostOfAUser; ++i)
        many += of(QString::number(i));
    store(many);
    perform(adding(of("last")));
    EXPECT_EQ(outcomes, QStringList("done"));
    const QString full = "com.dozely.Error.LimitReached: A user may have 200 schedules.";
    perform(adding(of("more")));
    EXPECT_EQ(outcomes, QStringList(full));
    Schedule given = of("other");
    perform(replacingBy(given));
    EXPECT_EQ(outcomes, QStringList(full)) << "nor one that was another's";
    perform(adding(of("others", anna + 1)));
    EXPECT_EQ(outcomes, QStringList("done"));
    perform(adding(of("nobodys", std::nullopt)));
    EXPECT_EQ(outcomes, QStringList("done"));
    perform(removeFirst);
    EXPECT_EQ(outcomes, QStringList("done"));
}

TEST_F(ScheduleEditsTest, GiveAUserAMebibyteOfTheStore)
{
    const auto large = [](const QString &identifier, int letters) {
        Schedule schedule = of(identifier);
        schedule.parameters = {{"Text", QString(letters, 'x')}};
        return schedule;
    };
    QList<Schedule> many{large("first", 100)};
    for (int i = 0; i < 8; ++i)
        many += large(QString::number(i), 128'000);
    store(many);
    perform(adding(large("more", 30'000)));
    EXPECT_EQ(
        outcomes,
        QStringList("com.dozely.Error.LimitReached: The schedules of a user may have 1048576 bytes in all."));
    perform(replacingBy(large("first", 30'000)));
    EXPECT_EQ(outcomes.first().left(29), "com.dozely.Error.LimitReached");
    perform(replacingBy(large("first", 10'000)));
    EXPECT_EQ(outcomes, QStringList("done"));
}

TEST_F(ScheduleEditsTest, ComeAgainWhileAnotherProgramHasTheStore)
{
    const auto whileBusy = [this](const std::function<void()> &work) {
        ASSERT_TRUE(ScheduleStore::edit([&](QList<Schedule> &) {
            perform(adding(of("a")));
            work();
            return false;
        }));
    };
    whileBusy([this] {
        clock.advance(1s);
        EXPECT_EQ(outcomes, QStringList());
    });
    clock.advance(49ms);
    EXPECT_EQ(outcomes, QStringList());
    clock.advance(1ms);
    EXPECT_EQ(outcomes, QStringList("done"));
    EXPECT_EQ(stored(), QStringList("a"));
    whileBusy([this] {
        clock.advance(4999ms);
        EXPECT_EQ(outcomes, QStringList());
        clock.advance(51ms);
        ASSERT_EQ(outcomes.size(), 1) << "not for ever";
        EXPECT_TRUE(outcomes.first().startsWith("com.dozely.Error.NotPossible: "));
    });
    clock.advance(1min);
    EXPECT_EQ(outcomes.size(), 1);
}

TEST_F(ScheduleEditsTest, DoNotOverwriteWhatIsDamaged)
{
    write(storePath, "no property list");
    perform(adding(of("a")));
    ASSERT_EQ(outcomes.size(), 1);
    EXPECT_TRUE(outcomes.first().startsWith(
        "com.dozely.Error.StoreDamaged: The schedules are damaged, and are not overwritten: "));
    EXPECT_EQ(read(storePath), "no property list");
}

TEST_F(ScheduleEditsTest, RefuseWhatNothingCouldComeOfWhereThatIsToBeAsked)
{
    Schedule idle = of("a");
    idle.afterAction = AfterAction::Sleep; // of a machine that nobody woke
    perform(adding(idle), true);
    EXPECT_EQ(outcomes,
              QStringList("com.dozely.Error.NotFeasible: What is to follow comes only where the machine was "
                          "woken or switched on for the action. With \"anyway\" it is done all the same."));
    perform(adding(idle));
    EXPECT_EQ(outcomes, QStringList("done"));
    Schedule missing = of("b");
    missing.bundlePath = "/Library/Application Support/Dozely/PlugIns/Missing.plugin";
    perform(adding(missing), true);
    ASSERT_EQ(outcomes.size(), 1);
    EXPECT_TRUE(outcomes.first().startsWith("com.dozely.Error.NotFeasible: Nothing could come of it: "));
    perform(adding(of("c")), true);
    EXPECT_EQ(outcomes, QStringList("done"));
    EXPECT_EQ(stored(), QStringList({"a", "c"}));
}
