// SPDX-License-Identifier: MIT
#include "integration/hosts/HostsFixture.h"

#include "support/SignalProcess.h"

#include <QTimeZone>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

using testing::ContainsRegex;
using testing::HasSubstr;

TEST_F(HostsTest, AnOccurrenceForTheSessionRunsInTheAgentOfTheConsoleUser)
{
    startDaemon();
    startAgent();
    const QDateTime date = soon();
    writeStore({probeEntry("hello", inSession, date)});
    ASSERT_TRUE(logs("Probe acts in the session: hello"));
    const QString local = date.toTimeZone(QTimeZone("Europe/Paris")).toString("yyyy-MM-dd HH:mm:ss");
    EXPECT_THAT(lineWith("Probe acts in the session"),
                ContainsRegex("- " + std::to_string(agentUser()) + " - User Agent\\): .*hello, " +
                              local.toStdString()));
    EXPECT_TRUE(logs(QString("was handed to the agent of user %1").arg(agentUser())));
    EXPECT_GE(QDateTime::currentDateTimeUtc(), date);
    EXPECT_EQ(countOf("acts in the daemon"), 0);
}

TEST_F(HostsTest, AnOccurrenceForTheDaemonRunsThereWithoutAnyAgent)
{
    startDaemon();
    writeStore({probeEntry("hello", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: hello"));
    EXPECT_THAT(lineWith("Probe acts in the daemon"),
                ContainsRegex("- " + std::to_string(::geteuid()) + " - Daemon\\): "));
}

TEST_F(HostsTest, AnOccurrenceOfAnotherUserNeverRunsInTheAgentOfWhoeverIsThere)
{
    startDaemon();
    startAgent();
    writeStore({changed(probeEntry("foreign", with(inSession, "Time Out", -3LL)), "Owner",
                        static_cast<qint64>(agentUser() + 1))});
    EXPECT_TRUE(logs(QString("waits for user %1, who is not at the console").arg(agentUser() + 1)));
    EXPECT_TRUE(logs(QString("was not performed: user %1 is not at the console").arg(agentUser() + 1)));
    EXPECT_EQ(countOf("Probe acts"), 0);
}

TEST_F(HostsTest, AnOccurrenceOfAUserWaitsUntilThatUserSwitchesIn)
{
    const quint32 other = agentUser() + 1;
    switchTo(other);
    startDaemon();
    startAgent();
    // Whoever owns the root folder stands for root, whose schedules are for whoever is there.
    const bool isRoots = ::geteuid() != 0;
    writeStore({probeEntry("mine", with(inSession, "Time Out", -60LL))});
    EXPECT_TRUE(logs(isRoots ? QString("waits for the agent of user %1").arg(other)
                             : QString("waits for user %1, who is not at the console").arg(agentUser())));
    EXPECT_EQ(countOf("Probe acts"), 0);
    switchTo(agentUser());
    if (!isRoots) {
        EXPECT_TRUE(logs("Probe acts in the session: mine"));
    }
}

TEST_F(HostsTest, MayHaveAsManyDescriptorsAsTheMachineLetsThem)
{
    startDaemon();
    startAgent();
    for (const auto *process : {&daemon, &agent}) {
        QFile limits(QString("/proc/%1/limits").arg((*process)->processId()));
        ASSERT_TRUE(limits.open(QIODevice::ReadOnly));
        const QString text = limits.readAll();
        const QStringList line = text.split('\n').filter("Max open files").value(0).simplified().split(' ');
        ASSERT_EQ(line.size(), 6) << text.toStdString();
        EXPECT_EQ(line[3], line[4]) << "the soft and the hard one";
    }
}

namespace
{
constexpr qsizetype mostLibraries = 30;

/// The files of a process's memory map that are shared libraries.
QSet<QByteArray> sharedLibraries(const QByteArray &maps)
{
    QSet<QByteArray> files;
    for (const QByteArray &line : maps.split('\n')) {
        const QByteArray file = line.mid(line.indexOf('/'));
        if (line.contains('/') && file.contains(".so"))
            files += file;
    }
    return files;
}
} // namespace

TEST_F(HostsTest, HaveNoLibraryInMemoryThatOnlyServersKeysOrScriptsNeed)
{
    startDaemon();
    startAgent();
    for (const auto *process : {&daemon, &agent}) {
        QFile maps(QString("/proc/%1/maps").arg((*process)->processId()));
        ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
        const QByteArray text = maps.readAll();
        EXPECT_TRUE(text.contains("libDozelyKit")) << "these are the right ones";
        for (const char *library : {"libcurl", "libevdev", "libssl", "liblua", "ScriptEngine"})
            EXPECT_FALSE(text.contains(library)) << library;
    }
}

TEST_F(HostsTest, TheDaemonHasFewLibrariesInMemory)
{
    startDaemon();
    QFile maps(QString("/proc/%1/maps").arg(daemon->processId()));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const auto libraries = sharedLibraries(maps.readAll());
    EXPECT_GT(libraries.size(), 10) << "the map was understood";
    EXPECT_LE(libraries.size(), mostLibraries) << testing::PrintToString(libraries.values());
}

TEST_F(HostsTest, AScriptInTheAgentSendsAnAppleEvent)
{
    // The agent has its signature from there.
    ASSERT_TRUE(QFile::copy(
        QString(AGENT_BUNDLE) + "/Contents/Info.plist",
        root.join("/Applications/Dozely.app/Contents/Helpers/Dozely Agent.app/Contents/Info.plist")));
    startDaemon();
    startAgent();
    const char *const source = R"(
        local reply = dozely.sendEvent("DzAg", "aevt", "oapp")
        return "the agent's reply is a " .. type(reply))";
    writeStore({probeEntry("script", with(inSession, "Script", source))});
    EXPECT_TRUE(logs("Resultat de l'execution du script AS: the agent's reply is a table"));
}

TEST_F(HostsTest, AScriptInTheDaemonMaySendAnAppleEvent)
{
    startDaemon();
    const char *const source = R"(
        local isSent, error = pcall(dozely.sendEvent, "None", "aevt", "oapp")
        return error)";
    writeStore({probeEntry("script", with(inDaemon, "Script", source))});
    EXPECT_TRUE(logs("No such process runs. (-600)"));
}

TEST_F(HostsTest, BothProgramsEndWith0OnSigterm)
{
    startDaemon();
    startAgent();
    writeStore({probeEntry("long", with(inSession, "Then", "go on"))});
    ASSERT_TRUE(logs("Probe acts in the session: long"));
    EXPECT_EQ(endOf(agent), 0);
    EXPECT_TRUE(logs("Probe was told to stop"));
    EXPECT_EQ(countOf("Dozely Agent ended"), 1);
    EXPECT_EQ(endOf(daemon), 0);
    EXPECT_EQ(countOf("dozelyd ended"), 1);
}

TEST_F(HostsTest, ADaemonReadsItsSchedulesAgainOnSighup)
{
    startDaemon();
    ASSERT_TRUE(signalProcess(daemon->processId(), SIGHUP));
    EXPECT_TRUE(logs("dozelyd reads its schedules again"));
    writeStore({probeEntry("hello", inDaemon)});
    EXPECT_TRUE(logs("Probe acts in the daemon: hello")) << "it did not end";
    EXPECT_EQ(endOf(daemon), 0);
}

TEST_F(HostsTest, ABadStoreLeavesTheSchedulesAsTheyWereAndUntouchedItself)
{
    startDaemon();
    ASSERT_TRUE(logs("Schedules: 0"));
    const QDateTime date = soon().addSecs(1);
    const QByteArray good = storeOf({probeEntry("good", inDaemon, date)});
    write(storePath, good);
    ASSERT_TRUE(logs("Schedules: 1"));
    write(storePath, good.left(good.size() / 2));
    EXPECT_TRUE(logs("its schedules stay as they were"));
    EXPECT_TRUE(logs("Probe acts in the daemon: good"));
    EXPECT_EQ(read(storePath), good.left(good.size() / 2));
}

TEST_F(HostsTest, AnExceptionThatLeavesAPlugInsSlotIsOneLineAndTheDaemonGoesOn)
{
    startDaemon();
    const QDateTime date = soon();
    writeStore({probeEntry("bad", with(with(inDaemon, "Throws Later", true), "Goes On", "for ever"), date),
                probeEntry("next", inDaemon, date.addSecs(1))});
    EXPECT_TRUE(logs("was stopped: the probe was told to, later"));
    EXPECT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(endOf(daemon), 0);
}

TEST_F(HostsTest, ASecondDaemonOfARootFolderEndsAndDisturbsNothing)
{
    startDaemon();
    startAgent();
    const Ended second = run("/usr/sbin/dozelyd", {"--root", root.path()});
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.errors.toStdString(), HasSubstr("another dozelyd"));
    EXPECT_EQ(countOf("another dozelyd"), 1);
    EXPECT_EQ(countOf("dozelyd started"), 1);
    EXPECT_TRUE(isListening(agentSocket())) << "the folder of sockets was not cleared";
    writeStore({probeEntry("hello", inDaemon)});
    EXPECT_TRUE(logs("Probe acts in the daemon: hello"));
    EXPECT_EQ(countOf("Probe acts in the daemon: hello"), 1);
    kill(daemon);
    startDaemon();
    EXPECT_EQ(countOf("dozelyd started"), 2) << "the kernel gave the lock back";
}

