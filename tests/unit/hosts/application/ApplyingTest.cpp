// SPDX-License-Identifier: MIT
// What becomes of changes in the window: applied, refused, taken back, met by somebody else's, left at the
// end.
#include "WindowFixture.h"

#include "hosts/application/program/Translations.h"

class ApplyingTest : public WindowFixture
{
};

TEST_F(ApplyingTest, AppliesATypedNameByTheButton)
{
    open();
    EXPECT_FALSE(find<QPushButton>("apply")->isEnabled());
    type("name", "Night");
    EXPECT_EQ(client.schedules["1"]["name"], "Backup");
    EXPECT_EQ(row(0), "Night, tomorrow 06:55, Say hello, not applied yet");
    press("apply");
    EXPECT_EQ(client.schedules["1"]["name"], "Night");
    EXPECT_FALSE(find<QPushButton>("apply")->isEnabled());
}

TEST_F(ApplyingTest, UndoesAndRedoesByButtons)
{
    open();
    type("name", "Night");
    press("undo");
    EXPECT_EQ(find<QLineEdit>("name")->text(), "Backup");
    EXPECT_FALSE(find<QToolButton>("undo")->isEnabled());
    press("redo");
    EXPECT_EQ(find<QLineEdit>("name")->text(), "Night");
}

TEST_F(ApplyingTest, OffersToApplyAllTheSameWhatNothingCouldComeOf)
{
    open();
    type("name", "Night");
    client.refusal =
        dozely::Error{"Nothing could come of it: there is no /x. With \"anyway\" it is done all the same.",
                      "com.dozely.Error.NotFeasible"};
    press("apply");
    ASSERT_TRUE(says("This was not applied: Nothing could come of it: there is no /x."));
    EXPECT_FALSE(says("anyway"));
    client.refusal.reset();
    pressText("Apply all the same");
    EXPECT_EQ(client.lastChanges.value("anyway"), true);
    EXPECT_EQ(client.schedules["1"]["name"], "Night");
    EXPECT_FALSE(window->book().hasChanges());
    EXPECT_FALSE(says("This was not applied"));
}

TEST_F(ApplyingTest, AsksBeforeItClosesWithChanges)
{
    open();
    type("name", "Night");
    EXPECT_FALSE(window->close());
    auto *const question = window->findChild<QMessageBox *>();
    ASSERT_NE(question, nullptr);
    EXPECT_TRUE(question->isVisible());
    EXPECT_TRUE(question->isModal());
    QTest::mouseClick(question->button(QMessageBox::Cancel), Qt::LeftButton);
    settle();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(client.schedules["1"]["name"], "Backup");

    EXPECT_FALSE(window->close());
    QTest::mouseClick(window->findChild<QMessageBox *>()->defaultButton(), Qt::LeftButton);
    EXPECT_TRUE(waitUntil([&] { return !window->isVisible(); }));
    EXPECT_EQ(client.schedules["1"]["name"], "Night");
}

TEST_F(ApplyingTest, ClosesWithoutItsChangesWhereThatIsWanted)
{
    open();
    type("name", "Night");
    EXPECT_FALSE(window->close());
    EXPECT_FALSE(window->close());
    EXPECT_EQ(window->findChildren<QMessageBox *>().size(), 1) << "it is asked once";
    auto *const question = window->findChild<QMessageBox *>();
    for (QAbstractButton *const button : question->buttons()) {
        if (question->buttonRole(button) == QMessageBox::DestructiveRole)
            QTest::mouseClick(button, Qt::LeftButton);
    }
    EXPECT_TRUE(waitUntil([&] { return !window->isVisible(); }));
    EXPECT_EQ(client.schedules["1"]["name"], "Backup");
}

TEST_F(ApplyingTest, ClosesWithoutAQuestionWhereNothingIsChanged)
{
    open();
    EXPECT_TRUE(window->close());
}

TEST_F(ApplyingTest, StaysOpenWhenWhatItAppliesBeforeClosingIsRefused)
{
    open();
    type("name", "Night");
    client.refusal = dozely::Error{"You may not.", "com.dozely.Error.NotAllowed"};
    window->close();
    QTest::mouseClick(window->findChild<QMessageBox *>()->defaultButton(), Qt::LeftButton);
    settle();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(says("This could not be applied: You may not."));
}

