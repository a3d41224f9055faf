// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/WDPlugIn.h"
#include "hosts/common/plugins/PlugInLoader.h"
#include "support/FakeClock.h"
#include "support/FakeUserNotificationPresenter.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

#include <QDirIterator>
#include <QSignalSpy>

using namespace dozely;

using namespace std::chrono_literals;

/// The bundles that put the machine to sleep, switch it off and restart it, as they are built.
class PowerPlugInsTest : public BundleFixture
{
protected:
    /// A copy below the scratch root, where nobody else can write.
    QString install(const QString &name) const
    {
        const QString from = QString(PLUG_INS "/%1.plugin").arg(name);
        const QString to = QString("%1/%2.plugin").arg(plugIns, name);
        for (QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
            const QString file = files.next();
            const QString copy = to + file.mid(from.size());
            root.makeFolder(QFileInfo(copy).path());
            EXPECT_TRUE(QFile::copy(file, root.join(copy))) << copy.toStdString();
        }
        return root.join(to);
    }
    /// A plug-in object for a role.
    template<class PlugIn>
    std::shared_ptr<PlugIn> make(PlugInLoader &loader, const QString &name) const
    {
        const auto bundle = loader.bundle(install(name));
        const auto plugIn = bundle ? loader.make(*bundle) : bundle.error();
        EXPECT_TRUE(plugIn) << plugIn.error().text.toStdString();
        return plugIn ? std::dynamic_pointer_cast<PlugIn>(*plugIn) : nullptr;
    }
    static QList<PlugInLoader::Source> anywhere() { return {{QString(), {*RootFolder::owner()}}}; }

    PlugInLoader daemonLoader{"WDDaemonModule", anywhere()};
    PlugInLoader agentLoader{"WDUserAgentModule", anywhere()};
};

TEST_F(PowerPlugInsTest, SleepForcesSleepInTheDaemon)
{
    const auto plugIn = make<WDDaemonPlugIn>(daemonLoader, "Sleep");
    ASSERT_NE(plugIn, nullptr);
    plugIn->actInDaemon();
    EXPECT_EQ(power->sleeps, 1);
    EXPECT_EQ(messages(), QStringList{"Mise en veille forcee."});
}

TEST_F(PowerPlugInsTest, PowerOffSwitchesTheMachineOffInTheDaemon)
{
    const auto plugIn = make<WDDaemonPlugIn>(daemonLoader, "PowerOff");
    ASSERT_NE(plugIn, nullptr);
    plugIn->actInDaemon();
    EXPECT_EQ(power->powerOffs, 1);
    EXPECT_EQ(messages(), QStringList{"PowerOff: the machine is asked to switch itself off."});
}

TEST_F(PowerPlugInsTest, PowerOffSaysThatTheMachineRefused)
{
    power->refusesPowerOff = true;
    make<WDDaemonPlugIn>(daemonLoader, "PowerOff")->actInDaemon();
    EXPECT_EQ(messages().last(), "PowerOff: the machine does not let itself be switched off.");
}

TEST_F(PowerPlugInsTest, RestartRestartsTheMachineInTheDaemonOrSaysThatItRefused)
{
    const auto plugIn = make<WDDaemonPlugIn>(daemonLoader, "Restart");
    ASSERT_NE(plugIn, nullptr);
    plugIn->actInDaemon();
    EXPECT_EQ(power->restarts, 1);
    EXPECT_EQ(power->powerOffs, 0);
    EXPECT_EQ(messages(), QStringList{"Restart: the machine is asked to restart."});
    power->refusesPowerOff = true;
    plugIn->actInDaemon();
    EXPECT_EQ(messages().last(), "Restart: the machine does not let itself be restarted.");
}

