// SPDX-License-Identifier: MIT
//
// What the agent does beside a performance.
#include "DozelyKit/core/foundation/Clock.h"
#include "PerformerFixture.h"
#include "hosts/agent/PerformingFolder.h"
#include "hosts/agent/SessionActions.h"
#include "hosts/common/performing/Performances.h"

#include <QDir>

using namespace dozely;

class SessionActionsAwakeTest : public PerformerFixture
{
protected:
    SessionActionsAwakeTest()
    {
        const QString program = Performances::programNamed("dozely-session-performer");
        root.makeFolder(QFileInfo(program.mid(root.path().size())).path());
        EXPECT_TRUE(QFile::copy(SESSION_PERFORMER_PROGRAM, program));
        ::chmod(qPrintable(program), 0755);
        qputenv("XDG_RUNTIME_DIR", root.makeFolder("/run/user/me", 0700).toUtf8());
    }
    AgentOrder orderTo(const QString &wish, const QVariantMap &info = {})
    {
        QVariantMap whole = info;
        whole.insert("WDUserAgentModule", "TroublePlugIn.so");
        const QString bundle = root.join(makeBundle("InSession", whole, {PROBE_MODULE}));
        order.parameters.insert("Do", wish);
        return {bundle, order.date, order.parameters};
    }

    const PlugInLoader loader{"WDUserAgentModule", PlugInLoader::sourcesOfTheSession()};
};

TEST_F(SessionActionsAwakeTest, TheMachineIsKeptAwakeUntilTheActionIsOver)
{
    SessionActions actions(loader);
    actions.perform(orderTo("wait"));
    EXPECT_EQ(power->inhibitions, 1);
    EXPECT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    EXPECT_EQ(power->inhibitions, 1) << "it goes on";
    write("/marks.go", "");
    EXPECT_TRUE(waitUntil([&] { return power->inhibitions == 0; }));
    EXPECT_EQ(marks(), "acted\nfinished\n");
}

TEST_F(SessionActionsAwakeTest, TheMachineMaySleepDuringAnActionThatSaysSo)
{
    SessionActions actions(loader);
    actions.perform(orderTo("wait", {{"WDInhibitsSleep", false}}));
    EXPECT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    EXPECT_EQ(power->reasons, QStringList());
}

TEST_F(SessionActionsAwakeTest, OneThatAnEarlierAgentBeganKeepsItAwakeAgain)
{
    {
        const QString program = Performances::programNamed("dozely-session-performer");
        Performances earlier(PerformerStart::ofThisMachine(program, ServiceManager::Whose::User),
                             *PerformingFolder::make(), *Port<Clock>::current());
        const AgentOrder what = orderTo("wait");
        order.bundlePath = what.bundlePath;
        order.role = PerformanceOrder::Role::Session;
        ASSERT_TRUE(earlier.prepare("one", order, [](const PerformanceOutcome &) {}));
        ASSERT_TRUE(earlier.go("one"));
        ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    }
    EXPECT_EQ(power->inhibitions, 0);
    const SessionActions next(loader);
    EXPECT_EQ(power->inhibitions, 1);
    write("/marks.go", "");
    EXPECT_TRUE(waitUntil([&] { return power->inhibitions == 0; }));
}

TEST_F(SessionActionsAwakeTest, TheActionHasTheLimitsOfItsBundleAndItsSchedule)
{
    SessionActions actions(loader);
    order.parameters.insert("WDActionMemoryLimit", muchMemory);
    actions.perform(orderTo("tell limits", {{"WDActionNice", 7}}));
    EXPECT_TRUE(waitUntil([&] { return marks().count('\n') == 2; }));
    EXPECT_EQ(marks(), "acted\nnice 7 io 0/0 data 109951162777600\n");
    write("/marks.go", "");
    EXPECT_TRUE(waitUntil([&] { return power->inhibitions == 0; }));
}

TEST_F(SessionActionsAwakeTest, WithoutASafeFolderNothingIsPerformed)
{
    ASSERT_EQ(::chmod(qPrintable(root.join("/run/user/me")), 0777), 0);
    SessionActions actions(loader);
    actions.perform(orderTo("wait"));
    EXPECT_EQ(root.logLines().filter("The action was not performed: there is no folder for it").size(), 1);
    EXPECT_EQ(power->reasons, QStringList());
    EXPECT_EQ(marks(), "");
}
