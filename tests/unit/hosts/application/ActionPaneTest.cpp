// SPDX-License-Identifier: MIT
#include "hosts/application/window/ActionPane.h"

#include "ActionFixture.h"
#include "support/PrintTo.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

namespace
{
class ActionPaneTest : public ActionFixture
{
protected:
    void open()
    {
        sides = std::make_unique<ActionSides>(trials());
        pane = std::make_unique<ActionPane>(*sides);
        pane->setVisible(true);
        QObject::connect(pane.get(), &ActionPane::chosen,
                         [this](const QString &path, const QVariantMap &defaults) {
                             chosen += path.section('/', -1) + ' ' + defaults.value("Text").toString();
                         });
    }
    /// As a person does, by the name.
    void choose(const QString &name)
    {
        auto *const chooser = pane->findChild<QComboBox *>("action");
        chooser->setCurrentIndex(chooser->findText(name));
        Q_EMIT chooser->activated(chooser->currentIndex());
    }
    bool isTried(const QString &path)
    {
        return waitUntil([&] { return sides->state(path) != ActionSides::State::Trying; });
    }
    QString sentence() const
    {
        const auto *const label = pane->findChild<QLabel *>("actionSentence");
        return label->isHidden() ? QString() : label->text();
    }

    std::unique_ptr<ActionSides> sides;
    std::unique_ptr<ActionPane> pane;
    QStringList chosen;
};
} // namespace

TEST_F(ActionPaneTest, TellsAChoiceWithItsDefaultsOnceTheActionWasTried)
{
    const QString talk = makeAction("Talk");
    const QString sing = makeAction("Sing");
    open();
    ASSERT_TRUE(isTried(talk));
    pane->show(talk, {{"Text", "hello"}});
    choose("Sing");
    EXPECT_EQ(chosen.isEmpty(), sides->state(sing) == ActionSides::State::Trying);
    ASSERT_TRUE(isTried(sing));
    EXPECT_EQ(chosen, QStringList("Sing.plugin as usual"));
    pane->show(sing, {{"Text", "as usual"}}); // as whoever is told does
    EXPECT_EQ(sentence(), "");
    EXPECT_EQ(pane->findChild<QLineEdit *>("text")->text(), "as usual");
}

TEST_F(ActionPaneTest, ForgetsAChoiceThatItWaitsForWhenSomethingElseIsShown)
{
    const QString talk = makeAction("Talk");
    const QString slow = makeAction("Slow", "hangs");
    open();
    ASSERT_TRUE(isTried(talk));
    pane->show(talk, {{"Text", "hello"}});
    ASSERT_EQ(sides->state(slow), ActionSides::State::Trying);
    choose("Slow");
    EXPECT_EQ(sentence(), "Loading the settings…");
    pane->show(talk, {{"Text", "of another"}});
    EXPECT_EQ(pane->findChild<QComboBox *>("action")->currentText(), "Talk");
    EXPECT_EQ(pane->findChild<QLineEdit *>("text")->text(), "of another");
    choose("Slow");
    pane->clear();
    EXPECT_EQ(sentence(), "");
    ASSERT_TRUE(isTried(slow));
    EXPECT_EQ(chosen, QStringList());
    pane->show(talk, {{"Text", "hello"}});
    choose("Slow"); // which is known by now to have no side
    EXPECT_EQ(chosen, QStringList("Slow.plugin "));
}

TEST_F(ActionPaneTest, TouchesAViewNoMoreThatItHasLetGo)
{
    const QString talk = makeAction("Talk");
    open();
    ASSERT_TRUE(isTried(talk));
    pane->show(talk, {{"Text", "hello"}});
    auto *const edit = pane->findChild<QLineEdit *>("text");
    pane->clear();
    QWidget *const view = edit->window();
    QWidget elsewhere;
    view->setParent(&elsewhere);
    view->show();
    pane->clear();
    EXPECT_EQ(view->parentWidget(), &elsewhere);
    EXPECT_FALSE(view->isHidden());
    view->setParent(nullptr); // the plug-in's own
}

TEST_F(ActionPaneTest, TellsWhatWasEditedAddedAndTakenAway)
{
    const QString talk = makeAction("Talk");
    open();
    ASSERT_TRUE(isTried(talk));
    QList<QVariantMap> edits;
    QObject::connect(pane.get(), &ActionPane::edited, [&](const QVariantMap &changes) { edits += changes; });
    QVariantMap parameters{{"Text", "hello"}, {"Other", 7}};
    pane->show(talk, parameters);
    const auto write = [&](const QString &text) {
        pane->findChild<QLineEdit *>("text")->setText(text);
        pane->commit();
        return edits.isEmpty() ? QVariantMap() : edits.takeLast();
    };
    EXPECT_EQ(write("hello"), QVariantMap());
    EXPECT_EQ(write("bye"), (QVariantMap{{"Text", "bye"}}));
    EXPECT_EQ(write(""), (QVariantMap{{"Text", QVariant()}}));
    EXPECT_EQ(write("again"), (QVariantMap{{"Text", "again"}}));
    EXPECT_TRUE(edits.isEmpty());
}
