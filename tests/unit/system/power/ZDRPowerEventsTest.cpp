// SPDX-License-Identifier: MIT
#include "unit/system/power/PowerFixture.h"

#include <QTimeZone>

#include <limits>

using namespace dozely;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
using Event = PowerEventScheduler::Event;

QDateTime morning()
{
    return QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC);
}

QDateTime evening()
{
    return QDateTime({2026, 3, 14}, {19, 30}, Qt::UTC);
}
} // namespace

class ZDRPowerEventsTest : public PowerFixture
{
protected:
    ZDRPowerEventsTest()
    {
        qputenv("TZ", "Europe/Paris");
        ::tzset();
        manager = ZDRPowerManager::sharedInstance();
        takeStory();
    }

    /// Puts a tool in the place of pmset that writes down its arguments and ends with that status.
    void makePmset(int status)
    {
        root.makeFolder("/usr/bin");
        QFile tool(root.join("/usr/bin/pmset"));
        ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
        tool.write("#!/bin/sh\nfor argument; do echo \"$argument\"; done >'" +
                   root.join("/arguments").toUtf8() + "'\nexit " + QByteArray::number(status) + "\n");
        tool.close();
        ASSERT_TRUE(tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    QStringList pmsetArguments() const
    {
        QFile file(root.join("/arguments"));
        return file.open(QIODevice::ReadOnly) ? QString(file.readAll()).split('\n', Qt::SkipEmptyParts)
                                              : QStringList();
    }
    void controllerHolds(const QVariantMap &values) { scheduler->properties = values; }

    std::shared_ptr<ZDRPowerManager> manager;
};

TEST_F(ZDRPowerEventsTest, SchedulesUnderTheProgramsOwnOwner)
{
    EXPECT_EQ(manager->setAutoEventAtDate("AutoWake", evening()), -1);
    EXPECT_THAT(scheduler->asked, ElementsAre(Event{evening(), "com.dozely", "wake"}));
    EXPECT_THAT(log(), ElementsAre("Trying Panther method...", "...OK: 2026-03-14 19:30:00 +0000"));
    EXPECT_THAT(pmsetArguments(), IsEmpty());
}

TEST_F(ZDRPowerEventsTest, MapsEachKeyToItsType)
{
    const std::pair<QString, QString> types[] = {{"AutoPower", "poweron"},
                                                 {"AutoPowerPriv", "poweron"},
                                                 {"AutoWake", "wake"},
                                                 {"AutoWakePriv", "wake"}};
    for (const auto &[key, type] : types) {
        scheduler->asked.clear();
        EXPECT_EQ(manager->setAutoEventAtDate(key, evening()), -1);
        ASSERT_EQ(scheduler->asked.size(), 1);
        EXPECT_EQ(scheduler->asked.first().type, type);
    }
}

TEST_F(ZDRPowerEventsTest, RefusesEveryOtherKeyInSilence)
{
    for (const QString &key :
         QStringList{"autowake", "AUTOWAKE", "AutoWak", "AutoWakePrivate", "AutoWake ", "", QString()}) {
        EXPECT_EQ(manager->setAutoEventAtDate(key, evening()), -1);
        EXPECT_THAT(scheduler->asked, IsEmpty()) << qPrintable(key);
    }
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(ZDRPowerEventsTest, RefusesNoDateInSilence)
{
    EXPECT_EQ(manager->setAutoEventAtDate("AutoWake", {}), -1);
    EXPECT_THAT(scheduler->asked, IsEmpty());
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(ZDRPowerEventsTest, AsksPmsetWhenTheSchedulerFails)
{
    makePmset(0);
    scheduler->scheduleResult = 19;
    EXPECT_EQ(manager->setAutoEventAtDate("AutoWakePriv", morning()), -1);
    EXPECT_THAT(pmsetArguments(), ElementsAre("schedule", "wake", "03/14/26 06:55:00")) << "local time";
    EXPECT_THAT(log(), ElementsAre("Trying Panther method...", "Trying pmset method...", "...OK !"));
}

TEST_F(ZDRPowerEventsTest, AsksPmsetForPowerOnToo)
{
    makePmset(0);
    scheduler->scheduleResult = -1;
    EXPECT_EQ(manager->setAutoEventAtDate("AutoPower", evening()), -1);
    EXPECT_THAT(pmsetArguments(), ElementsAre("schedule", "poweron", "03/14/26 20:30:00"));
}

TEST_F(ZDRPowerEventsTest, DoesNotReportAPmsetThatFails)
{
    makePmset(1);
    scheduler->scheduleResult = 1;
    EXPECT_EQ(manager->setAutoEventAtDate("AutoPowerPriv", evening()), -1);
    EXPECT_THAT(pmsetArguments(), ElementsAre("schedule", "poweron", "03/14/26 20:30:00"));
    EXPECT_THAT(log(), ElementsAre("Trying Panther method...", "Trying pmset method..."));
}

TEST_F(ZDRPowerEventsTest, DoesNotReportAPmsetThatIsNotThere)
{
    scheduler->scheduleResult = 1;
    EXPECT_EQ(manager->setAutoEventAtDate("AutoWake", evening()), -1);
    EXPECT_THAT(log(), ElementsAre("Trying Panther method...", "Trying pmset method..."));
}

TEST_F(ZDRPowerEventsTest, CancelsEveryEventOfItsOwnOfThatTypeAlone)
{
    const Event wake{evening(), "com.dozely", "wake"};
    const Event earlier{morning(), "com.dozely", "wake"};
    const Event powerOn{evening(), "com.dozely", "poweron"};
    scheduler->events = {
        powerOn, wake, {evening(), "pmset", "wake"}, {evening(), "com.Dozely", "wake"}, earlier};
    scheduler->cancelResult = 2; // of no interest
    ZDRPowerManager::removeAutoEvents("AutoWake");
    EXPECT_THAT(scheduler->cancelled, ElementsAre(wake, earlier));
    scheduler->cancelled.clear();
    ZDRPowerManager::removeAutoEvents("AutoPowerPriv");
    EXPECT_THAT(scheduler->cancelled, ElementsAre(powerOn));
}

TEST_F(ZDRPowerEventsTest, CancelsWithAnyKeyThatContainsTheWordInAnyCase)
{
    const Event wake{evening(), "com.dozely", "wake"};
    const Event powerOn{evening(), "com.dozely", "poweron"};
    scheduler->events = {wake, powerOn};
    ZDRPowerManager::removeAutoEvents("autowake");
    ZDRPowerManager::removeAutoEvents("my AUTOPOWER and AutoWake"); // power comes first
    EXPECT_THAT(scheduler->cancelled, ElementsAre(wake, powerOn));
}

TEST_F(ZDRPowerEventsTest, AKeyWithoutTypeCancelsNothing)
{
    scheduler->events = {{evening(), "com.dozely", "wake"},
                         {evening(), "com.dozely", ""},
                         {evening(), "com.dozely", QString()}};
    ZDRPowerManager::removeAutoEvents("Auto");
    ZDRPowerManager::removeAutoEvents("");
    ZDRPowerManager::removeAutoEvents({});
    EXPECT_THAT(scheduler->cancelled, IsEmpty());
}

TEST_F(ZDRPowerEventsTest, SettersAndRemoversUseTheirOwnKey)
{
    ZDRPowerManager::setWakeDate(evening());
    ZDRPowerManager::setStartupDate(morning().addDays(1));
    EXPECT_THAT(scheduler->asked, ElementsAre(Event{evening(), "com.dozely", "wake"},
                                              Event{morning().addDays(1), "com.dozely", "poweron"}));
    scheduler->events = scheduler->asked;
    ZDRPowerManager::removeStartupDate();
    EXPECT_THAT(scheduler->cancelled, ElementsAre(scheduler->asked[1]));
    ZDRPowerManager::removeWakeDate();
    EXPECT_THAT(scheduler->cancelled, ElementsAre(scheduler->asked[1], scheduler->asked[0]));
}

TEST_F(ZDRPowerEventsTest, FindsAControllerAndGivesItBack)
{
    EXPECT_TRUE(ZDRPowerManager::autoEventsSupported());
    const quint32 handle = ZDRPowerManager::_pmuReference();
    EXPECT_NE(handle, 0U);
    ZDRPowerManager::_closePMUReference(handle);
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(ZDRPowerEventsTest, WithoutAControllerNothingIsSupportedAndNothingReleased)
{
    scheduler->found = {false};
    EXPECT_FALSE(ZDRPowerManager::autoEventsSupported());
    EXPECT_EQ(ZDRPowerManager::_pmuReference(), 0U);
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(ZDRPowerEventsTest, LogsAMachineThatDoesNotAnswerAndGoesOn)
{
    scheduler->found.failure = 0x10000003;
    EXPECT_NE(ZDRPowerManager::_pmuReference(), 0U);
    EXPECT_THAT(root.logContent().toStdString(), HasSubstr(": IOMasterPort() failed: 10000003\n\n"));
}

TEST_F(ZDRPowerEventsTest, PrintsANegativeCodeAsWideAsALong)
{
    scheduler->found.failure = -536870206;
    ZDRPowerManager::_pmuReference();
    EXPECT_THAT(root.logContent().toStdString(), HasSubstr(": IOMasterPort() failed: ffffffffe00002c2\n\n"));
}

TEST_F(ZDRPowerEventsTest, LogsAReleaseThatFails)
{
    const quint32 first = ZDRPowerManager::_pmuReference();
    const quint32 second = ZDRPowerManager::_pmuReference();
    ZDRPowerManager::_closePMUReference(first);
    EXPECT_THAT(log(), IsEmpty());
    ZDRPowerManager::_closePMUReference(first);
    EXPECT_THAT(root.logContent().toStdString(), HasSubstr(": IOObjectRelease() failed: 00000016\n\n"));
    const qsizetype lines = log().size();
    ZDRPowerManager::_closePMUReference(second);
    EXPECT_EQ(log().size(), lines) << "each is a reference of its own";
}

TEST_F(ZDRPowerEventsTest, ReadsThePropertiesAndGivesTheControllerBack)
{
    controllerHolds({{"AutoWake", 600ULL}});
    EXPECT_EQ(ZDRPowerManager::pmuProperties(), (QVariantMap{{"AutoWake", 600ULL}}));
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(ZDRPowerEventsTest, GivesTheControllerBackWhenItsPropertiesCannotBeRead)
{
    scheduler->properties = std::nullopt;
    EXPECT_FALSE(ZDRPowerManager::pmuProperties());
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(ZDRPowerEventsTest, AMissingControllerHasNoPropertiesAndItsReleaseIsLogged)
{
    scheduler->found = {false};
    EXPECT_FALSE(ZDRPowerManager::pmuProperties());
    EXPECT_THAT(root.logContent().toStdString(), HasSubstr(": IOObjectRelease() failed: 00000016\n\n"));
    EXPECT_FALSE(ZDRPowerManager::wakeDate().isValid());
    EXPECT_FALSE(ZDRPowerManager::startupDate().isValid());
}

TEST_F(ZDRPowerEventsTest, TheWakeDateIsCountedFromNow)
{
    controllerHolds({{"AutoWake", 600ULL}});
    EXPECT_EQ(ZDRPowerManager::wakeDate(), clock->currentDate().addSecs(600));
    controllerHolds({{"AutoWake", 600}});
    EXPECT_EQ(ZDRPowerManager::wakeDate(), clock->currentDate().addSecs(600));
}

TEST_F(ZDRPowerEventsTest, NoOrZeroWakeIsNoDate)
{
    controllerHolds({{"AutoWake", 0ULL}, {"AutoPower", 1ULL}});
    EXPECT_FALSE(ZDRPowerManager::wakeDate().isValid());
    controllerHolds({});
    EXPECT_FALSE(ZDRPowerManager::wakeDate().isValid());
    controllerHolds({{"AutoWake", QVariantList{600}}});
    EXPECT_FALSE(ZDRPowerManager::wakeDate().isValid());
}

TEST_F(ZDRPowerEventsTest, AWakeAtTheEndOfAllNumbersIsALateDate)
{
    controllerHolds({{"AutoWake", std::numeric_limits<quint64>::max()}});
    EXPECT_GT(ZDRPowerManager::wakeDate(), QDateTime({9999, 1, 1}, {0, 0}, Qt::UTC));
}

TEST_F(ZDRPowerEventsTest, TheStartupDateLiesTwoToThe32SecondsLate)
{
    // 14 March 2026 07:00 in Paris: from 1904 on, local time, as the controller counts.
    const QDateTime meant({2026, 3, 14}, {6, 0}, Qt::UTC);
    const quint64 value = quint64(QDateTime({1904, 1, 1}, {0, 0}, Qt::UTC).secsTo(meant) + 3600);
    controllerHolds({{"AutoPower", value}});
    EXPECT_EQ(ZDRPowerManager::startupDate(), meant.addSecs(4'294'967'296));
}

TEST_F(ZDRPowerEventsTest, TheStartupDateUsesTheZonesOffsetOfToday)
{
    clock->jumpTo(QDateTime({2026, 7, 1}, {12, 0}, Qt::UTC)); // summer time: two hours
    controllerHolds({{"AutoPower", 7200ULL}});
    EXPECT_EQ(ZDRPowerManager::startupDate(),
              QDateTime({2001, 1, 1}, {0, 0}, Qt::UTC).addSecs(1'233'815'296));
}

TEST_F(ZDRPowerEventsTest, TheStartupDateIsCountedIn64UnsignedBits)
{
    // 2^64 - 1233815296 + 3600 + 10 wraps to ten seconds after the reference date.
    controllerHolds({{"AutoPower", quint64(0) - 1'233'815'296ULL + 3600 + 10}});
    EXPECT_EQ(ZDRPowerManager::startupDate(), QDateTime({2001, 1, 1}, {0, 0, 10}, Qt::UTC));
}

TEST_F(ZDRPowerEventsTest, NoOrZeroStartupIsNoDate)
{
    controllerHolds({{"AutoPower", 0ULL}, {"AutoWake", 5ULL}});
    EXPECT_FALSE(ZDRPowerManager::startupDate().isValid());
    controllerHolds({});
    EXPECT_FALSE(ZDRPowerManager::startupDate().isValid());
}

TEST_F(ZDRPowerEventsTest, AsksPmsetForNoTimeThatItsTwoDigitsOfAYearCannotTell)
{
    makePmset(0);
    scheduler->scheduleResult = 22;
    for (const int year : {1999, 2100, 2126}) {
        const QDateTime date({year, 12, 31}, {12, 0}, Qt::UTC);
        EXPECT_EQ(manager->setAutoEventAtDate("AutoWake", date), -1);
        EXPECT_THAT(pmsetArguments(), IsEmpty()) << year;
        EXPECT_THAT(log().mid(log().size() - 3),
                    ElementsAre("Trying Panther method...", "Trying pmset method...",
                                "pmset keeps no time outside the years 2000 to 2099"))
            << "and not that it was done";
    }
}