TEST_F(HostsTest, ADaemonThatCannotWaitForDatesEndsInsteadOfPerformingNothing)
{
    const Ended ended = run("/usr/sbin/dozelyd", {"--root", root.path()}, NO_TIMERS);
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(logs("dozelyd cannot wait for dates and ends"));
    EXPECT_EQ(countOf("dozelyd ended"), 1);
}

TEST_F(HostsTest, WhatIsOverIsCleanedAwayBesideTheDaemon)
{
    copyProgram(ADMIN_PROGRAM, "/usr/bin/dozely-admin");
    startDaemon();
    writeStore({probeEntry("over", inDaemon), probeEntry("later", inDaemon, soon().addSecs(3600))});
    ASSERT_TRUE(logs("Probe acts in the daemon: over"));
    const auto clean = [this] {
        const Ended ended = run("/usr/bin/dozely-admin", {"--root", root.path(), "clean"});
        EXPECT_EQ(ended.status, 0) << ended.errors.constData();
        return !read(storePath).contains("Name of over");
    };
    EXPECT_TRUE(waitUntil(clean)) << "the end of an action is on disk a little later";
    EXPECT_TRUE(read(storePath).contains("Name of later"));
    EXPECT_TRUE(logs("Schedules: 1"));
    EXPECT_EQ(countOf("which is over, was removed"), 1);
}