TEST_F(PowerPlugInsTest, AllWaitWhileOthersForbidItAndNameThem)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    for (const QString name : {"Sleep", "PowerOff", "Restart"}) {
        power->sleeps = power->powerOffs = power->restarts = 0;
        power->blocking = {"apt: Upgrades packages"};
        const auto plugIn = make<WDDaemonPlugIn>(daemonLoader, name);
        plugIn->setParameters(QVariantMap{});
        QSignalSpy ended(plugIn.get(), SIGNAL(actionDidFinish()));
        plugIn->actInDaemon();
        EXPECT_EQ(messages().last(),
                  name + ": held up by apt: Upgrades packages; tried again for ten minutes.");
        bool isActing = false;
        QMetaObject::invokeMethod(plugIn.get(), "isActing", Q_RETURN_ARG(bool, isActing));
        EXPECT_TRUE(isActing);
        clock->advance(9min);
        EXPECT_EQ(power->sleeps + power->powerOffs + power->restarts, 0);
        EXPECT_EQ(messages().filter(name + ": held up").size(), 1) << "once";
        power->blocking.clear();
        clock->advance(10s);
        EXPECT_EQ(power->sleeps + power->powerOffs + power->restarts, 1);
        EXPECT_EQ(ended.size(), 1);
    }
}

TEST_F(PowerPlugInsTest, AfterTenMinutesItIsGivenUpUnlessTheScheduleForcesIt)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    power->blocking = {"apt: Upgrades packages"};
    for (const bool isForced : {false, true}) {
        const auto plugIn = make<WDDaemonPlugIn>(daemonLoader, isForced ? "PowerOff" : "Sleep");
        plugIn->setParameters(isForced ? QVariantMap{{"Force", 1LL}} : QVariantMap{});
        QSignalSpy ended(plugIn.get(), SIGNAL(actionDidFinish()));
        plugIn->actInDaemon();
        clock->advance(10min - 1ms);
        EXPECT_EQ(ended.size(), 0);
        EXPECT_EQ(power->powerOffs + power->sleeps, 0);
        clock->advance(1ms);
        EXPECT_EQ(ended.size(), 1);
        EXPECT_EQ(power->powerOffs + power->sleeps, isForced ? 1 : 0);
        EXPECT_EQ(messages()
                      .filter(isForced ? "PowerOff: done although held up by apt: Upgrades packages."
                                       : "Sleep: given up, held up by apt: Upgrades packages.")
                      .size(),
                  1);
    }
}

TEST_F(PowerPlugInsTest, NoNumberButOneForcesIt)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    power->blocking = {"apt: Upgrades packages"};
    for (const QString name : {"Sleep", "PowerOff", "Restart"}) {
        const auto plugIn = make<WDDaemonPlugIn>(daemonLoader, name);
        plugIn->setParameters(QVariantMap{{"Force", (1LL << 32) + 1}});
        plugIn->actInDaemon();
        clock->advance(10min);
        EXPECT_EQ(messages().last(), name + ": given up, held up by apt: Upgrades packages.");
    }
    EXPECT_EQ(power->powerOffs + power->sleeps + power->restarts, 0);
}

TEST_F(PowerPlugInsTest, TwoOrdersWhileOneWaitsAreOne)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    power->blocking = {"apt: Upgrades packages"};
    const auto plugIn = make<WDDaemonPlugIn>(daemonLoader, "PowerOff");
    QSignalSpy ended(plugIn.get(), SIGNAL(actionDidFinish()));
    plugIn->actInDaemon();
    clock->advance(5s);
    plugIn->actInDaemon();
    power->blocking.clear();
    clock->advance(1min);
    EXPECT_EQ(power->powerOffs, 1);
    EXPECT_EQ(ended.size(), 1);
}

