// SPDX-License-Identifier: MIT
// The bundle's module for configuration interfaces, as built.
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "support/BaselinePicture.h"
#include "support/Canvas.h"
#include "support/FileDialog.h"
#include "support/Look.h"
#include "support/ScratchRoot.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <gmock/gmock.h>

#include <limits>

using namespace dozely;

namespace
{
class CommandSettings : public testing::Test
{
protected:
    CommandSettings()
    {
        UserLanguages::set({"en"});
        remake();
    }
    void remake()
    {
        plugIn.reset();
        bundle = NSBundle::bundleWithPath(COMMAND_BUNDLE);
        const QString module = bundle->objectForInfoDictionaryKey("WDPrefPaneModule").toString();
        const auto root = bundle->loadModule(module, WDPlugInFactory_iid);
        ASSERT_TRUE(root) << qPrintable(root.error().text);
        auto *const factory = qobject_cast<WDPlugInFactory *>(*root);
        ASSERT_TRUE(factory);
        const std::shared_ptr<WDPlugIn> made = factory->makeForRole("WDPrefPaneModule");
        plugIn = std::dynamic_pointer_cast<WDPrefPanePlugIn>(made);
        ASSERT_TRUE(plugIn);
        plugIn->setBundle(bundle);
        plugIn->setProperty("hostHasUsualOptions", hostHasUsualOptions);
        plugIn->loadNib();
        ASSERT_TRUE(plugIn->setupView());
    }
    template<class Widget>
    Widget *find(const QString &name)
    {
        return plugIn->setupView()->findChild<Widget *>(name);
    }
    QListWidget *rows() { return find<QListWidget>("arguments"); }
    QStringList texts()
    {
        QStringList texts;
        for (int row = 0; row < rows()->count(); ++row)
            texts += rows()->item(row)->text();
        return texts;
    }
    /// The field in which a row is being edited.
    QLineEdit *editor()
    {
        for (auto *const field : rows()->viewport()->findChildren<QLineEdit *>()) {
            if (!field->isHidden())
                return field;
        }
        return nullptr;
    }
    void addArgument(const QString &text)
    {
        find<QPushButton>("add")->click();
        ASSERT_TRUE(editor());
        QTest::keyClicks(editor(), text);
        QTest::keyClick(editor(), Qt::Key_Return);
        // The editor is closed from the event loop.
        ASSERT_TRUE(QTest::qWaitFor([this] { return !editor(); }));
    }
    void fill(const QVariantMap &parameters)
    {
        plugIn->setParameters(parameters);
        plugIn->fillSetupInterfaceFromParameters();
    }
    QVariantMap read()
    {
        plugIn->fillParametersFromSetupInterface();
        return *plugIn->parameters();
    }

    ScratchRoot root;
    bool hostHasUsualOptions = false;
    std::shared_ptr<NSBundle> bundle;
    std::shared_ptr<WDPrefPanePlugIn> plugIn;
};
const QVariantMap all{{"Program", "/usr/bin/touch"},
                      {"Arguments", QVariantList{"-c", "/tmp/a b", ""}},
                      {"Alert", 1},
                      {"Delay before alert", 300},
                      {"Needs Wake Up", 1},
                      {"Needs Startup", 1},
                      {"Acts In User Agent", 0}};
} // namespace

TEST_F(CommandSettings, ShowsTheParameters)
{
    fill(all);
    EXPECT_EQ(find<QLineEdit>("program")->text(), "/usr/bin/touch");
    EXPECT_EQ(texts(), (QStringList{"-c", "/tmp/a b", ""}));
    EXPECT_TRUE(find<QCheckBox>("alert")->isChecked());
    EXPECT_EQ(find<QSpinBox>("leadTime")->value(), 300);
    EXPECT_TRUE(find<QCheckBox>("wakeUp")->isChecked());
    EXPECT_TRUE(find<QCheckBox>("startup")->isChecked());
}

TEST_F(CommandSettings, WritesBackWhatItShowed)
{
    fill(all);
    EXPECT_EQ(read(), all) << "and what it does not know stays";
}

