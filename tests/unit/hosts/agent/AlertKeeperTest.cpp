// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertKeeper.h"

#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

#include <stdexcept>

using namespace std::chrono_literals;

namespace
{
/// Notes that it was told to withdraw its alert.
class NotingPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    NotingPlugIn(QStringList &withdrawn, const QString &name) : m_withdrawn(withdrawn), m_name(name) {}
    QDateTime calendarDate() const override
    {
        if (m_name == "has no date")
            throw std::runtime_error("the plug-in forgot it");
        return WDUserAgentPlugIn::calendarDate();
    }
    void stopAnticipation() override
    {
        m_withdrawn += m_name;
        if (m_name == "throws")
            throw std::runtime_error("the plug-in was told to");
    }

private:
    QStringList &m_withdrawn;
    QString m_name;
};

/// The clock starts at noon.
class AlertKeeperTest : public HostFixture
{
protected:
    void keep(const QString &name, int seconds)
    {
        const auto plugIn = std::make_shared<NotingPlugIn>(withdrawn, name);
        plugIn->setCalendarDate(noon().addSecs(seconds));
        keeper->keep("/" + name, plugIn, plugIn->calendarDate());
    }

    QStringList withdrawn;
    FakeClock clock{noon()};
    std::unique_ptr<AlertKeeper> keeper = std::make_unique<AlertKeeper>(clock);
};
} // namespace

TEST_F(AlertKeeperTest, WithdrawsAnAlertAtItsDateAndNotBefore)
{
    keep("a", 60);
    clock.advance(60s - 1ms);
    EXPECT_TRUE(withdrawn.isEmpty());
    clock.advance(1ms);
    EXPECT_EQ(withdrawn, QStringList{"a"});
    EXPECT_FALSE(keeper->plugIn("/a", noon().addSecs(60)));
}

TEST_F(AlertKeeperTest, KnowsWhoseActionsAnAlertAnnounces)
{
    const auto plugIn = std::make_shared<WDUserAgentPlugIn>();
    const QDateTime date = noon().addSecs(60);
    plugIn->setCalendarDate(date);
    plugIn->userNotification()->setUserInfo({{"Schedule Date", date}});
    for (const QString schedule : {"Backup", "Lights", "Backup", ""})
        keeper->keep("/shared", plugIn, date, schedule);
    const auto announced = keeper->announcedBy(plugIn->userNotification());
    ASSERT_TRUE(announced);
    EXPECT_EQ(announced->schedules, QStringList({"Backup", "Lights"}));
    keeper->forget("/shared", date);
    keeper->keep("/shared", plugIn, date, "Another");
    EXPECT_EQ(keeper->announcedBy(plugIn->userNotification())->schedules, QStringList("Another"));
}

TEST_F(AlertKeeperTest, WithdrawsEachOfManyAtItsOwnDate)
{
    keep("late", 90);
    keep("early", 30);
    keep("early too", 30);
    clock.advance(30s);
    EXPECT_EQ(withdrawn, QStringList({"early", "early too"}));
    clock.advance(60s);
    EXPECT_EQ(withdrawn, QStringList({"early", "early too", "late"}));
}

TEST_F(AlertKeeperTest, WithdrawsAnAlertWhenItsActionBeginsAndNoOther)
{
    keep("a", 60);
    keep("b", 60);
    keeper->withdraw("/a", noon().addSecs(61));
    EXPECT_TRUE(withdrawn.isEmpty()) << "that is another occurrence";
    keeper->withdraw("/a", noon().addSecs(60));
    EXPECT_EQ(withdrawn, QStringList{"a"});
    clock.advance(60s);
    EXPECT_EQ(withdrawn, QStringList({"a", "b"}));
}

TEST_F(AlertKeeperTest, FindsThePlugInOfAnOccurrenceInWhateverTimeZone)
{
    keep("a", 60);
    EXPECT_TRUE(keeper->plugIn("/a", noon().addSecs(60).toOffsetFromUtc(3600)));
    EXPECT_FALSE(keeper->plugIn("/a", noon()));
    EXPECT_FALSE(keeper->plugIn("/b", noon().addSecs(60)));
}

