// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"
#include "DozelyKit/system/alerts/UserNotificationPresenter.h"

#include "OrderFixture.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "support/FakeUserNotificationPresenter.h"

#include <QCoreApplication>

#include <ctime>

using namespace dozely;

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using MapTable = WDUserNotificationCenterDelegate::MapTable;

/// A plug-in as others write them: its Cancel button cancels.
class CancellingPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *,
                                                  const std::shared_ptr<NSUserNotification> &)
    {
        cancelEvent();
    }
};

class AlertTest : public OrderFixture
{
protected:
    AlertTest()
    {
        for (const char *const variable : {"LC_ALL", "LC_TIME"})
            qunsetenv(variable);
        qputenv("LANG", "en_GB.UTF-8");
        qputenv("TZ", "Europe/Paris");
        ::tzset();
        UserLanguages::set({"en"});
        Port<UserNotificationPresenter>::current() = desktop;
        plugIn->setBundle(bundle);
        plugIn->setCalendarDate(date);
        plugIn->setParameters(QVariantMap{{"Alert", 1}, {"Delay before alert", 60}});
    }

    static std::shared_ptr<MapTable> table()
    {
        return WDUserNotificationCenterDelegate::sharedInstance()->mapTable();
    }

    /// An agent host's bundle with these texts.
    void makeAgentBundle(const QByteArray &language, const QByteArray &text)
    {
        write("Agent", "Resources/" + language + ".lproj/Localizable.strings",
              "\"Alert message %@\" = \"" + text + "\";\n");
        NSBundle::registerClass("WDUserAgentController", makeBundle("Agent", {}));
    }

    std::shared_ptr<FakeUserNotificationPresenter> desktop =
        std::make_shared<FakeUserNotificationPresenter>();
    std::shared_ptr<CancellingPlugIn> plugIn = std::make_shared<CancellingPlugIn>();
};
} // namespace

TEST_F(AlertTest, IsMadeAtTheFirstQuestionAndKept)
{
    const auto alert = plugIn->userNotification();
    ASSERT_TRUE(alert);
    EXPECT_EQ(plugIn->userNotification(), alert);
    EXPECT_EQ(alert->title(), "Plugin Name");
    EXPECT_EQ(alert->identifier(), "<com.dozely.Test>|<2026-03-14 06:55:00 +0100>");
    EXPECT_TRUE(alert->informativeText().isNull());
    EXPECT_TRUE(alert->actionButtonTitle().isNull());
}

TEST_F(AlertTest, HasTheLocalisedNameOfThePlugInAsTitle)
{
    write("Named", "Resources/en.lproj/Localizable.strings", "\"Plugin Name\" = \"Switch on the lights\";\n");
    NSBundle::registerClass(CancellingPlugIn::staticMetaObject.className(), makeBundle("Named", {}));
    EXPECT_EQ(plugIn->userNotification()->title(), "Switch on the lights");
}

TEST_F(AlertTest, SaysNothingForAnIdentifierOrDateThatIsMissing)
{
    plugIn->setBundle(makeBundle("Nameless", {}));
    plugIn->setCalendarDate({});
    EXPECT_EQ(plugIn->userNotification()->identifier(), "<(null)>|<(null)>");
}

TEST_F(AlertTest, KeepsItsIdentifierWhenTheDateChanges)
{
    const auto alert = plugIn->userNotification();
    plugIn->setCalendarDate(date.addDays(1));
    plugIn->showUserNotification();
    EXPECT_EQ(plugIn->userNotification(), alert);
    EXPECT_EQ(alert->identifier(), "<com.dozely.Test>|<2026-03-14 06:55:00 +0100>");
}

TEST_F(AlertTest, CanBeGivenByTheHost)
{
    const auto given = std::make_shared<NSUserNotification>();
    given->setTitle("Given");
    plugIn->setUserNotification(given);
    plugIn->showUserNotification();
    EXPECT_THAT(desktop->shown, ElementsAre(given));
    EXPECT_EQ(given->title(), "Given");
    EXPECT_EQ(given->actionButtonTitle(), "Cancel");
}

