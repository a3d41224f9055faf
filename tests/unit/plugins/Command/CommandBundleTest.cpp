// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QFileInfo>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace dozely;

namespace
{
class CommandBundleTest : public testing::Test
{
protected:
    std::unique_ptr<WDPlugIn> make(const QString &roleKey)
    {
        const auto module =
            bundle->loadModule(bundle->objectForInfoDictionaryKey(roleKey).toString(), WDPlugInFactory_iid);
        EXPECT_TRUE(module) << qPrintable(module.error().text);
        auto *factory = module ? qobject_cast<WDPlugInFactory *>(*module) : nullptr;
        EXPECT_TRUE(factory);
        if (!factory || !factory->initializeClass(bundle))
            return {};
        auto plugIn = factory->makeForRole(roleKey);
        plugIn->setBundle(bundle);
        plugIn->setParameters(QVariantMap{{"Program", "/bin/touch"}, {"Arguments", QVariantList{mark()}}});
        return plugIn;
    }
    QString mark() const { return root.join("/mark of the action"); }
    static bool isActing(WDPlugIn *plugIn)
    {
        bool acting = false;
        EXPECT_TRUE(QMetaObject::invokeMethod(plugIn, "isActing", Q_RETURN_ARG(bool, acting)));
        return acting;
    }
    /// Follows the action by the invokable and the signal, as a host does.
    void expectActionToEnd(WDPlugIn *plugIn, QSignalSpy &finished)
    {
        EXPECT_TRUE(isActing(plugIn));
        ASSERT_TRUE(waitUntil([&] { return finished.count() == 1; }));
        EXPECT_FALSE(isActing(plugIn));
        EXPECT_TRUE(QFileInfo::exists(mark()));
        EXPECT_THAT(root.logContent().toStdString(),
                    testing::HasSubstr("Command: /bin/touch ended with status 0"));
    }

    ScratchRoot root;
    std::shared_ptr<NSBundle> bundle = NSBundle::bundleWithPath(COMMAND_BUNDLE);
};
} // namespace

TEST_F(CommandBundleTest, ActsInTheDaemon)
{
    const auto plugIn = make("WDDaemonModule");
    auto *daemonPlugIn = dynamic_cast<WDDaemonPlugIn *>(plugIn.get());
    ASSERT_TRUE(daemonPlugIn);
    QSignalSpy finished(plugIn.get(), SIGNAL(actionDidFinish()));
    daemonPlugIn->actInDaemon();
    expectActionToEnd(plugIn.get(), finished);
}

TEST_F(CommandBundleTest, ActsInTheUsersSession)
{
    const auto plugIn = make("WDUserAgentModule");
    auto *agentPlugIn = dynamic_cast<WDUserAgentPlugIn *>(plugIn.get());
    ASSERT_TRUE(agentPlugIn);
    QSignalSpy finished(plugIn.get(), SIGNAL(actionDidFinish()));
    agentPlugIn->actInUserAgent();
    expectActionToEnd(plugIn.get(), finished);
}

TEST_F(CommandBundleTest, NamesTheScheduleInTheLogWhereTheHostTellsIt)
{
    const auto plugIn = make("WDDaemonModule");
    auto *daemonPlugIn = dynamic_cast<WDDaemonPlugIn *>(plugIn.get());
    ASSERT_TRUE(daemonPlugIn);
    plugIn->setProperty(PlugInProperty::scheduleName, "Back\nup");
    QSignalSpy finished(plugIn.get(), SIGNAL(actionDidFinish()));
    daemonPlugIn->actInDaemon();
    ASSERT_TRUE(waitUntil([&] { return finished.count() == 1; }));
    const auto inSession = make("WDUserAgentModule");
    auto *agentPlugIn = dynamic_cast<WDUserAgentPlugIn *>(inSession.get());
    ASSERT_TRUE(agentPlugIn);
    inSession->setProperty(PlugInProperty::scheduleName, "Greeting");
    inSession->setParameters(QVariantMap());
    agentPlugIn->actInUserAgent();
    const QStringList lines = root.logLines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_THAT(lines[0].toStdString(),
                testing::HasSubstr("Command of schedule \"Back up\": /bin/touch ended with status 0 after"));
    EXPECT_THAT(lines[1].toStdString(),
                testing::HasSubstr("Command of schedule \"Greeting\": nothing was run, the parameter"));
}

TEST_F(CommandBundleTest, StopsAnActionInTheSession)
{
    const auto plugIn = make("WDUserAgentModule");
    auto *agentPlugIn = dynamic_cast<WDUserAgentPlugIn *>(plugIn.get());
    ASSERT_TRUE(agentPlugIn);
    plugIn->setParameters(QVariantMap{{"Program", "/bin/sleep"}, {"Arguments", QVariantList{"3600"}}});
    QSignalSpy finished(plugIn.get(), SIGNAL(actionDidFinish()));
    agentPlugIn->actInUserAgent();
    agentPlugIn->stopAction();
    ASSERT_TRUE(waitUntil([&] { return finished.count() == 1; }));
    EXPECT_THAT(root.logContent().toStdString(), testing::HasSubstr("/bin/sleep was ended by signal 15"));
}

TEST_F(CommandBundleTest, LogsInsteadOfActingWithoutParameters)
{
    const auto plugIn = make("WDDaemonModule");
    ASSERT_TRUE(plugIn);
    plugIn->setParameters(std::shared_ptr<const QVariantMap>());
    dynamic_cast<WDDaemonPlugIn &>(*plugIn).actInDaemon();
    EXPECT_FALSE(isActing(plugIn.get()));
    EXPECT_THAT(root.logContent().toStdString(),
                testing::HasSubstr("Command: nothing was run, the parameter \"Program\" is missing."));
}

TEST_F(CommandBundleTest, HasAnIdentifierAndANameInSixLanguages)
{
    EXPECT_EQ(bundle->bundleIdentifier(), "com.dozely.plugin.Command");
    const auto plugIn = make("WDDaemonModule");
    ASSERT_TRUE(plugIn);
    const QMap<QString, QString> names{{"en", "Command"}, {"fr", "Commande"}, {"de", "Befehl"},
                                       {"es", "Orden"},   {"ja", "コマンド"}, {"ar", "أمر"}};
    for (auto name = names.cbegin(); name != names.cend(); ++name) {
        UserLanguages::set({name.key()});
        EXPECT_EQ(plugIn->pluginName(), name.value());
    }
}

TEST_F(CommandBundleTest, CancelsItsOccurrenceWhenTheAlertsButtonIsPressed)
{
    const std::shared_ptr<WDPlugIn> plugIn = make("WDUserAgentModule");
    const auto agentPlugIn = std::dynamic_pointer_cast<WDUserAgentPlugIn>(plugIn);
    ASSERT_TRUE(agentPlugIn);
    const auto multiplexer = WDUserNotificationCenterDelegate::sharedInstance();
    multiplexer->setDelegateForUserNotification(agentPlugIn, agentPlugIn->userNotification());
    multiplexer->userNotificationCenterDidActivateNotification(nullptr, agentPlugIn->userNotification());
    EXPECT_THAT(root.logContent().toStdString(), testing::HasSubstr("cancelEvent impossible"))
        << "it has no date to cancel here";
}
