// SPDX-License-Identifier: MIT
// The sides of what acts in the session, as built.
#include "SideFixture.h"
#include "support/BaselineText.h"
#include "support/FileDialog.h"
#include "support/PrintTo.h"
#include "support/WidgetDescription.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace
{
const QStringList names{"Command", "Script",     "Sleep",  "PowerOff", "Restart",
                        "Open",    "LockScreen", "LogOut", "Message"};
const QStringList languages{"en", "de", "fr", "es", "ja", "ar"};
} // namespace

class SessionSettingsTest : public SideFixture
{
};

TEST_F(SessionSettingsTest, OpenCarriesItsItems)
{
    load("Open");
    const QVariantMap all{{"Items", QVariantList{"/home/a b", "https://example.org", QString("/a\nb")}},
                          {"Other", 1}};
    fill(all);
    EXPECT_EQ(find<QListWidget>("items")->count(), 3);
    EXPECT_EQ(read(), all);
    EXPECT_EQ(plugIn->actionString(), "Open a b, …");
    find<QListWidget>("items")->setCurrentRow(1);
    find<QPushButton>("remove")->click();
    EXPECT_EQ(read().value("Items"), (QVariantList{"/home/a b", QString("/a\nb")}));
    fill({{"Items", QVariantList{"org.example.Player.desktop"}}});
    EXPECT_EQ(plugIn->actionString(), "Open Player");
    fill({});
    EXPECT_EQ(plugIn->actionString(), "-");
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", root.makeFolder("/nothing").toUtf8());
    load("Open");
    qputenv("PATH", path);
    EXPECT_EQ(remark(), "The program xdg-open (package xdg-utils) is not there: applications alone can be "
                        "opened.");
}

TEST_F(SessionSettingsTest, OpenTakesFilesFoldersAndApplicationsFromDialogs)
{
    load("Open");
    fill({{"Items", QVariantList{"/first"}}});
    plugIn->setupView()->show();
    QApplication::setActiveWindow(plugIn->setupView());
    const auto choose = [this](const char *button, const QString &path) {
        chooseInNextFileDialog(path);
        find<QPushButton>(button)->click();
        return read().value("Items").toStringList().last();
    };
    EXPECT_EQ(choose("addFile", "/usr/bin/env"), "/usr/bin/env");
    EXPECT_EQ(choose("addFolder", root.makeFolder("/music")), root.join("/music"));
    EXPECT_EQ(read().value("Items").toList().size(), 3);
    plugIn->setupView()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(plugIn->setupView()));
    find<QPushButton>("remove")->setFocus();
    find<QPushButton>("remove")->click();
    EXPECT_EQ(QApplication::focusWidget(), find<QListWidget>("items")) << "the keyboard goes on there";
}

TEST_F(SessionSettingsTest, OpenHasARowEditedInAFieldThatScreenReadersFind)
{
    load("Open");
    const auto items = [this] { return read().value("Items").toStringList(); };
    auto *const field = find<QLineEdit>("item");
    auto *const list = find<QListWidget>("items");
    EXPECT_EQ(field->accessibleName(), "Chosen row");

    fill({{"Items", QVariantList{"/home/a", "/home/b", QString("/a\nb")}}});
    EXPECT_FALSE(field->isEnabled()) << "no row is chosen";
    list->setCurrentRow(1);
    EXPECT_EQ(field->text(), "/home/b");
    field->setText("/home/c"); // as a screen reader does
    EXPECT_EQ(items(), (QStringList{"/home/a", "/home/c", "/a\nb"}));
    EXPECT_EQ(list->item(1)->text(), "/home/c");
    list->item(1)->setText("/home/d"); // in the row itself
    EXPECT_EQ(field->text(), "/home/d");
    list->setCurrentRow(2);
    EXPECT_TRUE(field->isReadOnly()) << "it cannot be shown as it is";
    EXPECT_FALSE(field->accessibleDescription().isEmpty());
    field->setText("/other");
    EXPECT_EQ(items().at(2), "/a\nb");
    EXPECT_NE(field->text(), "/other");
    list->setCurrentRow(0);
    find<QPushButton>("remove")->click();
    EXPECT_EQ(items(), (QStringList{"/home/d", "/a\nb"}));
    EXPECT_EQ(field->text(), list->currentItem()->text());
}

TEST_F(SessionSettingsTest, OpenTakesItsFirstRowFromTheField)
{
    load("Open");
    const auto items = [this] { return read().value("Items").toStringList(); };
    auto *const field = find<QLineEdit>("item");
    fill({{"Items", QVariantList{"/home/only"}}});
    EXPECT_EQ(field->text(), "/home/only") << "there is no other";
    fill({{"Items", QVariantList()}});
    EXPECT_TRUE(field->isEnabled());
    field->setText("h");
    field->setText("https://example.org");
    EXPECT_EQ(items(), QStringList("https://example.org"));
    find<QPushButton>("addAddress")->click();
    EXPECT_EQ(field->text(), "");
    field->setText("/home/b");
    EXPECT_EQ(items(), (QStringList{"https://example.org", "/home/b"}));
    find<QPushButton>("addAddress")->click();
    QTest::keyClick(field, Qt::Key_Escape); // he changes his mind
    EXPECT_EQ(items(), (QStringList{"https://example.org", "/home/b"}));
    fill({{"Items", "no list"}});
    EXPECT_TRUE(field->isReadOnly());
}

