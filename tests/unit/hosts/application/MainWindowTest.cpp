// SPDX-License-Identifier: MIT
#include "WindowFixture.h"

#include "hosts/application/program/Translations.h"

#include "hosts/application/history/HistoryView.h"
#include "hosts/application/history/LogPane.h"
#include "hosts/application/month/MonthView.h"
#include "hosts/application/when/NextDates.h"
#include "hosts/application/window/StartPage.h"
#include "hosts/common/program/StatusIconPreference.h"
#include "support/FakeClock.h"

#include <QAbstractItemModelTester>
#include <QAbstractProxyModel>
#include <QAccessible>
#include <QCommandLinkButton>
#include <QMenu>
#include <QTabBar>
#include <QTableView>
#include <QWheelEvent>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

using namespace dozely;

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
class MainWindowTest : public WindowFixture
{
};

TEST_F(MainWindowTest, ListsWhatComesNextFirstAndChoosesIt)
{
    open();
    ASSERT_EQ(list().model()->rowCount(), 2);
    EXPECT_EQ(row(0), "Backup, tomorrow 06:55, Say hello");
    EXPECT_EQ(list().currentIndex().row(), 0);
    EXPECT_EQ(find<QLineEdit>("name")->text(), "Backup");
    EXPECT_EQ(find<QLabel>("description")->text(), "Say hello");
    EXPECT_EQ(find<QLineEdit>("text")->text(), "hello");
}

TEST_F(MainWindowTest, SearchesNamesAndActions)
{
    client.schedules["2"]["parameters"] = QVariantMap{{"Text", "la la"}};
    open();
    type("search", "LA L");
    EXPECT_EQ(list().model()->rowCount(), 1);
    EXPECT_THAT(row(0).toStdString(), HasSubstr("Music"));
    type("search", "nothing of the kind");
    EXPECT_EQ(list().model()->rowCount(), 0);
}

TEST_F(MainWindowTest, TakesANameThatAScreenReaderWrites)
{
    open();
    auto *const name = find<QLineEdit>("name");
    QAccessible::queryAccessibleInterface(name)->editableTextInterface()->replaceText(
        0, static_cast<int>(name->text().size()), "Night");
    settle();
    EXPECT_EQ(row(0), "Night, tomorrow 06:55, Say hello, not applied yet");
}

TEST_F(MainWindowTest, IsAWindowForScreenReaders)
{
    open();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(window.get())->role(), QAccessible::Window);
}

TEST_F(MainWindowTest, EnablesByTheCheckMarkAndBySpace)
{
    open();
    const QRect place = list().visualRect(list().model()->index(0, 0));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, QPoint(place.left() + 16, place.center().y()));
    settle();
    EXPECT_FALSE(find<QCheckBox>("enabled")->isChecked());
    EXPECT_TRUE(window->book().hasChanges());
    EXPECT_THAT(client.calls, testing::Not(Contains(QString("change 1 isEnabled,revision"))));
    window->book().steps().undo();
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Space);
    settle();
    EXPECT_TRUE(window->book().hasChanges());
    press("apply");
    EXPECT_THAT(client.calls, Contains(QString("change 1 isEnabled,revision")));
}

TEST_F(MainWindowTest, TakesParametersFromThePlugInsOwnView)
{
    open();
    type("text", "good night");
    EXPECT_EQ(find<QLabel>("description")->text(), "Say good night");
    press("apply");
    EXPECT_EQ(client.lastChanges.value("parameters"), QVariant(QVariantMap{{"Text", "good night"}}));
    EXPECT_EQ(find<QLineEdit>("text")->text(), "good night");
    type("text", "x");
    press("undo");
    EXPECT_EQ(find<QLineEdit>("text")->text(), "good night");
}

TEST_F(MainWindowTest, ShowsEachScheduleInTheViewOfItsAction)
{
    client.schedules["2"]["parameters"] = QVariantMap{{"Text", "la la"}};
    open();
    list().setCurrentIndex(list().model()->index(1, 0));
    settle();
    EXPECT_EQ(find<QLineEdit>("text")->text(), "la la");
    EXPECT_FALSE(window->book().hasChanges()) << "showing is no editing";
}