TEST_F(AlertTest, IsShownWithDateTimeAndAButton)
{
    makeAgentBundle("en", "Will run on %@.");
    plugIn->showUserNotification();
    ASSERT_THAT(desktop->shown, ElementsAre(plugIn->userNotification()));
    const auto alert = desktop->shown.constFirst();
    EXPECT_EQ(alert->title(), "Plugin Name");
    EXPECT_EQ(alert->informativeText(), "Will run on 14 Mar 2026, 06:55.");
    EXPECT_EQ(alert->actionButtonTitle(), "Cancel");
    EXPECT_EQ(alert->userInfo(), (QVariantMap{{"Schedule Date", date}}));
}

TEST_F(AlertTest, TellsTheTimeInTheLocalZone)
{
    qputenv("TZ", "America/New_York");
    ::tzset();
    makeAgentBundle("en", "%@");
    plugIn->showUserNotification();
    EXPECT_EQ(plugIn->userNotification()->informativeText(), "14 Mar 2026, 01:55");
    EXPECT_EQ(plugIn->userNotification()->identifier(), "<com.dozely.Test>|<2026-03-14 06:55:00 +0100>")
        << "the date's own zone names the occurrence";
}

TEST_F(AlertTest, IsInTheUsersLanguageAndLocale)
{
    qputenv("LANG", "de_DE.UTF-8");
    UserLanguages::set({"de"});
    makeAgentBundle("de", "Wird am %@ ausgeführt.");
    plugIn->showUserNotification();
    EXPECT_EQ(plugIn->userNotification()->informativeText(), "Wird am 14.03.2026, 06:55 ausgeführt.");
    EXPECT_EQ(plugIn->userNotification()->actionButtonTitle(), "Abbrechen");
}

TEST_F(AlertTest, SaysWhenByTheKeyOfTheTextInAProcessThatIsNoAgent)
{
    plugIn->showUserNotification();
    EXPECT_EQ(plugIn->userNotification()->informativeText(), "Alert message 14 Mar 2026, 06:55");
}

TEST_F(AlertTest, TakesNoPercentSignOfTheDateForAFormat)
{
    makeAgentBundle("en", "100%% sure: %@ %@");
    plugIn->showUserNotification();
    EXPECT_EQ(plugIn->userNotification()->informativeText(), "100% sure: 14 Mar 2026, 06:55 (null)");
}

TEST_F(AlertTest, IsNotShownWhenNoneIsWanted)
{
    plugIn->setParameters(QVariantMap{{"Alert", 0}, {"Delay before alert", 60}});
    plugIn->showUserNotification();
    plugIn->setParameters(QVariantMap{{"Alert", 1}, {"Delay before alert", -1}});
    plugIn->showUserNotification();
    plugIn->setParameters(QVariantMap{});
    plugIn->showUserNotification();
    EXPECT_THAT(desktop->shown, IsEmpty());
    EXPECT_THAT(*table(), IsEmpty());
}

TEST_F(AlertTest, IsShownForAnyOtherDelay)
{
    plugIn->setParameters(QVariantMap{{"Alert", 1}});
    plugIn->showUserNotification();
    plugIn->setParameters(QVariantMap{{"Alert", 1}, {"Delay before alert", -2}});
    plugIn->showUserNotification();
    EXPECT_THAT(desktop->shown, SizeIs(2));
}

TEST_F(AlertTest, PrecedesTheActionWhenTheParametersSaySo)
{
    plugIn->setParameters(QVariantMap{{"Alert", "0"}});
    plugIn->anticipateBeforeSelfAction();
    plugIn->setParameters(std::shared_ptr<const QVariantMap>());
    plugIn->anticipateBeforeSelfAction();
    EXPECT_THAT(desktop->shown, IsEmpty());
    plugIn->setParameters(QVariantMap{{"Alert", "2"}});
    plugIn->anticipateBeforeSelfAction();
    EXPECT_THAT(desktop->shown, SizeIs(1));
}

TEST_F(AlertTest, IsTheSameObjectWhenItIsShownTwice)
{
    plugIn->showUserNotification();
    plugIn->showUserNotification();
    const auto alert = plugIn->userNotification();
    EXPECT_THAT(desktop->shown, ElementsAre(alert, alert));
    ASSERT_THAT(*table(), SizeIs(1));
    EXPECT_EQ(table()->constFirst().first, alert);
    EXPECT_EQ(table()->constFirst().second, plugIn);
}