TEST_F(SessionSettingsTest, MessageCarriesItsTextAndSound)
{
    load("Message");
    const QVariantMap all{{"Text", "one\ntwo"}, {"Title", "Tea"}, {"Sound", "my-own-sound"}};
    fill(all);
    EXPECT_EQ(find<QComboBox>("sound")->currentText(), "my-own-sound");
    EXPECT_EQ(read(), all);
    EXPECT_EQ(plugIn->actionString(), "Say: one");
    find<QPlainTextEdit>("text")->setPlainText("three");
    find<QLineEdit>("caption")->clear();
    find<QComboBox>("sound")->setCurrentIndex(0);
    EXPECT_EQ(read(), (QVariantMap{{"Text", "three"}, {"Title", ""}, {"Sound", ""}}));
    const QVariantMap odd{{"Text", QString("a\u2029b")}, {"Title", "a\nb"}};
    fill(odd);
    EXPECT_EQ(read(), odd) << "what a field cannot show stays";
}

TEST_F(SessionSettingsTest, MessageOffersEachSoundOnceAndAForeignOneOnlyWhileItIsChosen)
{
    load("Message");
    fill({{"Text", "a"}});
    auto *const sound = find<QComboBox>("sound");
    const int count = sound->count();
    EXPECT_EQ(sound->currentIndex(), 0);
    fill({{"Text", "a"}, {"Sound", "my-own-sound"}});
    EXPECT_EQ(sound->count(), count + 1);
    fill({{"Text", "a"}, {"Sound", "bell"}});
    EXPECT_EQ(sound->count(), count);
    EXPECT_EQ(sound->currentText(), "Bell");
}

TEST_F(SessionSettingsTest, MessageIsNamedByItsFirstSixtyLetters)
{
    load("Message");
    const QString sixty(60, 'x');
    fill({{"Text", "\n " + sixty + "\nmore"}});
    EXPECT_EQ(plugIn->actionString(), "Say: " + sixty);
    fill({{"Text", sixty + 'y'}});
    EXPECT_EQ(plugIn->actionString(), "Say: " + sixty + QChar(0x2026));
    fill({{"Text", " \n"}});
    EXPECT_EQ(plugIn->actionString(), "-");
}

TEST_F(SessionSettingsTest, MessageSaysWhatTheDesktopLacks)
{
    load("Message");
    expectRemark("Nothing in this session shows notifications. The text is shown in a window of its own, "
                 "without a sound.");
    ASSERT_TRUE(bus.startMock("notification_daemon", "org.freedesktop.Notifications"));
    ASSERT_TRUE(bus.call("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                         "org.freedesktop.DBus.Mock.AddMethod",
                         {"org.freedesktop.Notifications", "GetCapabilities", "", "as", "ret = ['body']"}));
    load("Message");
    expectRemark("This desktop does not say that it plays sounds. The text may be shown without one.");
}

TEST_F(SessionSettingsTest, ScriptHasATextOrAFile)
{
    load("Script");
    const QVariantMap text{{"Script", "return 1\n-- two"}};
    fill(text);
    EXPECT_TRUE(find<QRadioButton>("isText")->isChecked());
    EXPECT_FALSE(find<QLineEdit>("file")->isEnabled());
    EXPECT_EQ(read(), text);
    EXPECT_EQ(plugIn->actionString(), "Run a script");
    find<QRadioButton>("isFile")->click();
    find<QLineEdit>("file")->setText("/home/anna/water.lua");
    EXPECT_EQ(read(), (QVariantMap{{"Script File", "/home/anna/water.lua"}}));
    EXPECT_EQ(plugIn->actionString(), "Run water.lua");
    fill({{"Script File", "/a.lua"}});
    EXPECT_FALSE(find<QPlainTextEdit>("script")->isEnabled());
    EXPECT_EQ(read(), (QVariantMap{{"Script File", "/a.lua"}}));
}

TEST_F(SessionSettingsTest, ScriptShowsATextOrAFileAsItIsGiven)
{
    load("Script");
    const auto isFile = [this] { return find<QRadioButton>("isFile")->isChecked(); };
    fill({{"Script File", "/a.lua"}});
    EXPECT_TRUE(isFile());
    EXPECT_TRUE(find<QLineEdit>("file")->isEnabled());
    EXPECT_FALSE(find<QPlainTextEdit>("script")->isEnabled());
    fill({{"Script", "return 1"}});
    EXPECT_FALSE(isFile());
    EXPECT_TRUE(find<QPlainTextEdit>("script")->isEnabled());
    const QVariantMap both{{"Script", "return 1"}, {"Script File", "/a.lua"}};
    fill(both);
    EXPECT_FALSE(isFile());
    EXPECT_EQ(read(), both) << "nobody chose another";
}