TEST_F(MainWindowTest, BeginsAnotherActionWithItsOwnDefaultsAndKeepsTheAlert)
{
    client.schedules["1"]["parameters"] =
        QVariantMap{{"Text", "hello"}, {"Alert", 1}, {"Delay before alert", 120}, {"Acts In User Agent", 1}};
    open();
    auto *const chooser = find<QComboBox>("action");
    ASSERT_GE(chooser->findText("Sing"), 0);
    ASSERT_EQ(sides->failure(other), "");
    chooser->setFocus();
    QTest::keyClicks(chooser, "Sing");
    QTest::keyClick(chooser, Qt::Key_Return);
    settle();
    ASSERT_EQ(window->book().at(0).value("bundlePath"), other);
    EXPECT_EQ(window->book().at(0).value("parameters"), QVariant(QVariantMap{{"Text", "as usual"},
                                                                             {"Alert", 1},
                                                                             {"Delay before alert", 120},
                                                                             {"Acts In User Agent", 1},
                                                                             {"Needs Wake Up", 1}}));
    EXPECT_EQ(find<QLineEdit>("text")->text(), "as usual");
}

TEST_F(MainWindowTest, WarnsInMinutesAndWakes)
{
    open();
    find<QCheckBox>("warns")->click();
    find<QSpinBox>("minutes")->setValue(5);
    find<QCheckBox>("wakes")->click();
    settle();
    press("apply");
    EXPECT_EQ(
        client.lastChanges.value("parameters").toMap(),
        (QVariantMap{{"Text", "hello"}, {"Alert", 1}, {"Delay before alert", 300}, {"Needs Wake Up", 1}}));
}

TEST_F(MainWindowTest, WarnsAMinuteOrSomeMinutesAhead)
{
    Translations::install({"de"});
    open();
    find<QCheckBox>("warns")->click();
    auto *const minutes = find<QSpinBox>("minutes");
    for (const int number : {5, 1, 2}) {
        minutes->setValue(number);
        EXPECT_EQ(minutes->suffix().trimmed().toStdString(), number == 1 ? "Minute" : "Minuten");
    }
}

TEST_F(MainWindowTest, TakesAParameterAwayThatTheActionsViewHasNoMore)
{
    open();
    find<QLineEdit>("text")->clear();
    settle();
    press("apply");
    EXPECT_EQ(client.lastChanges.value("parameters"), QVariant(QVariantMap()));
}

TEST_F(MainWindowTest, KeepsWhatWasTypedLastWhenAnotherScheduleIsChosen)
{
    open();
    find<QLineEdit>("text")->setText("typed a moment ago");
    list().setCurrentIndex(list().model()->index(1, 0));
    settle();
    EXPECT_EQ(window->book().at(0).value("parameters").toMap()["Text"], "typed a moment ago");
}

