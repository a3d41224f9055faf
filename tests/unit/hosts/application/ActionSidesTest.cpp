// SPDX-License-Identifier: MIT
#include "hosts/application/actions/ActionSides.h"

#include "ActionFixture.h"

#include <QLineEdit>
#include <QTest>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace
{
class ActionSidesTest : public ActionFixture
{
protected:
    /// The state in which its trial leaves it.
    ActionSides::State settled(ActionSides &sides, const QString &path)
    {
        EXPECT_TRUE(waitUntil([&] { return sides.state(path) != ActionSides::State::Trying; }));
        return sides.state(path);
    }
};

TEST_F(ActionSidesTest, ListsTheActionsThatCanBeConfiguredByTheirNames)
{
    makeAction("Second");
    makeAction("First");
    write(QString(plugIns) + "/First.plugin/Contents/Resources/en.lproj/Localizable.strings",
          "\"Plugin Name\" = \"Wake with music\";");
    makeAction("NoSide", {}, {{"WDPrefPaneModule", ""}});
    ActionSides sides(trials());
    QStringList names;
    for (const ActionBundle &action : sides.actions())
        names += action.name;
    EXPECT_THAT(names, ElementsAre("Second", "Wake with music"));
    EXPECT_FALSE(sides.actions().first().icon.pixmap(24, 24).isNull());
}

TEST_F(ActionSidesTest, LoadsASideOnceItWasTried)
{
    const QString path = makeAction("Good");
    ActionSides sides(trials());
    EXPECT_EQ(sides.state(path), ActionSides::State::Trying);
    EXPECT_EQ(sides.description(path, {{"Text", "hello"}}), "Good");
    ASSERT_EQ(settled(sides, path), ActionSides::State::Ready);
    EXPECT_EQ(sides.description(path, {{"Text", "hello"}}), "Say hello");
}

TEST_F(ActionSidesTest, CarriesParametersIntoTheViewAndBack)
{
    const QString path = makeAction("Good");
    ActionSides sides(trials());
    ASSERT_EQ(settled(sides, path), ActionSides::State::Ready);
    ConfigurationSide &side = *sides.side(path);
    const auto view = side.view();
    ASSERT_TRUE(view);
    EXPECT_TRUE(side.show({{"Text", "before"}, {"Other", 1}}));
    auto *const text = (*view)->findChild<QLineEdit *>("text");
    EXPECT_EQ(text->text(), "before");
    text->setText("after");
    EXPECT_EQ(*side.read(), (QVariantMap{{"Text", "after"}, {"Other", 1}}));
    EXPECT_EQ(*side.defaults(), (QVariantMap{{"Text", "as usual"}, {"Needs Wake Up", 1}}));
}

TEST_F(ActionSidesTest, TriesASideWhereNothingOfItCanBeSeen)
{
    const QString path = makeAction("Good");
    write("/trial", R"(#!/bin/sh
echo "$QT_QPA_PLATFORM" >"$0.platform"
program=$1
shift
exec "$program" "$@"
)");
    const QString program = root.join("/trial");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", "xcb");
    const auto usual = trials();
    ActionSides sides({program, QStringList(usual.program) + usual.arguments});
    EXPECT_EQ(settled(sides, path), ActionSides::State::Ready);
    qputenv("QT_QPA_PLATFORM", platform);
    QFile said(program + ".platform");
    ASSERT_TRUE(said.open(QIODevice::ReadOnly));
    EXPECT_EQ(said.readAll(), "offscreen\n");
}

TEST_F(ActionSidesTest, TellsOnceOfWhatAPersonEditsAndNotOfWhatIsShown)
{
    const QString path = makeAction("Good");
    ActionSides sides(trials());
    ASSERT_EQ(settled(sides, path), ActionSides::State::Ready);
    ConfigurationSide &side = *sides.side(path);
    auto *const text = (*side.view())->findChild<QLineEdit *>("text");
    int told = 0;
    QObject::connect(&side, &ConfigurationSide::edited, [&] { ++told; });
    EXPECT_TRUE(side.show({{"Text", "before"}}));
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 0);
    QTest::keyClicks(text, "abc");
    EXPECT_TRUE(waitUntil([&] { return told > 0; }));
    EXPECT_EQ(told, 1);
}