TEST_F(AlertTest, IsWithdrawnAndTheNextIsANewOne)
{
    plugIn->showUserNotification();
    const auto first = plugIn->userNotification();
    plugIn->stopAnticipation();
    EXPECT_THAT(desktop->closed, ElementsAre(first));
    plugIn->setCalendarDate(date.addDays(1));
    plugIn->showUserNotification();
    const auto second = plugIn->userNotification();
    EXPECT_NE(second, first);
    EXPECT_EQ(second->identifier(), "<com.dozely.Test>|<2026-03-15 06:55:00 +0100>");
    EXPECT_THAT(*table(), SizeIs(2)) << "no entry is ever taken out";
}

TEST_F(AlertTest, IsWithdrawnWithoutHarmWhenThereIsNone)
{
    plugIn->stopAnticipation();
    EXPECT_THAT(desktop->closed, IsEmpty());
}

TEST_F(AlertTest, CancelsTheEventWhenItsButtonIsPressed)
{
    publishAs("dozelyd");
    observe("DaemonMustRemoveEvent", "com.dozely.Daemon");
    plugIn->showUserNotification();
    desktop->events.activated(plugIn->userNotification());
    QCoreApplication::processEvents();
    EXPECT_EQ(arrived().userInfo(),
              (QVariantMap{{"Schedule Date", date}, {"Schedule Bundle Path", pathOf("Test")}}));
}

TEST_F(AlertTest, CancelsNothingForAPlugInThatDoesNotListen)
{
    publishAs("dozelyd");
    observe("DaemonMustRemoveEvent", "com.dozely.Daemon");
    const auto deaf = std::make_shared<WDUserAgentPlugIn>();
    deaf->setBundle(bundle);
    deaf->setCalendarDate(date);
    deaf->setParameters(QVariantMap{{"Alert", 1}});
    deaf->showUserNotification();
    ASSERT_THAT(desktop->shown, SizeIs(1));
    desktop->events.activated(deaf->userNotification());
    QCoreApplication::processEvents();
    EXPECT_THAT(observer->orders, IsEmpty());
}

TEST_F(AlertTest, KeepsItsPlugInAlive)
{
    plugIn->showUserNotification();
    const std::weak_ptr<WDUserAgentPlugIn> watched = plugIn;
    plugIn.reset();
    EXPECT_FALSE(watched.expired());
}

TEST_F(AlertTest, HoldsAPlugInThatWasMadeAsItsBaseClass)
{
    std::unique_ptr<WDPlugIn> made = std::make_unique<CancellingPlugIn>(); // as factories give them
    const std::shared_ptr<WDPlugIn> held = std::move(made);
    held->setParameters(QVariantMap{{"Alert", 1}});
    held->setCalendarDate(date);
    std::dynamic_pointer_cast<WDUserAgentPlugIn>(held)->showUserNotification();
    ASSERT_THAT(*table(), SizeIs(1));
    EXPECT_EQ(dynamic_cast<WDPlugIn *>(table()->constFirst().second.get()), held.get());
}

TEST_F(AlertTest, RaisesForAPlugInThatNobodyHolds)
{
    WDUserAgentPlugIn onTheStack;
    onTheStack.setParameters(QVariantMap{{"Alert", 1}});
    try {
        onTheStack.showUserNotification();
        FAIL() << "nothing was raised";
    } catch (const NSException &exception) {
        EXPECT_EQ(exception.name(), NSInvalidArgumentException);
    }
    EXPECT_THAT(desktop->shown, IsEmpty());
}

namespace
{
struct CancelText {
    const char *language;
    const char *text;
};

class CancelButton : public testing::TestWithParam<CancelText>
{
};
} // namespace

TEST_P(CancelButton, IsInTheLanguageOfTheUser)
{
    UserLanguages::set({GetParam().language});
    const auto kit = NSBundle::bundleForClass(&WDUserAgentPlugIn::staticMetaObject);
    ASSERT_EQ(kit, NSBundle::kitBundle());
    EXPECT_EQ(kit->localizedStringForKey("Cancel"), QString::fromUtf8(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(Language, CancelButton,
                         testing::Values(CancelText{"en", "Cancel"}, CancelText{"fr", "Annuler"},
                                         CancelText{"de", "Abbrechen"}, CancelText{"es", "Cancelar"},
                                         CancelText{"ja", "キャンセル"}, CancelText{"ar", "إلغاء"},
                                         CancelText{"pt-BR", "Cancel"}, CancelText{"de-CH", "Abbrechen"}),
                         [](const auto &parameter) {
                             return QByteArray(parameter.param.language).replace('-', '_').toStdString();
                         });

#include "AlertTest.moc"
