// SPDX-License-Identifier: MIT
// The bundle's module for configuration interfaces, as built.
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "support/BaselinePicture.h"
#include "support/Look.h"
#include "support/ScratchRoot.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

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
        plugIn->loadNib();
        ASSERT_TRUE(plugIn->setupView());
    }
    template<class Widget>
    Widget *find(const QString &name)
    {
        return plugIn->setupView()->findChild<Widget *>(name);
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
    EXPECT_EQ(find<QPlainTextEdit>("arguments")->toPlainText(), "-c\n/tmp/a b\n");
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
    find<QPlainTextEdit>("arguments")->setPlainText("one\ntwo words");
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

TEST_F(CommandSettings, KeepsArgumentsThatLinesCannotShow)
{
    for (const QVariant &arguments :
         {QVariant(QVariantList{"one\ntwo"}), QVariant(QVariantList{""}),
          QVariant(QVariantMap{{"not", "a list"}}), QVariant(QVariantList{1, 2})}) {
        fill({{"Arguments", arguments}});
        EXPECT_TRUE(find<QPlainTextEdit>("arguments")->isReadOnly());
        EXPECT_EQ(read().value("Arguments"), arguments);
    }
    fill({{"Arguments", QVariantList{"one"}}});
    EXPECT_FALSE(find<QPlainTextEdit>("arguments")->isReadOnly());
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
    QTimer::singleShot(0, qApp, [] {
        QWidget *const dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText("/usr/bin/env");
        QTest::keyClick(dialog->findChild<QLineEdit *>("fileNameEdit"), Qt::Key_Return);
    });
    find<QPushButton>("browse")->click();
    EXPECT_EQ(find<QLineEdit>("program")->text(), "/usr/bin/env");
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