TEST_F(ActionSidesTest, TellsNothingOfWhatASideChangesWhileItIsRead)
{
    const QString path = makeAction("Good", "tidies up");
    ActionSides sides(trials());
    ASSERT_EQ(settled(sides, path), ActionSides::State::Ready);
    ConfigurationSide &side = *sides.side(path);
    auto *const text = (*side.view())->findChild<QLineEdit *>("text");
    EXPECT_TRUE(side.show({{"Text", " before "}}));
    int told = 0;
    QObject::connect(&side, &ConfigurationSide::edited, [&] { ++told; });
    EXPECT_EQ(side.read()->value("Text"), "before");
    EXPECT_EQ(text->text(), "before");
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 0) << "or it would be read again and again";
}

TEST_F(ActionSidesTest, SurvivesASideThatHangsAndOneThatCrashesBeforeAGoodOne)
{
    const QString hanging = makeAction("A", "hangs");
    const QString crashing = makeAction("B", "crashes");
    const QString good = makeAction("C");
    ActionSides sides(trials(), 3s);
    for (const QString &path : {hanging, crashing, good})
        EXPECT_EQ(sides.state(path), ActionSides::State::Trying);
    EXPECT_EQ(settled(sides, hanging), ActionSides::State::Failed);
    EXPECT_EQ(sides.failure(hanging), "It does not come to an end while it is loaded.");
    EXPECT_EQ(settled(sides, crashing), ActionSides::State::Failed);
    EXPECT_EQ(sides.failure(crashing), "It crashes while it is loaded.");
    EXPECT_EQ(settled(sides, good), ActionSides::State::Ready);
}

TEST_F(ActionSidesTest, TriesOneThatIsAskedForJustWhenTheOthersAreDone)
{
    const QString first = makeAction("First");
    const QString second = makeAction("Second");
    ActionSides sides(trials());
    QObject::connect(&sides, &ActionSides::stateChanged, [&](const QString &path) {
        if (path == first)
            sides.state(second); // while the process that tried the first is still ending
    });
    EXPECT_EQ(settled(sides, first), ActionSides::State::Ready);
    EXPECT_EQ(settled(sides, second), ActionSides::State::Ready);
}

TEST_F(ActionSidesTest, SaysWhatASideThrows)
{
    const QString path = makeAction("Throwing", "throws");
    ActionSides sides(trials());
    EXPECT_EQ(settled(sides, path), ActionSides::State::Failed);
    EXPECT_THAT(sides.failure(path).toStdString(), testing::HasSubstr("There are none today."));
    EXPECT_EQ(sides.side(path), nullptr);
    EXPECT_EQ(sides.description(path, {}), "Throwing");
}

TEST_F(ActionSidesTest, HasNoViewWhereTheInterfaceFileIsBroken)
{
    const QString path = makeAction("Broken", {}, {{"WDEditNibFile", "Settings"}});
    write(path + "/Contents/Resources/Settings.ui", "<ui version=\"4.0\"><widget");
    ActionSides sides(trials());
    ASSERT_EQ(settled(sides, path), ActionSides::State::Ready);
    EXPECT_EQ(sides.side(path)->view().error().text, "Broken.plugin has no view");
}

TEST_F(ActionSidesTest, GivesUpASideWhoseViewRaisesInAnEvent)
{
    const QString path = makeAction("Pressed", "raises when pressed");
    ActionSides sides(trials());
    ASSERT_EQ(settled(sides, path), ActionSides::State::Ready);
    auto *const view = *sides.side(path)->view();
    sides.noteRaised(view->findChild<QLineEdit *>("text"), "it raised");
    EXPECT_EQ(sides.state(path), ActionSides::State::Failed);
    EXPECT_EQ(sides.failure(path), "it raised");
}

TEST_F(ActionSidesTest, KnowsAnActionWhoseBundleHasGoneByTheNameOfItsFile)
{
    ActionSides sides(trials());
    const QString path = QString(plugIns) + "/Gone away.plugin";
    EXPECT_EQ(sides.action(path).name, "Gone away");
    EXPECT_EQ(sides.state(path), ActionSides::State::None);
}
} // namespace
