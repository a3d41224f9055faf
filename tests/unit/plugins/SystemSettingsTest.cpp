// SPDX-License-Identifier: MIT
// The sides of what the machine and the desktop do, as built.
#include "SideFixture.h"
#include "support/PrintTo.h"

#include <QCheckBox>

namespace
{
constexpr char login[] = "org.freedesktop.login1";
constexpr char unsupported[] = "This computer does not support this.";
constexpr char forbidden[] = "You may not do this yourself here. The schedule does it all the same, with the "
                             "rights of the system.";
constexpr char noManager[] = "No login manager (systemd-logind) answers on this computer: it cannot do this.";
const QMap<QString, QString> questions{
    {"Sleep", "CanSuspend"}, {"PowerOff", "CanPowerOff"}, {"Restart", "CanReboot"}};
} // namespace

class SystemSettingsTest : public SideFixture
{
protected:
    /// Has the login manager answer every question by `answer`.
    void answer(const QString &answer)
    {
        for (const QString &question : questions)
            ASSERT_TRUE(bus.call(
                login, "/org/freedesktop/login1", "org.freedesktop.DBus.Mock.AddMethod",
                {"org.freedesktop.login1.Manager", question, "", "s", QString("ret = '%1'").arg(answer)}));
    }
};

TEST_F(SystemSettingsTest, CarriesForceAndKeepsWhatItDoesNotShow)
{
    for (const QString &name : questions.keys()) {
        load(name);
        const QVariantMap all{{"Force", 1}, {"Alert", 1}, {"Delay before alert", 300}};
        fill(all);
        EXPECT_TRUE(find<QCheckBox>("force")->isChecked());
        EXPECT_EQ(read(), all);
        find<QCheckBox>("force")->click();
        EXPECT_EQ(read().value("Force"), 0);
        fill({});
        EXPECT_TRUE(read().isEmpty());
        find<QCheckBox>("force")->click();
        EXPECT_EQ(read().value("Force"), 1);
        fill({{"Force", (1LL << 32) + 1}});
        EXPECT_FALSE(find<QCheckBox>("force")->isChecked()) << "as the daemon takes it";
        EXPECT_EQ(read().value("Force"), (1LL << 32) + 1) << "nobody changed it";
    }
}

TEST_F(SystemSettingsTest, BeginsWithAnAlertAndSaysWhatItDoes)
{
    for (const QString &name : questions.keys()) {
        load(name);
        EXPECT_EQ(plugIn->defaultParameters(), (QVariantMap{{"Alert", 1}, {"Delay before alert", 60}}));
        QStringList texts;
        for (const QString language : {"en", "de", "fr", "es", "ja", "ar"}) {
            dozely::UserLanguages::set({language});
            texts += plugIn->actionString();
        }
        dozely::UserLanguages::set({"en"});
        EXPECT_EQ(texts.removeDuplicates(), 0) << qPrintable(name);
    }
    load("Restart");
    EXPECT_EQ(plugIn->actionString(), "Restart the computer");
}

TEST_F(SystemSettingsTest, HasTheUsualRowsWhereTheHostHasNone)
{
    hostHasUsualOptions = false;
    load("Sleep");
    fill({{"Alert", 1}, {"Delay before alert", 90}, {"Needs Wake Up", 1}});
    EXPECT_TRUE(find<QCheckBox>("alert")->isChecked());
    EXPECT_TRUE(find<QCheckBox>("wakeUp")->isChecked());
    hostHasUsualOptions = true;
    load("Sleep");
    EXPECT_FALSE(find<QCheckBox>("alert") || find<QCheckBox>("wakeUp"));
}

TEST_F(SystemSettingsTest, SaysWhatTheMachineCannotDo)
{
    ASSERT_TRUE(bus.startMock("logind", login));
    for (const QString &name : questions.keys()) {
        answer("na");
        load(name);
        expectRemark(unsupported);
        answer("no");
        load(name);
        expectRemark(forbidden);
    }
    dozely::UserLanguages::set({"de"});
    load("Sleep");
    expectRemark("Sie selbst dürfen dies hier nicht. Der Zeitplan führt es trotzdem aus, mit den Rechten des "
                 "Systems.");
}

TEST_F(SystemSettingsTest, SaysThatNobodyIsThereToDoIt)
{
    for (const QString &name : questions.keys()) {
        load(name);
        expectRemark(noManager);
    }
    bus.stop();
    load("Sleep");
    expectRemark(noManager);
}

TEST_F(SystemSettingsTest, DoesNotWaitForAnAnswer)
{
    ASSERT_TRUE(bus.startMock("logind", login));
    ASSERT_TRUE(bus.call(
        login, "/org/freedesktop/login1", "org.freedesktop.DBus.Mock.AddMethod",
        {"org.freedesktop.login1.Manager", "CanSuspend", "", "s", "import time; time.sleep(2); ret = 'na'"}));
    QElapsedTimer time;
    time.start();
    load("Sleep");
    EXPECT_LT(time.elapsed(), 1500);
    EXPECT_EQ(remark(), QString());
    expectRemark(unsupported);
}
