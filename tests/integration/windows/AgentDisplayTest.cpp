// SPDX-License-Identifier: MIT
#include "integration/hosts/HostSystem.h"
#include "support/VirtualDisplay.h"

using namespace dozely;

using testing::HasSubstr;
using testing::Not;

/// The agent as a program, on a display and without one.
class AgentDisplayTest : public HostSystem
{
protected:
    AgentDisplayTest()
    {
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "SESSION_MANAGER"})
            qunsetenv(name);
        startDaemon(); // which makes the folders
    }
    /// The files that are mapped into the agent.
    std::string mappedFiles() const
    {
        QFile maps(QString("/proc/%1/maps").arg(agent->processId()));
        EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
        return maps.readAll().toStdString();
    }
    /// A schedule whose action is a window.
    QVariantMap windowEntry() const
    {
        const QString bundle = makeBundle(
            "Window", {{"CFBundleIdentifier", "com.dozely.window"}, {"WDUserAgentModule", "WindowPlugIn.so"}},
            {WINDOW_MODULE});
        const QVariantMap entry = probeEntry("window", {{"Close When", root.join("/close")}});
        return changed(entry, "Bundle Path", bundle);
    }
    static constexpr char complaint[] = "The display cannot be opened";
};

TEST_F(AgentDisplayTest, WithoutADisplayNoWidgetIsMade)
{
    startAgent();
    EXPECT_THAT(mappedFiles(), Not(HasSubstr("/platforms/")));
    EXPECT_EQ(endOf(agent), 0);
    EXPECT_EQ(countOf(complaint), 0);
}

TEST_F(AgentDisplayTest, ADisplayThatCannotBeOpenedCostsOneLineAndNothingElse)
{
    qputenv("DISPLAY", ":64999");
    startAgent();
    EXPECT_EQ(countOf(complaint), 1);
    writeStore({probeEntry("hello", {{"Acts In User Agent", 1LL},
                                     {"Tells", QStringList{"QT_QPA_PLATFORM", "SESSION_MANAGER"}}})});
    EXPECT_TRUE(logs("Probe acts in the session: hello"));
    EXPECT_TRUE(logs("Probe has QT_QPA_PLATFORM=nothing"))
        << "what the agent needs for itself is no action's";
    EXPECT_TRUE(logs("Probe has SESSION_MANAGER=nothing"));
    EXPECT_EQ(endOf(agent), 0);
}

TEST_F(AgentDisplayTest, ACompositorThatCannotBeReachedCostsOneLineToo)
{
    qputenv("WAYLAND_DISPLAY", "wayland-nowhere");
    startAgent();
    EXPECT_EQ(countOf(complaint), 1);
    EXPECT_EQ(endOf(agent), 0);
}

TEST_F(AgentDisplayTest, OnADisplayItHasWindowsAndEndsInOrder)
{
    VirtualDisplay display;
    ASSERT_TRUE(display.start());
    startAgent();
    EXPECT_THAT(mappedFiles(), HasSubstr("libqxcb.so"));
    EXPECT_EQ(endOf(agent), 0) << "closing no window is no reason to end, the signal is";
    EXPECT_EQ(countOf(complaint), 0);
    EXPECT_EQ(countOf("Dozely Agent ended"), 1);
}

TEST_F(AgentDisplayTest, ThePlatformThatTheSessionNamesIsTheAgentsAndItsActions)
{
    qputenv("DISPLAY", ":64999");
    qputenv("QT_QPA_PLATFORM", "minimal");
    qputenv("SESSION_MANAGER", "local/nobody");
    startAgent();
    EXPECT_THAT(mappedFiles(), HasSubstr("libqminimal.so"));
    writeStore({probeEntry("hello", {{"Acts In User Agent", 1LL},
                                     {"Tells", QStringList{"QT_QPA_PLATFORM", "SESSION_MANAGER"}}})});
    EXPECT_TRUE(logs("Probe has QT_QPA_PLATFORM=minimal"));
    EXPECT_TRUE(logs("Probe has SESSION_MANAGER=local/nobody"));
    EXPECT_EQ(endOf(agent), 0);
    qunsetenv("SESSION_MANAGER");
}

TEST_F(AgentDisplayTest, ADisplayThatGoesAwayEndsIt)
{
    {
        VirtualDisplay display;
        ASSERT_TRUE(display.start());
        startAgent();
    }
    EXPECT_TRUE(waitUntil([this] { return agent->state() == QProcess::NotRunning; }));
    EXPECT_EQ(agent->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(agent->exitCode(), 1) << "so that whoever keeps it running starts it anew";
    agent.reset();
}

TEST_F(AgentDisplayTest, AnActionGoesOnForAsLongAsItsWindowIsShown)
{
    VirtualDisplay display;
    ASSERT_TRUE(display.start());
    write("/Applications/Dozely.app/Contents/Helpers/Dozely Agent.app/Contents/Info.plist",
          PropertyList::toData(QVariantMap{{"CFBundleIdentifier", "com.dozely.UserAgent"}},
                               PropertyList::Format::Xml));
    startAgent();
    writeStore({windowEntry()});
    ASSERT_TRUE(logs("The platform is xcb, the agent's bundle known"));
    ASSERT_TRUE(logs("The window is shown"));
    write("/close", "");
    EXPECT_TRUE(logs("The window goes")) << "its process was there to see it";
    EXPECT_TRUE(logs("The window's process ends"));
    EXPECT_EQ(endOf(agent), 0);
    EXPECT_EQ(countOf("failed in the session"), 0);
    EXPECT_EQ(countOf("told to stop"), 0);
}

TEST_F(AgentDisplayTest, AnActionWhoseWindowIsShownIsToldToStopWhenTheAgentEnds)
{
    VirtualDisplay display;
    ASSERT_TRUE(display.start());
    startAgent();
    writeStore({windowEntry()});
    ASSERT_TRUE(logs("The window is shown"));
    EXPECT_EQ(endOf(agent), 0);
    EXPECT_TRUE(logs("The window's action was told to stop"));
    EXPECT_TRUE(logs("The window's process ends"));
}

TEST_F(AgentDisplayTest, WithoutADisplayAnActionThatWouldShowAWindowEnds)
{
    startAgent();
    writeStore({windowEntry()});
    ASSERT_TRUE(logs("The platform is "));
    EXPECT_TRUE(logs("The window's process ends"));
    EXPECT_EQ(countOf("The window is shown"), 0);
}
