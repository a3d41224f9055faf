// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceWishes.h"
#include "hosts/common/orders/OrderReceiver.h"
#include "hosts/common/orders/OrderRefusal.h"
#include "hosts/daemon/ScheduleKeeper.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"
#include "unit/hosts/daemon/RecurringFixture.h"

using namespace std::chrono_literals;
using testing::HasSubstr;

/// The clock starts at noon; bob sits at the console, and the schedule "a" is alice's: every hour from one
/// o'clock on, announced a minute before.
class OccurrenceWishesTest : public BundleFixture
{
protected:
    static constexpr quint32 alice = 501;
    static constexpr quint32 bob = 502;

    OccurrenceWishesTest()
    {
        Schedule hourly = Recurring::schedule("a", "FREQ=HOURLY", at(1h));
        hourly.parameters = {{"Alert", 1LL}, {"Delay before alert", 60LL}};
        writeStore({hourly.toEntry(), entry("once", at(90min))});
        keeper.readStore();
    }
    static QDateTime at(std::chrono::seconds fromNoon) { return noon().addDuration(fromNoon); }
    static ReceivedOrder order(OrderPermissions::UserId peer, QVariantMap what)
    {
        if (!what.contains("Schedule Bundle Path"))
            what.insert("Schedule Identifier", what.value("Schedule Identifier", "a"));
        return {"an order", what, peer};
    }
    /// Why it was refused; empty when it was not.
    std::string skip(const QVariantMap &what = {}, OrderPermissions::UserId peer = alice)
    {
        return refusal([&] { wishes.skip(order(peer, what)); });
    }
    std::string postpone(QVariantMap what, OrderPermissions::UserId peer = alice)
    {
        return refusal([&] { wishes.postpone(order(peer, what)); });
    }
    static std::string refusal(const std::function<void()> &wish)
    {
        try {
            wish();
        } catch (const OrderRefusal &refusal) {
            return refusal.reason().toStdString();
        }
        return {};
    }
    /// What is to come of "a", in minutes from noon.
    std::vector<qint64> toCome() const
    {
        std::vector<qint64> minutes;
        for (const Occurrence &occurrence : keeper.scheduler().pendingOf(0))
            minutes.push_back(noon().secsTo(occurrence.moment()) / 60);
        return minutes;
    }
    QString lastMessage() const { return messages().value(messages().size() - 1); }

    FakeClock clock{noon()};
    ScheduleKeeper keeper{clock};
    AnticipationPlan plan{clock, keeper.scheduler()};
    OccurrenceWishes wishes{keeper, plan, clock, [] { return OrderPermissions::UserId(bob); }};
};

TEST_F(OccurrenceWishesTest, TheNextOccurrenceIsSkipped)
{
    EXPECT_EQ(skip(), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(120));
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\": the occurrence at 2026-03-14T13:00:00Z is skipped at "
                             "the wish of user 501");
    ScheduleKeeper restarted(clock);
    restarted.readStore();
    EXPECT_EQ(restarted.scheduler().pendingOf(0).first().date, at(2h)) << "it is on disk";
}

TEST_F(OccurrenceWishesTest, ALaterOccurrenceIsSkippedOnceAndNoneThatThereIsNot)
{
    EXPECT_EQ(skip({{"Schedule Date", at(3h)}}), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(60));
    EXPECT_THAT(skip({{"Schedule Date", at(3h)}}), HasSubstr("no occurrence at 2026-03-14T15:00:00Z"));
    EXPECT_THAT(skip({{"Schedule Date", at(3h + 1s)}}), HasSubstr("no occurrence at"));
    EXPECT_THAT(skip({{"Schedule Date", at(0h)}}), HasSubstr("no occurrence at")) << "before the first";
    EXPECT_THAT(skip({{"Schedule Date", "tomorrow"}}), HasSubstr("no date"));
    EXPECT_THAT(skip({{"Schedule Identifier", "none"}}), HasSubstr("there is no schedule none"));
}

TEST_F(OccurrenceWishesTest, OnlySoManyAreSkippedInAdvance)
{
    for (qsizetype i = 1; i <= OccurrenceWishes::mostAhead; ++i)
        ASSERT_EQ(skip({{"Schedule Date", at(std::chrono::hours(i))}}), "");
    EXPECT_THAT(skip(), HasSubstr("100 occurrences of schedule a are decided upon already"));
}

TEST_F(OccurrenceWishesTest, WhatIsDueIsSkippedWithAllThatIs)
{
    clock.advance(3h + 30min);
    EXPECT_EQ(skip(), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(240));
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\": 3 occurrences from 2026-03-14T13:00:00Z to "
                             "2026-03-14T15:00:00Z are skipped at the wish of user 501");
    EXPECT_EQ(keeper.scheduler().record().find("a", at(3h))->state, OccurrenceState::Removed);
}

TEST_F(OccurrenceWishesTest, ADayIsSkippedWithAllThatItHas)
{
    EXPECT_EQ(skip({{"Schedule Whole Day", true}}), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(12 * 60)) << "the midnight of the schedule's zone";
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\": 11 occurrences from 2026-03-14T13:00:00Z to "
                             "2026-03-14T23:00:00Z are skipped at the wish of user 501");
    clock.advance(6h);
    EXPECT_THAT(toCome(), testing::ElementsAre(12 * 60));
    ScheduleKeeper restarted(clock);
    restarted.readStore();
    EXPECT_EQ(restarted.scheduler().pendingOf(0).first().date, at(12h)) << "it is on disk";
}