TEST_F(SessionSettingsTest, ScriptTakesAnEditThatLeadsBackToWhatWasShownFirst)
{
    load("Script");
    fill({{"Script File", "/a.lua"}});
    for (const char *file : {"/b.lua", "/a.lua"}) {
        find<QLineEdit>("file")->setText(file);
        EXPECT_EQ(read(), (QVariantMap{{"Script File", file}}));
    }
    fill({{"Script", "return 1"}});
    for (const char *script : {"return 2", "return 1"}) {
        find<QPlainTextEdit>("script")->setPlainText(script);
        EXPECT_EQ(read(), (QVariantMap{{"Script", script}}));
    }
}

TEST_F(SessionSettingsTest, ScriptIsWrittenInLettersOfOneWidthAndTheSizeAround)
{
    load("Script");
    fill({});
    const QFont font = find<QPlainTextEdit>("script")->font();
    EXPECT_EQ(font.family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    EXPECT_EQ(font.pointSizeF(), find<QLineEdit>("file")->font().pointSizeF());
}

TEST_F(SessionSettingsTest, ScriptSaysThatNothingRunsScriptsHere)
{
    load("Script");
    const QString sentence = "The script engine of this system does not run here: no script can be run.";
    expectRemark(sentence);
    root.makeFolder("/usr/bin");
    QFile program(root.join("/usr/bin/osascript"));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho >\"$0.asked\"; exit 0\n");
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();
    load("Script");
    EXPECT_TRUE(waitUntil([&] { return QFile::exists(program.fileName() + ".asked"); }));
    EXPECT_EQ(remark(), QString());
    program.open(QIODevice::WriteOnly | QIODevice::Truncate);
    program.write("#!/bin/sh\nexit 1\n");
    program.close();
    load("Script");
    expectRemark(sentence);
}

TEST_F(SessionSettingsTest, LockScreenAndLogOutSayWhatTheDesktopLacks)
{
    load("LockScreen");
    expectRemark(
        "No program that locks the screen was found in this session. Without one nothing is locked.");
    load("LogOut");
    expectRemark("This desktop cannot be asked to log out in good order. The session is ended at once, and "
                 "what is not saved is lost.");
    EXPECT_EQ(plugIn->defaultParameters().value("Alert"), 1);
}

TEST_F(SessionSettingsTest, DescriptionsOfAllAreAsTheyWere)
{
    const QMap<QString, QVariantMap> filled{
        {"Command", {{"Program", "/bin/echo"}, {"Arguments", QStringList{"a", "b c"}}}},
        {"Script", {{"Script", "return 1"}}},
        {"Open", {{"Items", QVariantList{"/home/a b", "https://example.org"}}}},
        {"Message", {{"Text", "one\ntwo"}, {"Title", "Tea"}, {"Sound", "bell"}}}};
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", root.makeFolder("/nothing").toUtf8());
    for (const QString &name : names) {
        for (const bool hostHas : {true, false}) {
            hostHasUsualOptions = hostHas;
            load(name);
            fill(filled.value(name));
            EXPECT_TRUE(name == "Command" || waitUntil([this] { return !remark().isEmpty(); }))
                << qPrintable(name);
            QWidget *const view = plugIn->setupView();
            view->resize(600, view->sizeHint().height());
            view->show();
            QCoreApplication::processEvents();
            EXPECT_TRUE(
                readsLikeBaseline(describe(*view), name.toLower() + (hostHas ? "-side" : "-side-alone")));
        }
    }
    qputenv("PATH", path);
}

TEST_F(SessionSettingsTest, AllHaveNameIconAndTextsInSixLanguages)
{
    for (const QString &name : names) {
        QStringList shown;
        for (const QString &language : languages) {
            dozely::UserLanguages::set({language});
            load(name);
            EXPECT_FALSE(bundle->pathForResource("Icon", "png").isEmpty()) << qPrintable(name);
            for (auto *const button : plugIn->setupView()->findChildren<QAbstractButton *>())
                shown += language + button->text();
            const QString table = bundle->pathForResource("Localizable", "strings");
            EXPECT_TRUE(table.contains(language + ".lproj")) << qPrintable(table);
            const QString view = bundle->objectForInfoDictionaryKey("WDEditNibFile").toString();
            EXPECT_TRUE(bundle->pathForResource(view, "strings").contains(language + ".lproj"))
                << qPrintable(name + language);
        }
        for (const QString &text : shown)
            EXPECT_FALSE(!text.startsWith("en") && shown.contains("en" + text.mid(2)) && text.size() > 8)
                << qPrintable(name + ": " + text) << " is not translated";
    }
}

TEST_F(SessionSettingsTest, OnlySidesNeedWidgets)
{
    for (const QString &name : names) {
        load(name);
        for (const QString key : {"WDDaemonModule", "WDUserAgentModule"}) {
            const QString module = bundle->objectForInfoDictionaryKey(key).toString();
            QFile file(bundle->bundlePath() + "/Contents/Linux/" + module);
            if (module.isEmpty())
                continue;
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
            EXPECT_FALSE(file.readAll().contains("libQt6Widgets")) << qPrintable(file.fileName());
        }
    }
}