TEST_F(PowerPlugInsTest, BesideTheAlertANoticeNamesWhoForbidsIt)
{
    const auto desktop = std::make_shared<FakeUserNotificationPresenter>();
    Port<UserNotificationPresenter>::current() = desktop;
    UserLanguages::set({"en"});
    for (const QString name : {"Sleep", "PowerOff", "Restart"}) {
        desktop->shown.clear();
        desktop->closed.clear();
        power->blocking = {"apt: Upgrades\npackages"};
        const auto plugIn = make<WDUserAgentPlugIn>(agentLoader, name);
        plugIn->setParameters(QVariantMap{{"Alert", 1LL}, {"Delay before alert", 60LL}});
        plugIn->setCalendarDate(noon());
        plugIn->anticipateBeforeSelfAction();
        ASSERT_EQ(desktop->shown.size(), 2);
        EXPECT_EQ(desktop->shown[0], plugIn->userNotification());
        EXPECT_EQ(desktop->shown[0]->actionButtonTitle(), "Cancel");
        EXPECT_EQ(desktop->shown[1]->title(), plugIn->userNotification()->title());
        EXPECT_EQ(desktop->shown[1]->informativeText(),
                  "Forbidden for now by: apt: Upgrades packages. The action waits, ten minutes at most.");
        EXPECT_TRUE(desktop->shown[1]->actionButtonTitle().isEmpty());
        plugIn->stopAnticipation();
        EXPECT_EQ(desktop->closed.size(), 2);
        power->blocking.clear();
        plugIn->anticipateBeforeSelfAction();
        EXPECT_EQ(desktop->shown.size(), 3) << "the alert alone";
        power->blocking = {"apt: Upgrades packages"};
        plugIn->setParameters(QVariantMap{{"Alert", 0LL}});
        plugIn->anticipateBeforeSelfAction();
        EXPECT_EQ(desktop->shown.size(), 3) << "no alert is wanted";
    }
}

TEST_F(PowerPlugInsTest, AllActInTheDaemonAndDoNotKeepTheMachineAwake)
{
    for (const QString name : {"Sleep", "PowerOff", "Restart"}) {
        const QVariantMap info = make<WDDaemonPlugIn>(daemonLoader, name)->bundle()->infoDictionary();
        EXPECT_EQ(info.value("WDActsInUserAgent"), QVariant(false));
        EXPECT_EQ(info.value("WDInhibitsSleep"), QVariant(false));
        EXPECT_EQ(info.value("WDMissedPolicy"), "skip") << "nobody wants that when he switches it on";
        EXPECT_EQ(info.value("CFBundleIdentifier"), "com.dozely.plugin." + name);
    }
}

TEST_F(PowerPlugInsTest, AllAlertWithALeadTimeAndCancelWhenTheButtonIsPressed)
{
    for (const QString name : {"Sleep", "PowerOff", "Restart"}) {
        const auto plugIn = make<WDUserAgentPlugIn>(agentLoader, name);
        ASSERT_NE(plugIn, nullptr) << name.toStdString();
        plugIn->setParameters(QVariantMap{{"Alert", 1LL}, {"Delay before alert", 60LL}});
        EXPECT_EQ(plugIn->timeBeforeSelfAnticipation(), 60);
        EXPECT_TRUE(QMetaObject::invokeMethod(
            plugIn.get(), "userNotificationCenterDidActivateNotification",
            Q_ARG(NSUserNotificationCenter *, nullptr),
            Q_ARG(std::shared_ptr<NSUserNotification>, std::shared_ptr<NSUserNotification>())));
        EXPECT_EQ(messages().last(), "cancelEvent impossible") << "there is no date here, but the wish came";
        // Nothing acts in the session.
        plugIn->actInUserAgent();
    }
    EXPECT_EQ(power->sleeps + power->powerOffs + power->restarts, 0);
}

TEST_F(PowerPlugInsTest, AreNamedInTheLanguagesOfTheSystem)
{
    const QMap<QString, QStringList> names{
        {"Sleep", {"Sleep", "Mise en veille", "Ruhezustand", "Reposo"}},
        {"PowerOff", {"Power Off", "Extinction", "Ausschalten", "Apagado"}},
        {"Restart", {"Restart", "Redémarrage", "Neustart", "Reinicio"}},
    };
    const QStringList languages{"en_US.UTF-8", "fr_FR.UTF-8", "de_DE.UTF-8", "es_ES.UTF-8"};
    for (const QString &bundle : names.keys()) {
        const auto plugIn = make<WDUserAgentPlugIn>(agentLoader, bundle);
        for (qsizetype i = 0; i < languages.size(); ++i) {
            qputenv("LC_ALL", languages.at(i).toUtf8());
            EXPECT_EQ(plugIn->bundle()->localizedStringForKey("Plugin Name"), names.value(bundle).at(i));
        }
    }
}