TEST_F(ApplyingTest, SaysReasonsOfTheDaemonInThePersonsLanguage)
{
    Translations::install({"de"});
    open();
    type("name", "Night");
    client.refusal = dozely::Error{
        "Nothing could come of it: there is no program /x. With \"anyway\" it is done all the same.",
        "com.dozely.Error.NotFeasible"};
    press("apply");
    EXPECT_TRUE(says("Daraus könnte nichts werden: es gibt kein Programm /x."));
    client.refusal = dozely::Error{"The machine is kept awake by Player.", "com.dozely.Error.NotPossible"};
    press("testWaking");
    EXPECT_TRUE(says("Der Computer wird wach gehalten von Player."));
    EXPECT_FALSE(says("could come") || says("kept awake"));
}

TEST_F(ApplyingTest, SaysThatSomebodyElseChangedTheSame)
{
    open();
    type("name", "Mine");
    client.changeElsewhere("1", {{"name", "Theirs"}});
    settle();
    EXPECT_TRUE(says("Somebody else has changed this schedule, too."));
    EXPECT_EQ(find<QLineEdit>("name")->text(), "Mine");
}

TEST_F(ApplyingTest, TakesOverWhatSomebodyElseChangedOrKeepsItsOwn)
{
    open();
    type("name", "Mine");
    client.changeElsewhere("1", {{"name", "Theirs"}});
    settle();
    pressText("Take over theirs");
    EXPECT_EQ(find<QLineEdit>("name")->text(), "Theirs");
    EXPECT_FALSE(window->book().hasChanges());
    EXPECT_FALSE(says("Somebody else"));

    type("name", "Mine");
    client.changeElsewhere("1", {{"name", "Theirs again"}});
    settle();
    pressText("Keep mine");
    EXPECT_FALSE(says("Somebody else"));
    press("apply");
    EXPECT_EQ(client.schedules["1"]["name"], "Mine");
}

TEST_F(ApplyingTest, SaysThatSomebodyElseRemovedWhatIsChangedAndAddsItAgain)
{
    open();
    type("name", "Mine");
    client.removeElsewhere("1");
    settle();
    EXPECT_TRUE(says("Somebody else has removed this schedule. Applying your changes adds it again."));
    client.calls.clear();
    press("apply");
    EXPECT_THAT(client.calls, testing::Contains(QString("add Mine")));
    EXPECT_FALSE(says("Somebody else"));
}

TEST_F(ApplyingTest, AppliesNothingAsLongAsItsRuleIsWrong)
{
    client.schedules["1"]["repeats"] =
        QVariantMap{{"rule", "FREQ=DAILY;BYDAY=1M"}, {"localStart", "2026-03-14T06:55:00"}};
    open();
    type("name", "Night");
    client.calls.clear();
    press("apply");
    EXPECT_TRUE(says("This cannot be applied yet: ")) << qPrintable(sentences().join('|'));
    EXPECT_EQ(client.schedules["1"]["name"], "Backup");
    EXPECT_EQ(client.calls, QStringList());
}

TEST_F(ApplyingTest, CountsWhatCouldNotBeApplied)
{
    open();
    type("name", "Night");
    list().setCurrentIndex(list().model()->index(1, 0));
    settle();
    type("name", "Day");
    client.refusal = dozely::Error{"You may not.", "com.dozely.Error.NotAllowed"};
    press("apply");
    EXPECT_TRUE(says("could not be applied and keep their changes here."));
    EXPECT_TRUE(says("This could not be applied: You may not.")) << "of the one that is shown";
    client.refusal.reset();
    press("apply");
    EXPECT_FALSE(says("could not be applied"));
    EXPECT_EQ(client.schedules["1"]["name"], "Night");
    EXPECT_EQ(client.schedules["2"]["name"], "Day");
}

TEST_F(ApplyingTest, SaysSoWhileItIsUnderWay)
{
    open();
    type("name", "Night");
    const auto *const apply = find<QPushButton>("apply");
    EXPECT_EQ(apply->text(), "A&pply");
    window->book().apply();
    EXPECT_EQ(apply->text(), "Applying…");
    EXPECT_FALSE(apply->isEnabled());
    settle();
    EXPECT_EQ(apply->text(), "A&pply");
    EXPECT_FALSE(apply->isEnabled());
}