TEST_F(AlertKeeperTest, WithdrawsWhatAForwardJumpOfTheClockPassed)
{
    keep("a", 600);
    keep("b", 7200);
    clock.jumpTo(noon().addSecs(3600));
    clock.advance(0s);
    EXPECT_EQ(withdrawn, QStringList{"a"});
}

TEST_F(AlertKeeperTest, GoesOnAfterAPlugInThatRaises)
{
    keep("throws", 30);
    keep("b", 30);
    clock.advance(30s);
    EXPECT_THAT(withdrawn, testing::UnorderedElementsAre("throws", "b"));
    EXPECT_THAT(root.logContent().toStdString(), testing::HasSubstr("raised: the plug-in was told to"));
}

TEST_F(AlertKeeperTest, WithdrawsAPlugInThatTookAnotherDateAtTheDateThatItWasKeptFor)
{
    const auto plugIn = std::make_shared<NotingPlugIn>(withdrawn, "a");
    plugIn->setCalendarDate(noon().addSecs(30));
    keeper->keep("/a", plugIn, noon().addSecs(30));
    plugIn->setCalendarDate(noon().addSecs(90));
    clock.advance(30s);
    EXPECT_EQ(withdrawn, QStringList{"a"});
}

TEST_F(AlertKeeperTest, WithdrawsAllAtItsEnd)
{
    keep("a", 30);
    keep("b", 60);
    keeper.reset();
    EXPECT_EQ(withdrawn, QStringList({"a", "b"}));
}

TEST_F(AlertKeeperTest, ForgetsAPlugInWithoutAWord)
{
    keep("a", 30);
    keep("b", 30);
    keeper->forget("/a", noon().addSecs(30));
    clock.advance(30s);
    EXPECT_EQ(withdrawn, QStringList{"b"});
}

TEST_F(AlertKeeperTest, TellsWhatAnAlertAnnouncesAsLongAsThatIsToCome)
{
    const auto alertOf = [this](const QString &name) {
        return keeper->plugIn("/" + name, noon().addSecs(60))->userNotification();
    };
    keep("a", 60);
    keep("b", 60);
    const auto alert = alertOf("b");
    alert->setUserInfo({{"Schedule Date", noon().addSecs(60)}});
    const auto announced = keeper->announcedBy(alert);
    ASSERT_TRUE(announced);
    EXPECT_EQ(announced->bundlePath, "/b");
    EXPECT_EQ(announced->date, noon().addSecs(60));
    clock.jumpTo(noon().addSecs(60));
    EXPECT_FALSE(keeper->announcedBy(alert)) << "its time has come";
}

TEST_F(AlertKeeperTest, AnAlertThatAPlugInMadeOnItsOwnAnnouncesNothing)
{
    keep("a", 60);
    const auto own = std::make_shared<NSUserNotification>();
    own->setUserInfo({{"Schedule Date", noon().addSecs(60)}});
    EXPECT_FALSE(keeper->announcedBy(own));
    EXPECT_FALSE(keeper->announcedBy(keeper->plugIn("/a", noon().addSecs(60))->userNotification()))
        << "it has no date";
    EXPECT_FALSE(keeper->announcedBy(nullptr));
}

TEST_F(AlertKeeperTest, APlugInThatRaisesWhenItIsAskedForItsDateIsInNobodysWay)
{
    const auto forgetful = std::make_shared<NotingPlugIn>(withdrawn, "has no date");
    keeper->keep("/a", forgetful, noon().addSecs(60));
    keep("b", 60);
    const auto alert = keeper->plugIn("/b", noon().addSecs(60))->userNotification();
    alert->setUserInfo({{"Schedule Date", noon().addSecs(60)}});
    const auto announced = keeper->announcedBy(alert);
    ASSERT_TRUE(announced);
    EXPECT_EQ(announced->bundlePath, "/b");
    EXPECT_THAT(root.logContent().toStdString(),
                testing::HasSubstr("A plug-in was asked for its alert and raised: the plug-in forgot it"));
}

TEST_F(AlertKeeperTest, SaysWhetherThereIsTimeToAnnounceAnything)
{
    EXPECT_TRUE(keeper->isAhead(noon().addSecs(1)));
    EXPECT_FALSE(keeper->isAhead(noon()));
    EXPECT_FALSE(keeper->isAhead(noon().addSecs(-1)));
}

#include "AlertKeeperTest.moc"
