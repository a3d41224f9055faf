// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace dozely;

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
/// The bundle in an agent, and the real tool below the root.
class ScriptBundleTest : public testing::Test
{
protected:
    void SetUp() override
    {
        root.makeFolder("/usr/bin");
        ASSERT_TRUE(QFile::copy(OSASCRIPT, root.join("/usr/bin/osascript")));
        const auto module = bundle->loadModule(
            bundle->objectForInfoDictionaryKey("WDUserAgentModule").toString(), WDPlugInFactory_iid);
        ASSERT_TRUE(module) << qPrintable(module.error().text);
        auto *factory = qobject_cast<WDPlugInFactory *>(*module);
        ASSERT_TRUE(factory);
        ASSERT_TRUE(factory->initializeClass(bundle));
        plugIn = factory->makeForRole("WDUserAgentModule");
        plugIn->setBundle(bundle);
        agentPlugIn = dynamic_cast<WDUserAgentPlugIn *>(plugIn.get());
        ASSERT_TRUE(agentPlugIn);
    }
    bool isActing()
    {
        bool acting = false;
        EXPECT_TRUE(QMetaObject::invokeMethod(plugIn.get(), "isActing", Q_RETURN_ARG(bool, acting)));
        return acting;
    }
    void actToTheEnd(const QVariantMap &parameters)
    {
        QSignalSpy finished(plugIn.get(), SIGNAL(actionDidFinish()));
        plugIn->setParameters(parameters);
        agentPlugIn->actInUserAgent();
        EXPECT_TRUE(isActing());
        ASSERT_TRUE(waitUntil([&] { return finished.count() == 1; }));
        EXPECT_FALSE(isActing());
    }
    std::vector<std::string> lines() const
    {
        std::vector<std::string> texts;
        for (const QString &line : root.logLines())
            texts.push_back(line.toStdString());
        return texts;
    }

    ScratchRoot root;
    std::shared_ptr<NSBundle> bundle = NSBundle::bundleWithPath(SCRIPT_BUNDLE);
    std::unique_ptr<WDPlugIn> plugIn;
    WDUserAgentPlugIn *agentPlugIn = nullptr;
};
} // namespace

TEST_F(ScriptBundleTest, RunsAScriptAndLogsItsResult)
{
    actToTheEnd({{"Script", "dozely.log('acting'); return dozely.run('/bin/echo', {'-n', 'done'}).output"}});
    EXPECT_THAT(lines(),
                ElementsAre("osascript acting", "osascript Resultat de l'execution du script AS: done",
                            HasSubstr("/usr/bin/osascript ended with status 0")));
}

TEST_F(ScriptBundleTest, RunsAScriptFile)
{
    QFile file(root.join("/my script.lua"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("error('in the file')");
    file.close();
    actToTheEnd({{"Script File", file.fileName()}});
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_EQ(lines()[0], "osascript Erreur lors de l'execution du script AS: my script.lua:1: in the file");
}

TEST_F(ScriptBundleTest, StopsAScriptThatRuns)
{
    QSignalSpy finished(plugIn.get(), SIGNAL(actionDidFinish()));
    plugIn->setParameters(QVariantMap{{"Script", "dozely.log('begun'); dozely.run('/bin/sleep', {'3600'})"}});
    agentPlugIn->actInUserAgent();
    ASSERT_TRUE(waitUntil([&] { return !lines().empty(); }));
    agentPlugIn->stopAction();
    ASSERT_TRUE(waitUntil([&] { return finished.count() == 1; }));
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_THAT(lines()[1], HasSubstr("osascript was ended by signal 15"));
}

TEST_F(ScriptBundleTest, LogsInsteadOfActingWithoutAScript)
{
    agentPlugIn->actInUserAgent();
    EXPECT_FALSE(isActing());
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_THAT(lines()[0],
                HasSubstr("Script: nothing was run, there is neither a parameter \"Script\" nor a parameter "
                          "\"Script File\"."));
}

TEST_F(ScriptBundleTest, ServesTheSessionAloneAndHasAName)
{
    EXPECT_EQ(bundle->bundleIdentifier(), "com.dozely.plugin.Script");
    EXPECT_FALSE(bundle->objectForInfoDictionaryKey("WDDaemonModule").isValid());
    EXPECT_TRUE(bundle->objectForInfoDictionaryKey("WDActsInUserAgent").toBool());
    const QMap<QString, QString> names{
        {"en", "Script"}, {"fr", "Script"}, {"de", "Skript"}, {"es", "Script"}};
    for (auto name = names.cbegin(); name != names.cend(); ++name) {
        UserLanguages::set({name.key()});
        EXPECT_EQ(plugIn->pluginName(), name.value());
    }
}

TEST_F(ScriptBundleTest, CancelsItsOccurrenceWhenTheAlertsButtonIsPressed)
{
    const std::shared_ptr<WDPlugIn> shared(std::move(plugIn));
    const auto delegate = std::dynamic_pointer_cast<WDUserAgentPlugIn>(shared);
    const auto multiplexer = WDUserNotificationCenterDelegate::sharedInstance();
    multiplexer->setDelegateForUserNotification(delegate, delegate->userNotification());
    multiplexer->userNotificationCenterDidActivateNotification(nullptr, delegate->userNotification());
    EXPECT_THAT(root.logContent().toStdString(), HasSubstr("cancelEvent impossible"))
        << "it has no date to cancel here";
}