TEST_F(CommandSettings, WritesWhatTheUserEntered)
{
    fill({});
    QTest::keyClicks(find<QLineEdit>("program"), "/bin/echo");
    addArgument("one");
    addArgument("two words");
    find<QCheckBox>("alert")->click();
    find<QSpinBox>("leadTime")->setValue(90);
    find<QCheckBox>("wakeUp")->click();
    EXPECT_EQ(read(), (QVariantMap{{"Program", "/bin/echo"},
                                   {"Arguments", QVariantList{"one", "two words"}},
                                   {"Alert", 1},
                                   {"Delay before alert", 90},
                                   {"Needs Wake Up", 1},
                                   {"Needs Startup", 0}}));
    EXPECT_EQ(plugIn->timeBeforeSelfAnticipation(), 90);
    EXPECT_TRUE(plugIn->needsWakeUp());
}

TEST_F(CommandSettings, OffersTheLeadTimeWithTheAlertAlone)
{
    fill({});
    EXPECT_FALSE(find<QSpinBox>("leadTime")->isEnabled());
    EXPECT_EQ(find<QSpinBox>("leadTime")->value(), 60);
    find<QCheckBox>("alert")->click();
    EXPECT_TRUE(find<QSpinBox>("leadTime")->isEnabled());
    fill({{"Alert", 1}, {"Delay before alert", -1}});
    EXPECT_FALSE(find<QCheckBox>("alert")->isChecked()) << "a lead time of -1 means no alert";
}

TEST_F(CommandSettings, KeepsALeadTimeThatItCannotShow)
{
    for (const QVariantMap &alert : {QVariantMap{{"Alert", 1}, {"Delay before alert", 0}},
                                     QVariantMap{{"Alert", 1}, {"Delay before alert", -5}},
                                     QVariantMap{{"Alert", 1}, {"Delay before alert", -1}},
                                     QVariantMap{{"Alert", 0}, {"Delay before alert", -1}},
                                     QVariantMap{{"Alert", "2"}, {"Delay before alert", "15 s"}}}) {
        QVariantMap parameters = all;
        parameters.insert(alert);
        fill(parameters);
        EXPECT_EQ(read(), parameters);
    }
}

TEST_F(CommandSettings, ShowsALeadTimeOfDaysAndTheLongestThereIs)
{
    for (const int seconds : {86401, 30 * 86400, std::numeric_limits<qint32>::max()}) {
        fill({{"Alert", 1}, {"Delay before alert", seconds}});
        EXPECT_EQ(find<QSpinBox>("leadTime")->value(), seconds);
        find<QSpinBox>("leadTime")->stepDown();
        EXPECT_EQ(read().value("Delay before alert"), seconds - 1);
    }
}

TEST_F(CommandSettings, WritesTheLeadTimeThatStandsBesideAnAlertThatTheUserAsksFor)
{
    fill({{"Alert", 1}, {"Delay before alert", -1}});
    find<QCheckBox>("alert")->click();
    EXPECT_EQ(find<QSpinBox>("leadTime")->value(), 60);
    EXPECT_EQ(read().value("Delay before alert"), 60);
    EXPECT_EQ(plugIn->timeBeforeSelfAnticipation(), 60);
    fill({{"Alert", 0}, {"Delay before alert", 0}});
    find<QCheckBox>("alert")->click();
    EXPECT_EQ(find<QSpinBox>("leadTime")->value(), 1);
    EXPECT_EQ(read().value("Delay before alert"), 1);
    find<QCheckBox>("alert")->click();
    EXPECT_EQ(read().value("Alert"), 0);
}

TEST_F(CommandSettings, KeepsAProgramThatIsNoText)
{
    const QVariant program(QVariantList{"/bin/echo", "hello"});
    fill({{"Program", program}});
    EXPECT_EQ(read().value("Program"), program);
    find<QLineEdit>("program")->setText("/bin/echo");
    EXPECT_EQ(read().value("Program"), "/bin/echo");
}

TEST_F(CommandSettings, NeverChangesAnArgumentInSilence)
{
    const QStringList odd{QString("no\u00a0break"),
                          QString("line\u2028separator"),
                          QString("page\u2029separator"),
                          "carriage\rreturn",
                          "line\nfeed",
                          "tab\tulator",
                          QString(QChar(0xFDD0)),
                          QString(QChar(0xFDD1)),
                          QString(QChar(0xFFFC)),
                          QString("\u200b"),
                          QString(QChar(0xD800)),
                          QString(40000, 'x'),
                          QString("\u202eover"),
                          QString(QChar(1))};
    for (const QString &argument : odd) {
        const QVariantList arguments{"before", argument, "after"};
        fill({{"Arguments", arguments}});
        EXPECT_EQ(read().value("Arguments"), arguments) << qPrintable(argument.left(20).toHtmlEscaped());
    }
}

