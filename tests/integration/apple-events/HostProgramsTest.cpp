// SPDX-License-Identifier: MIT
//
// The programs of the system: the agent answers, the admin tool and scripts send.
#include "EventFixture.h"

#include "DozelyKit/communication/events/ZDRAppleEvent.h"
#include "support/SignalProcess.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

using testing::HasSubstr;

namespace
{
class HostPrograms : public EventFixture
{
protected:
    HostPrograms()
    {
        root.makeSocketFolder();
        ::unsetenv("SUDO_UID");
        ::unsetenv("DISPLAY");
        ::unsetenv("WAYLAND_DISPLAY");
    }

    struct Ended {
        int status;
        std::string output;
        std::string errors;

        QJsonObject json() const
        {
            return QJsonDocument::fromJson(QByteArray::fromStdString(output)).object();
        }
    };
    Ended run(const QString &program, const QStringList &arguments, const QByteArray &input = {}) const
    {
        QProcess process;
        process.start(program, QStringList{"--root", root.path()} + arguments);
        process.write(input);
        EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; }));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput().toStdString(), process.readAllStandardError().toStdString()};
    }
    Ended send(const QStringList &arguments) const
    {
        return run(ADMIN_PROGRAM, QStringList{"event"} + arguments);
    }
    Ended script(const QString &source) const { return run(OSASCRIPT, {"-e", source}); }

    /// The agent, until it can be found under its signature.
    std::unique_ptr<QProcess> startAgent() const
    {
        auto agent = std::make_unique<QProcess>();
        agent->start(AGENT_PROGRAM, {"--root", root.path()});
        EXPECT_TRUE(waitUntil([&] {
            return ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("DzAg")).lowLongOfPSN ==
                   static_cast<quint32>(agent->processId());
        })) << agent->readAllStandardError().toStdString();
        return agent;
    }
};
} // namespace

// ---- the agent

TEST_F(HostPrograms, AgentIsFoundByItsSignatureAnswersOpenAndQuits)
{
    const auto agent = startAgent();
    const qint64 process = agent->processId();
    const auto open = send({"DzAg", "aevt", "oapp"});
    EXPECT_EQ(open.status, 0) << open.errors;
    EXPECT_EQ(open.output, QString("Process %1 has handled the event.\n").arg(process).toStdString());
    EXPECT_EQ(agent->state(), QProcess::Running);
    const auto quit = send({"DzAg", "aevt", "quit", "--json"});
    EXPECT_EQ(quit.status, 0) << quit.errors;
    EXPECT_EQ(quit.json(), QJsonObject({{"process", process}, {"reply", QJsonObject()}}));
    ASSERT_TRUE(waitUntil([&] { return agent->state() == QProcess::NotRunning; }));
    EXPECT_EQ(agent->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(agent->exitCode(), 0);
    EXPECT_EQ(root.logLines().filter("asks this one to quit").size(), 1);
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("DzAg")), ProcessSerialNumber());
}

TEST_F(HostPrograms, AgentKnowsNoOtherEvent)
{
    const auto agent = startAgent();
    const auto other = send({"DzAg", "aevt", "odoc"});
    EXPECT_EQ(other.status, 1);
    EXPECT_EQ(other.output, "");
    EXPECT_THAT(other.errors, HasSubstr("does not know this event. (-1708)"));
}

TEST_F(HostPrograms, DaemonMakesThePlaceWhereProcessesMeet)
{
    ASSERT_TRUE(QDir().rmdir(EventProcesses::folder()));
    QProcess daemon;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + root.join("/no-bus"));
    daemon.setProcessEnvironment(environment);
    daemon.start(DAEMON_PROGRAM, {"--root", root.path()});
    struct stat status {
    };
    EXPECT_TRUE(waitUntil([&] {
        return ::stat(qPrintable(EventProcesses::folder()), &status) == 0 &&
               (status.st_mode & 07777) == 01777;
    }));
    daemon.kill();
    daemon.waitForFinished();
}