TEST_F(OccurrenceWishesTest, ADayIsSkippedWithWhatWasPostponedToIt)
{
    ASSERT_EQ(postpone({{"Schedule Delay", 600LL}}), "");
    ASSERT_THAT(toCome(), testing::UnorderedElementsAre(70, 120));
    EXPECT_EQ(skip({{"Schedule Date", at(2h)}, {"Schedule Whole Day", true}}), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(12 * 60));
}

TEST_F(OccurrenceWishesTest, TheDayOfWhatWasPostponedIsSkippedWithTheOthersOfIt)
{
    ASSERT_EQ(postpone({{"Schedule Delay", 600LL}}), "");
    EXPECT_EQ(skip({{"Schedule Date", at(1h)}, {"Schedule Whole Day", true}}), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(12 * 60));
}

TEST_F(OccurrenceWishesTest, TheNextOccurrenceIsPostponedFromItsDateOrFromNowWhenThatIsLater)
{
    EXPECT_EQ(postpone({{"Schedule Delay", 600LL}}), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(70, 120));
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\": the occurrence at 2026-03-14T13:00:00Z is postponed to "
                             "2026-03-14T13:10:00Z at the wish of user 501");
    EXPECT_EQ(postpone({{"Schedule Delay", 600LL}}), "") << "once more, the same one";
    EXPECT_THAT(toCome(), testing::ElementsAre(80, 120));
    clock.advance(85min + 200ms);
    EXPECT_EQ(postpone({{"Schedule Delay", 600LL}}), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(95, 120));
    EXPECT_EQ(keeper.scheduler().pendingOf(0).first().moment(), at(95min + 1s)) << "in whole seconds";
    EXPECT_EQ(keeper.scheduler().pendingOf(0).first().date, at(1h));
    EXPECT_EQ(skip({{"Schedule Date", at(1h)}}), "") << "and is skipped in the end";
    EXPECT_THAT(toCome(), testing::ElementsAre(120));
}

TEST_F(OccurrenceWishesTest, OfSeveralThatAreDueTheLatestIsPostponed)
{
    clock.advance(3h + 30min);
    EXPECT_EQ(postpone({{"Schedule Delay", 600LL}}), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(220, 240));
    EXPECT_EQ(keeper.scheduler().pendingOf(0).first().date, at(3h));
    EXPECT_EQ(messages()
                  .filter("2 occurrences from 2026-03-14T13:00:00Z to 2026-03-14T14:00:00Z were missed")
                  .size(),
              1);
    ScheduleKeeper restarted(clock);
    restarted.readStore();
    EXPECT_EQ(restarted.scheduler().pendingOf(0).size(), 2);
}

TEST_F(OccurrenceWishesTest, ByNothingAndByMoreThanAYearNothingIsPostponedNorIsWhatIsNotNext)
{
    for (const QVariant &delay :
         {QVariant(0LL), QVariant(-1LL), QVariant(366LL * 86400 + 1), QVariant("soon"), QVariant()})
        EXPECT_THAT(postpone({{"Schedule Delay", delay}}), HasSubstr("1 to 31622400 seconds"));
    EXPECT_THAT(postpone({{"Schedule Delay", 60LL}, {"Schedule Date", at(5h)}}),
                HasSubstr("is not the next one of schedule a"));
    EXPECT_EQ(postpone({{"Schedule Delay", 366LL * 86400}}), "");
}

TEST_F(OccurrenceWishesTest, OwnerAndSystemAreObeyedAtAnyTimeTheUserAtTheConsoleFromTheAlertOn)
{
    EXPECT_THAT(skip({}, bob), HasSubstr("belongs to another user"));
    EXPECT_THAT(postpone({{"Schedule Delay", 60LL}}, OrderPermissions::UserId()), HasSubstr("another user"));
    clock.advance(59min);
    EXPECT_EQ(postpone({{"Schedule Delay", 600LL}}, bob), "");
    EXPECT_THAT(skip({}, bob), HasSubstr("belongs to another user")) << "its alert is to come";
    EXPECT_EQ(skip({}, 0), "");
}

TEST_F(OccurrenceWishesTest, AnAgentTellsWhatItMeansByBundleAndTheDateThatItWasTold)
{
    const QString bundlePath = keeper.scheduler().schedules().first().fullBundlePath();
    const auto meaning = [&](const QDateTime &date) {
        return QVariantMap{{"Schedule Bundle Path", bundlePath},
                           {"Schedule Date", date.toOffsetFromUtc(3600)},
                           {"Schedule Delay", 600LL}};
    };
    clock.advance(59min);
    EXPECT_EQ(postpone(meaning(at(1h)), bob), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(70, 120));
    EXPECT_THAT(postpone(meaning(at(1h)), bob), HasSubstr("no such occurrence")) << "it has another date now";
    clock.advance(10min);
    EXPECT_EQ(postpone(meaning(at(70min)), bob), "");
    EXPECT_THAT(toCome(), testing::ElementsAre(80, 120));
}

TEST_F(OccurrenceWishesTest, WhatIsPostponedIsAnnouncedAnew)
{
    clock.advance(59min);
    plan.noteTold(*plan.next(), bob);
    EXPECT_EQ(postpone({{"Schedule Delay", 600LL}}, bob), "");
    EXPECT_FALSE(plan.next());
    EXPECT_EQ(plan.nextDate(), at(69min));
    clock.advance(10min);
    ASSERT_TRUE(plan.next());
    EXPECT_EQ(plan.next()->moment(), at(70min));
}