TEST_F(CommandSettings, ShowsAnArgumentThatCannotBeSeenEscapedAndLetsNobodyEditIt)
{
    fill({{"Arguments", QVariantList{QString("a\u00a0b"), QString("\n\r\t\u2028\\"), QString(QChar(0xFDD0)),
                                     QString::fromUcs4(U"\U000e0001"), QString(QChar(0xD800)), "plain\\"}}});
    EXPECT_EQ(texts(), (QStringList{"a\\u00a0b", "\\n\\r\\t\\u2028\\\\", "\\ufdd0", "\\U000e0001", "\\ud800",
                                    "plain\\"}));
    for (int row = 0; row < 5; ++row) {
        const QListWidgetItem *const item = rows()->item(row);
        EXPECT_FALSE(item->flags().testFlag(Qt::ItemIsEditable)) << row;
        EXPECT_FALSE(item->toolTip().isEmpty()) << row;
        EXPECT_EQ(item->data(Qt::AccessibleDescriptionRole).toString(), item->toolTip()) << row;
    }
    EXPECT_TRUE(rows()->item(5)->flags().testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(rows()->item(5)->toolTip().isEmpty());
    fill({{"Arguments", QVariantList{QString(40000, 'x')}}});
    EXPECT_LT(texts().first().size(), 2000);
    EXPECT_FALSE(rows()->item(0)->flags().testFlag(Qt::ItemIsEditable));
    const QString longest = "\\u00a0" + QString(995, 'x');
    fill({{"Arguments",
           QVariantList{QString("\u00a0") + QString(995, 'x'), QString("\u00a0") + QString(996, 'x')}}});
    EXPECT_EQ(texts(), (QStringList{longest, longest + "…"}));
}

TEST_F(CommandSettings, EditsWhatIsWrittenInEveryLanguage)
{
    const QVariantList arguments{"", " ", "Größe", "日本語　全角", "العربية", "e\u0301", "\U0001F600"};
    fill({{"Arguments", arguments}});
    for (int row = 0; row < arguments.size(); ++row)
        EXPECT_TRUE(rows()->item(row)->flags().testFlag(Qt::ItemIsEditable)) << row;
    EXPECT_EQ(read().value("Arguments"), arguments);
}

TEST_F(CommandSettings, NamesAnArgumentWithoutCharactersToEyesAndEars)
{
    fill({{"Arguments", QVariantList{""}}});
    plugIn->setupView()->show();
    const QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(rows());
    EXPECT_EQ(list->text(QAccessible::Name), "Arguments");
    EXPECT_EQ(list->child(0)->text(QAccessible::Name), "(empty)");
    const QRect row = rows()->visualItemRect(rows()->item(0));
    const QImage image = rows()->viewport()->grab(row).toImage();
    EXPECT_FALSE(inkOf(image, image.pixelColor(0, 0)).isEmpty()) << "something can be seen of it";
}

TEST_F(CommandSettings, AddsBehindTheCurrentArgumentAndRemovesIt)
{
    fill({{"Arguments", QVariantList{"one", QString("a\u00a0b"), "three"}}});
    EXPECT_FALSE(find<QPushButton>("remove")->isEnabled()) << "no row is chosen";
    rows()->setCurrentRow(0);
    addArgument("two");
    EXPECT_EQ(read().value("Arguments"), (QVariantList{"one", "two", QString("a\u00a0b"), "three"}));
    rows()->setCurrentRow(2);
    find<QPushButton>("remove")->click();
    EXPECT_EQ(read().value("Arguments"), (QVariantList{"one", "two", "three"}))
        << "one that cannot be edited, too";
    rows()->setCurrentRow(0);
    plugIn->setupView()->show();
    plugIn->setupView()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(plugIn->setupView()));
    EXPECT_TRUE(rows()->hasFocus()) << "where the keyboard goes on";
    QTest::keyClick(rows(), Qt::Key_Delete);
    EXPECT_EQ(read().value("Arguments"), (QVariantList{"two", "three"}));
}