// ---- the admin tool

TEST_F(HostPrograms, AdminToolPrintsTheReply)
{
    const Host host = start();
    const auto reply = send({"Host", "Host", "echo", "--parameter", "----=some text", "--parameter",
                             "numb=42", "--parameter", "real=0.5", "--parameter", "yes =true", "--parameter",
                             QString::fromUtf8("utxt=日本")});
    EXPECT_EQ(reply.status, 0) << reply.errors;
    for (const char *row : {"KEYWORD  TYPE  VALUE\n", "----     utxt  some text\n", "numb     long  42\n",
                            "real     doub  0.5\n", "yes      bool  1\n", "utxt     utxt  日本\n"})
        EXPECT_THAT(reply.output, HasSubstr(row));
}

TEST_F(HostPrograms, AdminToolAnswersInJSON)
{
    const Host host = start();
    const auto reply = send({"Host", "Host", "echo", "--json", "--parameter", "long:integer=9000000000",
                             "--parameter", "text:string=7", "--parameter", "flag=false"});
    ASSERT_EQ(reply.status, 0) << reply.errors;
    EXPECT_EQ(reply.json()["process"].toInteger(), host->processId());
    const QJsonObject parameters = reply.json()["reply"].toObject();
    EXPECT_EQ(parameters["long"].toInteger(), 9'000'000'000);
    EXPECT_EQ(parameters["text"], "7");
    EXPECT_EQ(parameters["flag"], false);
    EXPECT_EQ(parameters["seid"].toInteger(), static_cast<qint64>(::geteuid()));
}

TEST_F(HostPrograms, AdminToolNeedNotWait)
{
    const Host host = start();
    const auto sent = send({"Host", "Host", "note", "--no-reply", "--parameter", "----=5"});
    EXPECT_EQ(sent.status, 0) << sent.errors;
    EXPECT_EQ(sent.output, QString("Process %1 has the event.\n").arg(host->processId()).toStdString());
    EXPECT_EQ(host->nextHeard(), "5");
    EXPECT_EQ(send({"Host", "Host", "note", "--no-reply", "--json"}).json()["reply"], QJsonValue());
}

TEST_F(HostPrograms, AdminToolTellsWhatWentWrong)
{
    const auto nobody = send({"None", "aevt", "quit"});
    EXPECT_EQ(nobody.status, 1);
    EXPECT_THAT(nobody.errors, HasSubstr("has the signature \"None\". (-600)"));
    const Host host = start();
    const auto late = send({"Host", "Host", "hang", "--timeout", "1"});
    EXPECT_EQ(late.status, 1);
    EXPECT_THAT(late.errors, HasSubstr("did not answer in time. (-1712)"));
    EXPECT_EQ(late.output, "");
}

TEST_F(HostPrograms, AdminToolTellsThatTheProcessHasNoRoom)
{
    const Host host = start();
    const auto peers = takeRoomOf(host);
    const auto refused = send({"Host", "Host", "note", "--timeout", "1"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors, HasSubstr("has no room for the event now. (-907)"));
}

TEST_F(HostPrograms, AdminToolRefusesAWrongCommandLine)
{
    const QList<QStringList> wrong{{"Hos", "Host", "echo"},
                                   {"Host", "Host"},
                                   {"Host", "Host", "echo", "more"},
                                   {"Host", "Host", "echo", "--parameter", "short=1"},
                                   {"Host", "Ho\nt", "echo"},
                                   {"Host", "Host", "echo", "--timeout", "0"},
                                   {"Host", "Host", "echo", "--timeout", "soon"},
                                   {"Host", "Host", "echo", "--lines", "1"}};
    for (const QStringList &arguments : wrong)
        EXPECT_EQ(send(arguments).status, 2) << qPrintable(arguments.join(' '));
    EXPECT_EQ(send({"Host", "Host", "echo", "--user", "no such user"}).status, 1);
}

TEST_F(HostPrograms, AdminToolSendsToTheProcessOfTheUserWhoIsNamed)
{
    const Host mine = start("Host");
    const Host others = start("Host", otherUser());
    const QString user = otherUser();
    const auto toOther = send({"Host", "Host", "echo", "--json", "--user", user});
    ASSERT_EQ(toOther.status, 0) << toOther.errors;
    EXPECT_EQ(toOther.json()["reply"].toObject()["seid"].toInteger(), user.toLongLong())
        << "root has become that user";
    if (::geteuid() == 0) {
        EXPECT_EQ(toOther.json()["process"].toInteger(), others->processId());
        EXPECT_EQ(send({"Host", "Host", "echo", "--json"}).json()["process"].toInteger(), mine->processId());
    }
}

// ---- scripts

TEST_F(HostPrograms, ScriptSendsAnEventAndReadsTheReply)
{
    const Host host = start();
    const auto outcome = script(R"(
        local reply = dozely.sendEvent("Host", "Host", "echo",
            {["----"] = "Zoë", numb = 42, real = 0.5, flag = true, list = {1, "two"}})
        return reply["----"] .. " " .. reply.numb + 1 .. " " .. reply.real .. " " .. tostring(reply.flag) ..
            " " .. reply.list[2] .. " " .. reply.spid)");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(outcome.output, HasSubstr("Zoë 43 0.5 true two "));
}

TEST_F(HostPrograms, ScriptNeedNotWait)
{
    const Host host = start();
    const auto outcome =
        script(R"(return tostring(dozely.sendEvent("Host", "Host", "note", {["----"] = 6}, 0)))");
    EXPECT_EQ(outcome.output, "nil\n") << outcome.errors;
    EXPECT_EQ(host->nextHeard(), "6");
}

TEST_F(HostPrograms, ScriptThatNeedNotWaitIsSoonDoneWithAReceiverThatTakesNothing)
{
    const Host host = start();
    ASSERT_TRUE(signalProcess(host->processId(), SIGSTOP));
    const auto start = std::chrono::steady_clock::now();
    const auto outcome = script(R"(dozely.sendEvent("Host", "Host", "note", {["----"] = 6}, 0))");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15))
        << "two seconds, and room for a busy machine";
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("The process did not answer in time. (-1712)"));
}