TEST_F(HostsTest, TheToolShowsWhatAnActionWroteLastAndThatItFailed)
{
    copyProgram(ADMIN_PROGRAM, "/usr/bin/dozely-admin");
    const QString bundle = makeBundle("Trouble", {{"WDDaemonModule", "TroublePlugIn.so"}}, {TROUBLE_MODULE});
    startDaemon();
    const auto entryFor = [&](const QString &identifier, const QString &wish) {
        return changed(probeEntry(identifier, with(inDaemon, "Do", wish)), "Bundle Path", bundle);
    };
    writeStore({entryFor("printing", "print"), entryFor("crashing", "crash")});
    const auto tool = [this](const QStringList &arguments) {
        return run("/usr/bin/dozely-admin", QStringList{"--root", root.path()} + arguments);
    };
    EXPECT_TRUE(waitUntil([&] {
        return tool({"output", "printing"}).output.endsWith("\nline 100000\n");
    })) << tool({"output", "printing"}).errors.constData();
    EXPECT_TRUE(waitUntil([&] {
        return tool({"list"}).output.contains(
            "failed (its process was ended by signal 11 (Segmentation fault))");
    })) << tool({"list"}).output.constData();
    EXPECT_EQ(tool({"output", "crashing"}).status, 0);
}

TEST_F(HostsTest, TheToolShowsWhatAnActionInTheSessionWroteLast)
{
    copyProgram(ADMIN_PROGRAM, "/usr/bin/dozely-admin");
    const QString bundle = makeBundle("Command", {{"WDUserAgentModule", "Command.so"}}, {COMMAND_MODULE});
    startDaemon();
    startAgent();
    const auto entryFor = [&](const QString &identifier, const QString &program, const QVariantMap &more) {
        QVariantMap parameters = more;
        parameters.insert("Program", program);
        return changed(probeEntry(identifier, with(parameters, "Acts In User Agent", 1LL)), "Bundle Path",
                       bundle);
    };
    const QVariantMap arguments{{"Arguments", QVariantList{"100000"}}};
    const QVariantMap crowded =
        entryFor("crowded", "/usr/bin/seq", with(arguments, "Ballast", QString(150'000, 'x')));
    writeStore({entryFor("printing", "/usr/bin/seq", arguments), crowded, entryFor("silent", "/bin/true", {}),
                entryFor("failing", "/bin/sh", {{"Arguments", QVariantList{"-c", "echo why; exit 3"}}})});
    const auto outputOf = [this](const QString &identifier) {
        return run("/usr/bin/dozely-admin", {"--root", root.path(), "output", identifier});
    };
    EXPECT_TRUE(waitUntil([&] { return outputOf("printing").output.endsWith("\n100000\n"); }))
        << outputOf("printing").errors.constData();
    EXPECT_EQ(outputOf("printing").output.size(), 64 << 10);
    EXPECT_TRUE(waitUntil([&] { return outputOf("failing").output == "why\n"; }));
    EXPECT_TRUE(logs("Command of schedule \"Name of crowded\": /usr/bin/seq ended"));
    EXPECT_EQ(outputOf("crowded").output, "") << "there was no room for it";
    EXPECT_TRUE(logs("Command of schedule \"Name of silent\": /bin/true ended"));
    EXPECT_EQ(outputOf("silent").status, 0);
    EXPECT_EQ(outputOf("silent").output, "");
    EXPECT_EQ(countOf("The request to the daemon failed"), 0);
}

TEST_F(HostsTest, ADaemonThatIsToKeepNoOccurrencesRefuses)
{
    for (const QString number : {"0", "-1", "many"}) {
        const Ended ended = run("/usr/sbin/dozelyd", {"--root", root.path(), "--keep=" + number});
        EXPECT_EQ(ended.status, 2) << number.toStdString();
        EXPECT_THAT(ended.errors.toStdString(), HasSubstr("--keep takes a number from 1 on"));
    }
}

TEST_F(HostsTest, RefuseARootFolderThatIsTooLongForASocketPath)
{
    const QString longFolder = root.makeFolder("/" + QString(80, 'x'));
    for (const QString program :
         {"/usr/sbin/dozelyd",
          "/Applications/Dozely.app/Contents/Helpers/Dozely Agent.app/Contents/Linux/Dozely Agent"}) {
        const Ended ended = run(program, {"--root", longFolder});
        EXPECT_EQ(ended.status, 2);
        EXPECT_THAT(ended.errors.toStdString(), HasSubstr("too long"));
    }
}