TEST_F(CommandSettings, ChangesTheArgumentThatIsEditedAndNoOther)
{
    fill({{"Arguments", QVariantList{QString("a\u00a0b"), "two", 3}}});
    rows()->editItem(rows()->item(1));
    QTest::keyClicks(editor(), "zwei");
    EXPECT_EQ(read().value("Arguments"), (QVariantList{QString("a\u00a0b"), "zwei", 3}))
        << "before the editor is left, too";
    editor()->setText(QString("zwei\u2029"));
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(read().value("Arguments"), (QVariantList{QString("a\u00a0b"), QString("zwei\u2029"), 3}));
    EXPECT_EQ(texts().at(1), "zwei\\u2029") << "what somebody brought in is shown for what it is";
}

TEST_F(CommandSettings, TakesAnAddedArgumentBackWithEscape)
{
    fill({});
    find<QPushButton>("add")->click();
    QTest::keyClicks(editor(), "never mind");
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_EQ(rows()->count(), 0);
    addArgument("kept");
    rows()->editItem(rows()->item(0));
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_EQ(texts(), QStringList{"kept"});
}

TEST_F(CommandSettings, KeepsArgumentsThatAreNoListAndEntriesThatAreNoText)
{
    for (const QVariant &arguments :
         {QVariant(QVariantMap{{"not", "a list"}}), QVariant("text"), QVariant(7)}) {
        fill({{"Arguments", arguments}});
        EXPECT_EQ(rows()->count(), 1);
        EXPECT_FALSE(rows()->item(0)->flags().testFlag(Qt::ItemIsEditable));
        rows()->setCurrentRow(0);
        EXPECT_FALSE(find<QPushButton>("add")->isEnabled());
        EXPECT_FALSE(find<QPushButton>("remove")->isEnabled());
        QTest::keyClick(rows(), Qt::Key_Delete);
        EXPECT_EQ(read().value("Arguments"), arguments);
    }
    for (const QVariantList &arguments :
         {QVariantList{1, 2.5, true}, QVariantList{"a", QVariantMap{{"b", 1}}, QVariant()}}) {
        fill({{"Arguments", arguments}});
        EXPECT_EQ(read().value("Arguments"), arguments);
        EXPECT_TRUE(find<QPushButton>("add")->isEnabled());
    }
    fill({{"Arguments", QVariantList{7, true, QVariantList{1, "a"}, QVariantMap{{"b", 1}}}}});
    EXPECT_EQ(texts(), (QStringList{"7", "true", "[1,\"a\"]", "{\"b\":1}"}));
    fill({{"Arguments", QStringList{"one"}}});
    EXPECT_EQ(read().value("Arguments").typeId(), QMetaType::QStringList) << "the very value";
}

TEST_F(CommandSettings, KeepsAProgramThatItsFieldCannotShow)
{
    for (const QString &program :
         {QString("/bin/a\u00a0b"), QString("/bin/a\nb"), '/' + QString(40000, 'x')}) {
        fill({{"Program", program}});
        EXPECT_TRUE(find<QLineEdit>("program")->isReadOnly());
        EXPECT_EQ(read().value("Program"), program);
    }
    fill({{"Program", "/bin/echo"}});
    EXPECT_FALSE(find<QLineEdit>("program")->isReadOnly());
}

TEST_F(CommandSettings, DescribesItsAction)
{
    EXPECT_EQ(plugIn->actionString(), "-");
    plugIn->setParameters(QVariantMap{{"Program", "/usr/bin/touch"}});
    EXPECT_EQ(plugIn->actionString(), "Run touch");
    plugIn->setParameters(QVariantMap{{"Program", "/"}});
    EXPECT_EQ(plugIn->actionString(), "-");
    UserLanguages::set({"de"});
    plugIn->setParameters(QVariantMap{{"Program", "/usr/bin/100%@"}});
    EXPECT_EQ(plugIn->actionString(), "100%@ ausführen");
    EXPECT_EQ(plugIn->pluginName(), "Befehl");
}

TEST_F(CommandSettings, BeginsWithoutAlertAndWithoutNeeds)
{
    EXPECT_EQ(plugIn->defaultParameters(), (QVariantMap{{"Alert", 0}, {"Delay before alert", 60}}));
    EXPECT_FALSE(plugIn->needsWakeUpByDefault());
    EXPECT_FALSE(plugIn->needsStartupByDefault());
    EXPECT_FALSE(plugIn->isBaseModule());
}