TEST_F(HostPrograms, ScriptCanCatchWhatGoesWrong)
{
    const Host host = start();
    const QList<std::pair<QString, std::string>> cases{
        {R"("None", "aevt", "quit")", "No such process runs. (-600)"},
        {R"("Host", "Host", "none")", "The process does not know this event. (-1708)"},
        {R"("Host", "Host", "hang", {}, 0.1)", "The process did not answer in time. (-1712)"},
        {R"("Hos", "Host", "echo")", "the signature has to be a text of four characters"},
        {R"("Host", 1234, "echo")", "the event class has to be a text of four characters"},
        {R"("Host", "Host")", "the event ID has to be a text of four characters"},
        {R"("Host", "Host", "echo", {short = 1})", "\"short\" is no keyword"},
        {R"("Host", "Host", "echo", {1, 2})", "the parameters have to be a table"},
        {R"("Host", "Host", "echo", {}, -1)", "the seconds have to be a number"},
        {R"("Host", "Host", "echo", {}, 31)", "the seconds have to be a number from 0 to 30"},
        {R"("Host", "Host", "echo", {}, "1")", "the seconds have to be a number"}};
    for (const auto &[arguments, sentence] : cases) {
        const auto outcome =
            script(QString("local ok, error = pcall(dozely.sendEvent, %1) return tostring(ok) .. error")
                       .arg(arguments));
        EXPECT_THAT(outcome.output, HasSubstr("false")) << outcome.errors;
        EXPECT_THAT(outcome.output, HasSubstr(sentence));
    }
}
