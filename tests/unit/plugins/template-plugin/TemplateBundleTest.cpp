// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "support/ScratchRoot.h"

#include <gmock/gmock.h>

namespace
{
std::unique_ptr<WDPlugIn> makeGreeting(const QString &roleKey)
{
    const auto bundle = NSBundle::bundleWithPath(TEMPLATE_BUNDLE);
    if (!bundle)
        return {};
    const auto module =
        bundle->loadModule(bundle->objectForInfoDictionaryKey(roleKey).toString(), WDPlugInFactory_iid);
    EXPECT_TRUE(module) << qPrintable(module.error().text);
    auto *factory = module ? qobject_cast<WDPlugInFactory *>(*module) : nullptr;
    EXPECT_TRUE(factory);
    return factory && factory->initializeClass(bundle) ? factory->makeForRole(roleKey) : nullptr;
}
} // namespace

TEST(TemplateBundle, GreetsFromTheDaemon)
{
    ScratchRoot root;
    const auto plugIn = makeGreeting("WDDaemonModule");
    ASSERT_TRUE(plugIn);
    EXPECT_EQ(plugIn->pluginName(), "Greeting");
    EXPECT_EQ(plugIn->pluginIdentifier(), "org.example.Greeting");
    dynamic_cast<WDDaemonPlugIn &>(*plugIn).actInDaemon();
    EXPECT_THAT(root.logContent().toStdString(), testing::HasSubstr("Hello from the daemon\n"));
}

TEST(TemplateBundle, GreetsFromTheSessionWithItsParameter)
{
    ScratchRoot root;
    const auto plugIn = makeGreeting("WDUserAgentModule");
    ASSERT_TRUE(plugIn);
    plugIn->setParameters(QVariantMap{{"Text", "Good morning"}});
    dynamic_cast<WDUserAgentPlugIn &>(*plugIn).actInUserAgent();
    EXPECT_THAT(root.logContent().toStdString(), testing::HasSubstr("Good morning from the session\n"));
}

TEST(TemplateBundle, CancelsItsOccurrenceWhenTheAlertsButtonIsPressed)
{
    ScratchRoot root;
    const std::shared_ptr<WDPlugIn> plugIn = makeGreeting("WDUserAgentModule");
    const auto agentPlugIn = std::dynamic_pointer_cast<WDUserAgentPlugIn>(plugIn);
    ASSERT_TRUE(agentPlugIn);
    const auto multiplexer = WDUserNotificationCenterDelegate::sharedInstance();
    multiplexer->setDelegateForUserNotification(agentPlugIn, agentPlugIn->userNotification());
    multiplexer->userNotificationCenterDidActivateNotification(nullptr, agentPlugIn->userNotification());
    EXPECT_THAT(root.logContent().toStdString(), testing::HasSubstr("cancelEvent impossible"))
        << "it has no date to cancel here";
}