TEST_F(CommandSettings, ChoosesTheProgramAmongTheFiles)
{
    fill({});
    chooseInNextFileDialog("/usr/bin/env");
    find<QPushButton>("browse")->click();
    EXPECT_EQ(find<QLineEdit>("program")->text(), "/usr/bin/env");
}

TEST_F(CommandSettings, KeepsItsProgramWhereNoneIsChosen)
{
    for (const char *program : {"/bin/true", "/bin/a\nb"}) {
        fill({{"Program", program}});
        dismissNextFileDialog();
        find<QPushButton>("browse")->click();
        EXPECT_EQ(read().value("Program"), program);
    }
    EXPECT_TRUE(find<QLineEdit>("program")->isReadOnly());
}

TEST_F(CommandSettings, ReplacesAProgramThatItsFieldCannotShowByTheOneThatIsChosen)
{
    fill({{"Program", "/bin/a\nb"}});
    chooseInNextFileDialog("/usr/bin/env");
    find<QPushButton>("browse")->click();
    EXPECT_FALSE(find<QLineEdit>("program")->isReadOnly());
    EXPECT_EQ(read().value("Program"), "/usr/bin/env");
}

TEST_F(CommandSettings, DoesNothingWithoutViewOrDictionary)
{
    plugIn->setParameters(std::shared_ptr<const QVariantMap>());
    plugIn->fillSetupInterfaceFromParameters();
    EXPECT_TRUE(find<QLineEdit>("program")->text().isEmpty());
    plugIn->fillParametersFromSetupInterface();
    EXPECT_EQ(plugIn->parameters(), nullptr);
    plugIn->setSetupView(nullptr);
    fill(all);
    EXPECT_EQ(read(), all);
}

TEST_F(CommandSettings, LeavesAlertAndWakingToAHostThatHasPlacesForThem)
{
    hostHasUsualOptions = true;
    remake();
    EXPECT_FALSE(find<QCheckBox>("alert") || find<QSpinBox>("leadTime"));
    EXPECT_FALSE(find<QCheckBox>("wakeUp") || find<QCheckBox>("startup"));
    fill(all);
    EXPECT_EQ(read(), all) << "and the host's own stay";
    fill({});
    EXPECT_EQ(read().keys(), (QStringList{"Arguments", "Program"}));
}

TEST_F(CommandSettings, SpeaksTheLanguagesOfTheSystem)
{
    const QString english = find<QCheckBox>("wakeUp")->text();
    QStringList texts{english};
    for (const QString language : {"de", "fr", "es", "ja", "ar"}) {
        UserLanguages::set({language});
        remake();
        for (auto *const label : plugIn->setupView()->findChildren<QLabel *>())
            EXPECT_NE(label->text(), english);
        texts += find<QCheckBox>("wakeUp")->text();
        EXPECT_FALSE(find<QLineEdit>("program")->isHidden());
    }
    EXPECT_EQ(texts.removeDuplicates(), 0);
}

class CommandSettingsPictures : public CommandSettings, public testing::WithParamInterface<Look>
{
};

TEST_P(CommandSettingsPictures, LookAsBefore)
{
    UserLanguages::set({GetParam().rightToLeft ? "ar" : "en"});
    remake();
    QWidget &view = *plugIn->setupView();
    view.setPalette(GetParam().palette());
    view.setLayoutDirection(GetParam().direction());
    fill(all);
    EXPECT_TRUE(looksLikeBaseline(GetParam().pictureOf(view), GetParam().name("command-settings")));
}

INSTANTIATE_TEST_SUITE_P(Looks, CommandSettingsPictures, Look::all(), Look::ofTest);

TEST_F(CommandSettings, IsTheOnlyModuleOfTheBundleThatNeedsWidgets)
{
    const auto needsWidgets = [this](const QString &roleKey) {
        QFile module(bundle->bundlePath() + "/Contents/Linux/" +
                     bundle->objectForInfoDictionaryKey(roleKey).toString());
        EXPECT_TRUE(module.open(QIODevice::ReadOnly)) << qPrintable(roleKey);
        return module.readAll().contains("libQt6Widgets");
    };
    EXPECT_TRUE(needsWidgets("WDPrefPaneModule"));
    EXPECT_FALSE(needsWidgets("WDDaemonModule"));
    EXPECT_FALSE(needsWidgets("WDUserAgentModule"));
}