TEST_F(MainWindowTest, HasModelsThatTellWhatTheyDo)
{
    open();
    const QAbstractItemModelTester order(list().model(),
                                         QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QAbstractItemModelTester model(static_cast<QAbstractProxyModel *>(list().model())->sourceModel(),
                                         QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QString first = row(0);
    client.changeElsewhere("3", {{"name", "Third"}, {"isEnabled", true}, {"next", "2026-03-14T06:30:00Z"}});
    settle();
    EXPECT_TRUE(row(0).startsWith("Third")) << "what takes place next comes first";
    client.changeElsewhere("3", {{"next", "2027-03-14T06:30:00Z"}});
    settle();
    EXPECT_EQ(row(0), first);
    client.removeElsewhere("3");
    settle();
    window->book().remove(window->book().at(0).key, "Removal");
    window->book().steps().undo();
    settle();
    EXPECT_EQ(row(0), first);
}

TEST_F(MainWindowTest, ChangesNothingByAWheelThatPasses)
{
    open();
    for (const char *const name : {"action", "missed", "after"}) {
        auto *const field = find<QComboBox>(name);
        const QPointF middle = QRectF(field->rect()).center();
        QWheelEvent wheel(middle, field->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(field, &wheel);
    }
    settle();
    EXPECT_FALSE(window->book().hasChanges());
    EXPECT_EQ(find<QComboBox>("missed")->currentIndex(), 0);
}

TEST_F(MainWindowTest, LeavesAnAlertOfSecondsAsItIsUntilItIsEdited)
{
    client.schedules["1"]["parameters"] = QVariantMap{{"Alert", 1}, {"Delay before alert", 90}};
    open();
    EXPECT_EQ(find<QSpinBox>("minutes")->value(), 2);
    EXPECT_FALSE(window->book().hasChanges());
}

TEST_F(MainWindowTest, SaysWhatBecomesOfMissedOnesAndWhatComesAfterwards)
{
    open();
    for (const char *const name : {"missed", "after"}) {
        auto *const choice = find<QComboBox>(name);
        choice->setFocus();
        QTest::keyClick(choice, Qt::Key_End);
        Q_EMIT choice->activated(choice->currentIndex());
    }
    press("apply");
    EXPECT_EQ(client.lastChanges.value("missed"), "run once");
    EXPECT_EQ(client.lastChanges.value("after"), "power off");
}

TEST_F(MainWindowTest, SaysThatWhatFollowsAWakingNeverComesWithoutOne)
{
    client.schedules["1"]["parameters"] = QVariantMap{{"Text", "hello"}, {"Needs Wake Up", 1}};
    client.schedules["1"]["after"] = "sleep";
    open();
    EXPECT_FALSE(says("This never comes"));
    find<QCheckBox>("wakes")->click();
    settle();
    EXPECT_TRUE(says("This never comes: the computer is neither woken nor switched on for this schedule."));
    find<QCheckBox>("switchesOn")->click();
    settle();
    EXPECT_FALSE(says("This never comes"));
}

TEST_F(MainWindowTest, AddsAScheduleToFillIn)
{
    open();
    press("add");
    EXPECT_EQ(find<QLineEdit>("name")->text(), "New schedule");
    EXPECT_TRUE(find<QLineEdit>("name")->hasSelectedText());
    type("name", "Tea");
    press("apply");
    const QVariantMap added = client.schedules.value("added-1");
    EXPECT_EQ(added.value("name"), "Tea");
    EXPECT_EQ(added.value("owner"), QVariant(anna));
    EXPECT_EQ(added.value("owner").typeId(), QMetaType::UInt) << "as it travels on the bus";
    EXPECT_EQ(added.value("parameters").toMap().value("Text"), "as usual");
    EXPECT_GT(QDateTime::fromString(added.value("date").toString(), Qt::ISODate),
              QDateTime::currentDateTimeUtc());
}

TEST_F(MainWindowTest, MakesANewScheduleTheAdministrators)
{
    open();
    press("add");
    auto *const person = find<QComboBox>("person");
    EXPECT_TRUE(person->isEnabled());
    person->setCurrentIndex(1);
    Q_EMIT person->activated(1);
    settle();
    EXPECT_TRUE(says("You will be asked for an administrator's password."));
    press("apply");
    EXPECT_FALSE(client.schedules.value("added-1").contains("owner"));
    EXPECT_EQ(client.schedules.value("added-1").value("actsIn"), "daemon");
}

TEST_F(MainWindowTest, MakesANewScheduleTheAdministratorsWhereItsActionIsForTheSystemAlone)
{
    const QString alone = makeAction("Zap", {}, {{"WDActsInDaemonOnly", true}});
    open();
    ASSERT_TRUE(waitUntil([&] { return sides->state(alone) != ActionSides::State::Trying; }));
    press("add");
    auto *const chooser = find<QComboBox>("action");
    chooser->setFocus();
    QTest::keyClicks(chooser, "Zap");
    QTest::keyClick(chooser, Qt::Key_Return);
    settle();
    EXPECT_TRUE(says("You will be asked for an administrator's password."));
    press("apply");
    EXPECT_EQ(client.schedules["added-1"]["bundlePath"], alone);
    EXPECT_FALSE(client.schedules["added-1"].contains("owner"));
    EXPECT_EQ(client.schedules["added-1"]["actsIn"], "daemon");
}

TEST_F(MainWindowTest, ShowsTheNextDatesBelowItsRule)
{
    client.schedules["1"]["repeats"] =
        QVariantMap{{"rule", "FREQ=DAILY;COUNT=3"}, {"localStart", "2060-03-14T06:55:00"}};
    open();
    EXPECT_TRUE(says("Next dates"));
    auto *const next = window->findChild<NextDates *>();
    ASSERT_NE(next, nullptr);
    EXPECT_TRUE(next->isVisible());
    EXPECT_EQ(next->lines().size(), 3);
}

TEST_F(MainWindowTest, MakesAScheduleTheAdministratorsAndBack)
{
    client.schedules["1"]["parameters"] = QVariantMap{{"Text", "hello"}, {"Acts In User Agent", 1}};
    open();
    auto *const person = find<QComboBox>("person");
    const auto choose = [&](int row) {
        person->setCurrentIndex(row);
        Q_EMIT person->activated(row);
        settle();
    };
    EXPECT_TRUE(person->isEnabled());
    choose(1);
    EXPECT_TRUE(says("You will be asked for an administrator's password."));
    press("apply");
    EXPECT_EQ(client.lastChanges.value("owner"), QVariant(QString())) << "which says: nobody's";
    EXPECT_FALSE(client.schedules["1"].contains("owner"));
    EXPECT_EQ(client.schedules["1"]["actsIn"], "daemon");
    EXPECT_FALSE(window->book().hasChanges());
    choose(0);
    press("apply");
    EXPECT_EQ(client.schedules["1"]["owner"], QVariant(anna));
    EXPECT_EQ(client.schedules["1"]["actsIn"], "session");
}

TEST_F(MainWindowTest, LeavesAsItIsWhatIsSomebodyElses)
{
    client.schedules["1"]["owner"] = 1234U;
    open();
    auto *const person = find<QComboBox>("person");
    EXPECT_EQ(person->currentText(), "Another user (number 1234)");
    Q_EMIT person->activated(person->currentIndex());
    settle();
    EXPECT_FALSE(window->book().hasChanges());
}

TEST_F(MainWindowTest, RemovesTheChosenOneAndBringsItBack)
{
    open();
    press("remove");
    EXPECT_EQ(list().model()->rowCount(), 1);
    press("undo");
    EXPECT_EQ(list().model()->rowCount(), 2);
    EXPECT_FALSE(window->book().hasChanges());
}

TEST_F(MainWindowTest, OffersAFirstScheduleOnceTheLastIsRemoved)
{
    client.schedules.remove("2");
    open();
    press("remove");
    EXPECT_TRUE(says("Nothing is planned yet"));
    EXPECT_FALSE(find<QLineEdit>("name")->isVisible());
    press("undo");
    EXPECT_FALSE(says("Nothing is planned yet"));
    EXPECT_TRUE(find<QLineEdit>("name")->isVisible());
}

TEST_F(MainWindowTest, SwitchesAScheduleOffAndOnBesideItsName)
{
    open();
    press("enabled");
    EXPECT_TRUE(find<QAbstractButton>("undo")->toolTip().contains("Switching off"))
        << qPrintable(find<QAbstractButton>("undo")->toolTip());
    press("apply");
    EXPECT_EQ(client.schedules["1"]["isEnabled"], false);
    press("enabled");
    EXPECT_TRUE(find<QAbstractButton>("undo")->toolTip().contains("Switching on"));
    press("apply");
    EXPECT_EQ(client.schedules["1"]["isEnabled"], true);
}

TEST_F(MainWindowTest, ShowsANewScheduleThoughOthersAreSearchedFor)
{
    open();
    type("search", "music");
    EXPECT_EQ(list().model()->rowCount(), 1);
    press("add");
    EXPECT_EQ(find<QLineEdit>("search")->text(), "");
    EXPECT_EQ(list().model()->rowCount(), 3);
    EXPECT_EQ(find<QLineEdit>("name")->text(), row(list().currentIndex().row()).section(',', 0, 0));
}

TEST_F(MainWindowTest, SaysThatTheServiceIsNotThereAndWhenItIsBack)
{
    const auto ofTheMachine = Port<Clock>::current();
    const auto clock = std::make_shared<FakeClock>(QDateTime::currentDateTimeUtc());
    Port<Clock>::current() = clock;
    client.isThere = false;
    open();
    clock->advance(std::chrono::milliseconds(999));
    EXPECT_FALSE(says("not running")) << "that is not known at once";
    clock->advance(std::chrono::milliseconds(1));
    Port<Clock>::current() = ofTheMachine;
    EXPECT_TRUE(says("The Dozely service is not running"));
    EXPECT_TRUE(says("Service not running"));
    for (const char *const name : {"agent", "clock", "testWaking"})
        EXPECT_FALSE(find<QWidget>(name)->isVisible()) << name << ": of that nobody tells";
    client.setThere(true);
    settle();
    for (const char *const name : {"agent", "clock", "testWaking"})
        EXPECT_TRUE(find<QWidget>(name)->isVisible()) << name;
    EXPECT_FALSE(says("The Dozely service is not running"));
    EXPECT_EQ(list().model()->rowCount(), 2);
}

TEST_F(MainWindowTest, TestsTheAlertAndSaysWhereItStays)
{
    open();
    press("testAlert");
    EXPECT_TRUE(says("the agent in your session does not answer")) << "where nobody is asked";
    int asked = 0;
    window->tests().setRequestAlert([&](const auto &answer) {
        ++asked;
        answer(true);
    });
    press("testAlert");
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(says("An alert is shown now that announces nothing"));
    client.setThere(false);
    settle();
    EXPECT_TRUE(find<QToolButton>("testAlert")->isVisible()) << "the agent is another one than the daemon";
    EXPECT_FALSE(find<QToolButton>("testWaking")->isVisible());
}

TEST_F(MainWindowTest, TestsWakingByReadingTheAlarmBackAndOnRequestBySleeping)
{
    client.wakeTrial = {{"outcome", "kept"}};
    open();
    press("testWaking");
    EXPECT_TRUE(client.calls.contains("testWaking 0"));
    EXPECT_FALSE(client.calls.contains("testWaking 60"));
    ASSERT_TRUE(says("The clock took an alarm and gave it back"));
    QPushButton *sleep = nullptr;
    for (auto *const button : window->findChildren<QPushButton *>()) {
        if (button->text() == "Sleep for a minute")
            sleep = button;
    }
    ASSERT_NE(sleep, nullptr);
    client.wakeTrial = {{"outcome", "woken"}};
    QTest::mouseClick(sleep, Qt::LeftButton);
    EXPECT_TRUE(says("goes to sleep for a minute"));
    settle();
    EXPECT_TRUE(client.calls.contains("testWaking 60"));
    EXPECT_TRUE(says("Waking works"));
}

TEST_F(MainWindowTest, SaysWhatIsToBeDoneWhereWakingDoesNotWork)
{
    open();
    for (const auto &[outcome, sentence] :
         {std::pair("no clock", "has no clock that could wake it"),
          std::pair("dropped", "does not keep an alarm"),
          std::pair("too early", "before its clock could wake it"), std::pair("too late", "slept on")}) {
        client.wakeTrial = {{"outcome", outcome}};
        press("testWaking");
        EXPECT_TRUE(says(sentence)) << outcome;
        const QList<QPushButton *> buttons = window->findChildren<QPushButton *>();
        const bool offersSleep = std::any_of(buttons.cbegin(), buttons.cend(), [](const auto *button) {
            return button->text() == "Sleep for a minute" && button->isVisible();
        });
        EXPECT_EQ(offersSleep, QString(outcome) == "too early") << outcome;
    }
    client.wakeTrial = {{"outcome", "of another kind"}, {"sentence", "It did something new."}};
    press("testWaking");
    EXPECT_TRUE(says("It did something new."));
    client.refusal = dozely::Error{"An action goes on, or is due too soon.", "com.dozely.Error.NotPossible"};
    press("testWaking");
    EXPECT_TRUE(says("Waking was not tested: An action goes on, or is due too soon."));
}

TEST_F(MainWindowTest, TurnsTheStatusIconOffAndOn)
{
    qputenv("XDG_STATE_HOME", "/state"); // below the scratch root
    open();
    auto *const settings = find<QToolButton>("settings");
    auto *const icon = settings->menu()->actions().constFirst();
    const auto isShownAsWanted = [&] {
        Q_EMIT settings->menu()->aboutToShow();
        return icon->isChecked();
    };
    EXPECT_TRUE(isShownAsWanted()) << "unless somebody has said otherwise";
    icon->trigger();
    EXPECT_FALSE(StatusIconPreference::isWanted());
    EXPECT_TRUE(QFile::exists(root.join("/state/dozely/agent.plist")));
    EXPECT_FALSE(isShownAsWanted());
    ASSERT_TRUE(StatusIconPreference::setWanted(true)); // elsewhere
    EXPECT_TRUE(isShownAsWanted());
}

TEST_F(MainWindowTest, SaysThatASettingCouldNotBeKept)
{
    qputenv("XDG_STATE_HOME", "/state");
    QFile file(root.makeFolder("/state") + "/dozely"); // where the folder should be
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    open();
    find<QToolButton>("settings")->menu()->actions().constFirst()->trigger();
    settle();
    EXPECT_TRUE(says("This could not be kept: there is no folder for it"));
}

TEST_F(MainWindowTest, OffersAFirstScheduleWhereThereIsNone)
{
    client.schedules.clear();
    open();
    EXPECT_TRUE(says("Nothing is planned yet"));
    press("add");
    EXPECT_FALSE(says("Nothing is planned yet"));
    EXPECT_EQ(find<QLineEdit>("name")->text(), "New schedule");
}

TEST_F(MainWindowTest, OpensAReadyWishAsAFilledInForm)
{
    client.schedules.clear();
    makeAction("Command");
    open();
    auto *const wishes = window->findChild<StartPage *>();
    ASSERT_NE(wishes, nullptr);
    const auto buttons = wishes->findChildren<QCommandLinkButton *>();
    ASSERT_EQ(buttons.size(), 2) << "two of an action that is there";
    QTest::mouseClick(buttons.last(), Qt::LeftButton);
    EXPECT_TRUE(waitUntil([&] { return window->book().count() > 0; }));
    settle();
    EXPECT_EQ(find<QLineEdit>("name")->text(), "Backup at night");
    press("apply");
    const QVariantMap added = client.schedules.value("added-1");
    EXPECT_EQ(added.value("repeats").toMap().value("rule"), "FREQ=DAILY");
    EXPECT_EQ(added.value("parameters").toMap().value("Program"), "/bin/sh");
    EXPECT_EQ(added.value("parameters").toMap().value("Text"), "as usual") << "what the side says besides";
    EXPECT_EQ(added.value("after"), "sleep");
    EXPECT_FALSE(added.contains("owner"));
}

TEST_F(MainWindowTest, ShowsTheMonthAndDoesWhatIsWantedOfAnOccurrence)
{
    const QString today = QDateTime::currentDateTimeUtc().addSecs(60).toString(Qt::ISODate);
    client.occurrences = {
        {{"identifier", "2"}, {"name", "Music"}, {"date", today}, {"moment", today}, {"isPostponed", false}}};
    open();
    EXPECT_THAT(client.calls.join('\n').toStdString(), testing::Not(HasSubstr("next from")))
        << "nobody sees it yet";
    find<QTabBar>("views")->setCurrentIndex(1);
    settle();
    EXPECT_THAT(client.calls.join('\n').toStdString(), HasSubstr("next from"));
    client.calls.clear();
    client.changeElsewhere("1", {{"next", "2027-03-14T06:30:00Z"}});
    settle();
    EXPECT_THAT(client.calls.join('\n').toStdString(), HasSubstr("next from")) << "what is seen is read anew";
    auto *const month = window->findChild<MonthView *>();
    ASSERT_NE(month, nullptr);
    Q_EMIT month->skipWanted("2", QDateTime::fromString(today, Qt::ISODate));
    EXPECT_THAT(client.calls, Contains("skip 2 " + today));
    Q_EMIT month->putOffWanted("2", QDateTime::fromString(today, Qt::ISODate), std::chrono::minutes(10));
    EXPECT_THAT(client.calls, Contains("postpone 2 " + today + " 600"));
    Q_EMIT month->openWanted("2");
    settle();
    EXPECT_EQ(find<QLineEdit>("name")->text(), "Music");
    EXPECT_EQ(find<QTabBar>("views")->currentIndex(), 0);
}

TEST_F(MainWindowTest, ShowsTheHistoryAndTheLogOfAnOccurrence)
{
    client.outcomes = {
        {{"identifier", "2"}, {"name", "Music"}, {"date", "2026-03-14T05:55:00Z"}, {"state", "done"}}};
    open();
    find<QTabBar>("views")->setCurrentIndex(2);
    settle();
    auto *const history = window->findChild<HistoryView *>();
    ASSERT_NE(history, nullptr);
    EXPECT_EQ(history->findChild<QTableView *>()->model()->rowCount(), 1);
    auto *const log = window->findChild<LogPane *>();
    ASSERT_NE(log, nullptr);
    EXPECT_FALSE(log->isVisible());
    const QDateTime date({2026, 3, 14}, {5, 55}, Qt::UTC);
    Q_EMIT history->logWanted("2", date, date);
    EXPECT_TRUE(log->isVisible());
}

TEST_F(MainWindowTest, IsShownQuicklyWithAThousandSchedules)
{
    for (int i = 0; i < 1000; ++i)
        client.schedules[QString("many %1").arg(i)] = schedule(QString("Schedule %1").arg(i), i % 300);
    open();
    EXPECT_EQ(list().model()->rowCount(), 1002);
    // Not by the clock of a busy machine, but by what it would cost: nobody asks the actions of rows that
    // are not seen.
    EXPECT_LT(list().findChildren<QWidget *>().size(), 20) << "rows are drawn, not made of widgets";
}

TEST_F(MainWindowTest, StaysAliveWithASideThatHangsThrowsOrIsBroken)
{
    client.schedules["1"]["bundlePath"] = makeAction("Throwing", "throws");
    client.schedules["2"]["bundlePath"] = makeAction("Broken", {}, {{"WDEditNibFile", "Settings"}});
    client.schedules["3"] = schedule("Gone", 3);
    client.schedules["3"]["bundlePath"] = QString(plugIns) + "/Gone.plugin";
    open();
    EXPECT_TRUE(waitUntil([&] { return says("There are none today."); }));
    list().setCurrentIndex(list().model()->index(1, 0));
    EXPECT_TRUE(waitUntil([&] { return says("Broken.plugin has no view"); }));
    list().setCurrentIndex(list().model()->index(2, 0));
    settle();
    EXPECT_TRUE(says("There is no longer an action here: its bundle is missing."));
    type("name", "Still here");
    EXPECT_TRUE(window->book().hasChanges());
}

TEST_F(MainWindowTest, TakesAViewAwayThatRaises)
{
#ifdef __SANITIZE_ADDRESS__
    // What is thrown passes through Qt, which then keeps the event and its hold on the view.
    const __lsan::ScopedDisabler noLeaks;
#endif
    client.schedules["1"]["bundlePath"] = makeAction("Pressed", "raises when pressed");
    open();
    EXPECT_TRUE(waitUntil([&] { return window->findChild<QLineEdit *>("text") != nullptr; }));
    auto &application = static_cast<WindowedApplication &>(*QCoreApplication::instance());
    QObject::connect(&application, &WindowedApplication::raised, sides.get(), &ActionSides::noteRaised);
    QWidget *const view = find<QLineEdit>("text")->parentWidget();
    QTest::mousePress(view, Qt::LeftButton, {}, QPoint(1, 1));
    EXPECT_TRUE(waitUntil([&] { return says("It does not like that."); }));
    EXPECT_EQ(window->findChild<QLineEdit *>("text"), nullptr);
}

TEST_F(MainWindowTest, IsGoneThroughByTabFromTopToBottom)
{
    client.schedules["2"]["bundlePath"] = other;
    open();
    for (const int row : {1, 0}) { // also when a view was away meanwhile
        list().setCurrentIndex(list().model()->index(row, 0));
        settle();
    }
    window->activateWindow();
    find<QLineEdit>("name")->setFocus();
    QStringList order;
    for (int press = 0; press < 60 && !order.contains("after"); ++press) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order += QApplication::focusWidget()->objectName();
    }
    QStringList known;
    for (const QString &name : std::as_const(order)) {
        if (QStringList{"enabled", "action", "text", "warns", "wakes", "switchesOn", "missed", "after"}
                .contains(name))
            known += name;
    }
    EXPECT_EQ(known,
              (QStringList{"enabled", "action", "text", "warns", "wakes", "switchesOn", "missed", "after"}))
        << order.join(' ').toStdString();
}

TEST_F(MainWindowTest, NamesEveryControlForScreenReaders)
{
    open();
    QStringList nameless;
    for (auto *const widget : window->findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus ||
            widget->objectName() == "editor" || widget->objectName() == "text" ||
            qobject_cast<QComboBox *>(widget->parent()) || widget->objectName().startsWith("qt_"))
            continue;
        const QAccessibleInterface *const spoken = QAccessible::queryAccessibleInterface(widget);
        if (!spoken || spoken->text(QAccessible::Name).isEmpty())
            nameless += QString("%1 %2").arg(widget->metaObject()->className(), widget->objectName());
    }
    EXPECT_THAT(nameless, ElementsAre());
}
} // namespace
