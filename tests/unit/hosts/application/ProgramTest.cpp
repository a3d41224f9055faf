// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "hosts/common/events/EventRequest.h"
#include "hosts/common/program/HostRootObject.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QProcess>

#include <csignal>
#include <gmock/gmock.h>

using namespace dozely;
using testing::HasSubstr;

namespace
{
/// The program itself, without a screen and without a bus.
class ProgramTest : public testing::Test
{
protected:
    ProgramTest()
    {
        root.makeSocketFolder();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + root.join("/nobody"));
        environment.insert("LD_LIBRARY_PATH", KIT_FOLDER);
    }
    ~ProgramTest() override
    {
        for (const auto &process : processes) {
            process->kill();
            process->waitForFinished();
        }
    }
    QProcess &start(QStringList arguments)
    {
        processes.push_back(std::make_unique<QProcess>());
        QProcess &process = *processes.back();
        process.setProcessEnvironment(environment);
        process.start(APPLICATION_PROGRAM, arguments);
        EXPECT_TRUE(process.waitForStarted());
        return process;
    }
    QProcess &startWindow() { return start({"--root", root.path()}); }
    static int statusOf(QProcess &process)
    {
        EXPECT_TRUE(process.waitForFinished(30'000));
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    OSStatus send(AEEventID eventID)
    {
        EventRequest request;
        request.signature = fourCharCode("DzAp");
        request.user = NSProcessInfo::effectiveUserID();
        request.eventClass = fourCharCode("aevt");
        request.eventID = eventID;
        return request.send().status;
    }
    QString home() const { return root.join(RealHomeDirectory()); }

    ScratchRoot root;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    std::vector<std::unique_ptr<QProcess>> processes;
};

TEST_F(ProgramTest, TellsItsVersionWithoutADisplay)
{
    environment.remove("QT_QPA_PLATFORM");
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");
    QProcess &version = start({"--version"});
    EXPECT_EQ(statusOf(version), 0);
    EXPECT_THAT(version.readAllStandardOutput().toStdString(), HasSubstr("Dozely 0."));
    QProcess &window = start({});
    EXPECT_EQ(statusOf(window), 1);
    EXPECT_THAT(window.readAllStandardError().toStdString(), HasSubstr("there is no display"));
}

TEST_F(ProgramTest, RefusesACommandLineThatIsWrong)
{
    EXPECT_EQ(statusOf(start({"--no-such-option"})), 2);
}

TEST_F(ProgramTest, TriesTheSettingsOfBundlesForItsWindow)
{
    const QString missing = root.join("/Missing.plugin");
    QProcess &trial = start({"--root", root.path(), "--try", missing});
    EXPECT_EQ(statusOf(trial), 0);
    const std::string said = trial.readAllStandardOutput().toStdString();
    EXPECT_THAT(said, HasSubstr("begin\t" + missing.toStdString()));
    EXPECT_THAT(said, HasSubstr("failed\t" + missing.toStdString() + "\tThere is no bundle"));
}

TEST_F(ProgramTest, IsTheConfigurationApplicationOfItsUser)
{
    startWindow();
    HostRootObject own;
    const auto center = WDCommunicationCenter::sharedInstance();
    center->setObserver(&own);
    const quint32 user = NSProcessInfo::effectiveUserID();
    EXPECT_TRUE(waitUntil([&] { return center->pingPrefPaneOfUser(user); }));
    EXPECT_TRUE(waitUntil([&] { return root.logContent().contains(" - App): Dozely started"); }));
    center->setObserver(nullptr);
}

TEST_F(ProgramTest, IsRaisedByASecondStartAndEndedByAnEvent)
{
    QProcess &first = startWindow();
    EXPECT_TRUE(waitUntil([&] { return send(fourCharCode("oapp")) == noErr; }));
    QProcess &second = startWindow();
    EXPECT_EQ(statusOf(second), 0);
    EXPECT_EQ(first.state(), QProcess::Running);
    EXPECT_EQ(send(fourCharCode("quit")), noErr);
    EXPECT_EQ(statusOf(first), 0);
    EXPECT_TRUE(root.logContent().contains("Dozely ended"));
    QProcess &third = startWindow();
    EXPECT_TRUE(waitUntil([&] { return send(fourCharCode("oapp")) == noErr; }));
    EXPECT_EQ(third.state(), QProcess::Running) << "the place of the first is free";
}

TEST_F(ProgramTest, SaysSoWhereTheFirstDoesNotAnswer)
{
    QProcess &first = startWindow();
    EXPECT_TRUE(waitUntil([&] { return send(fourCharCode("oapp")) == noErr; }));
    ::kill(static_cast<pid_t>(first.processId()), SIGSTOP);
    QProcess &second = startWindow();
    EXPECT_EQ(statusOf(second), 1);
    EXPECT_THAT(second.readAllStandardError().toStdString(),
                HasSubstr("it runs already but does not answer"));
    ::kill(static_cast<pid_t>(first.processId()), SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return send(fourCharCode("oapp")) == noErr; }));
}

TEST_F(ProgramTest, EndsWithTheSession)
{
    QProcess &first = startWindow();
    EXPECT_TRUE(waitUntil([&] { return send(fourCharCode("oapp")) == noErr; }));
    first.terminate();
    EXPECT_EQ(statusOf(first), 0);
    EXPECT_TRUE(root.logContent().contains("Dozely ended"));
}

TEST_F(ProgramTest, LeavesOneOfTwoThatAreStartedAtOnce)
{
    QProcess &one = startWindow();
    QProcess &other = startWindow();
    EXPECT_TRUE(waitUntil(
        [&] { return (one.state() == QProcess::NotRunning) != (other.state() == QProcess::NotRunning); }));
    QProcess &ended = one.state() == QProcess::NotRunning ? one : other;
    EXPECT_EQ(ended.exitCode(), 0);
}

TEST_F(ProgramTest, MakesLoginPreferencesAtItsFirstStartAndChangesNone)
{
    const QString path = home() + "/Library/Preferences/loginwindow.plist";
    QProcess &first = startWindow();
    EXPECT_TRUE(waitUntil([&] { return QFile::exists(path); }));
    EXPECT_TRUE(waitUntil([&] { return send(fourCharCode("quit")) == noErr; }));
    EXPECT_EQ(statusOf(first), 0);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("mine");
    file.close();
    startWindow();
    EXPECT_TRUE(waitUntil([&] { return send(fourCharCode("oapp")) == noErr; }));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "mine");
}
} // namespace
