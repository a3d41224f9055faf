// SPDX-License-Identifier: MIT
//
// "dozely-admin update check" as installed: the real program, transport and lookup, on a machine whose
// network is its own.
#include "DozelyKit/update/UpdateServer.h"
#include "integration/update/TlsServer.h"
#include "unit/update/UpdateFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <unistd.h>

using namespace dozely;

using testing::HasSubstr;
using testing::Not;

class AdminUpdate : public UpdateFixture
{
protected:
    struct Result {
        int status = -1;
        std::string output;
        std::string errors;
        qsizetype requests = -1;
    };

    AdminUpdate()
    {
        // The tool is not root when it logs; on a machine, the daemon has made the file.
        writeFile("/var/log/dozely.log", {});
        QFile::setPermissions(root.join("/var/log/dozely.log"), QFile::Permissions(0x6666));
    }

    /// Runs the tool; the server gives that answer.
    Result run(const QByteArray &answer, const QStringList &arguments = {"update", "check"})
    {
        const QTemporaryDir folder;
        QJsonObject setup = QJsonDocument::fromJson(serverStory({ServerAnswer::ok(answer)})).object();
        setup["network"] = hasNetwork;
        setup["hosts"] =
            knowsServer ? "127.0.0.1 localhost " + UpdateServer::host() + "\n" : "127.0.0.1 localhost\n";
        setup["served"] = isServed;
        QFile file(folder.filePath("setup.json"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QJsonDocument(setup).toJson());
        file.close();

        QStringList command{"--mount", "--net"};
        if (::geteuid() != 0)
            command += {"--user", "--map-current-user", "--keep-caps"};
        command += {PYTHON,          "-B",          PRIVATE_MACHINE, folder.path(),
                    file.fileName(), ADMIN_PROGRAM, "--root",        root.path()};
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start("unshare", command + arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        const QJsonObject seen = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
        const auto text = [&seen](const char *key) {
            return QByteArray::fromBase64(seen[key].toString().toLatin1()).toStdString();
        };
        return {seen["status"].toInt(-1), text("output"), text("errors"), seen["requests"].toArray().size()};
    }

    static QByteArray latest(int number, const QByteArray &name = "3.3",
                             const QByteArray &address = "https://a.example/get?v=3.3")
    {
        return QJsonDocument(QJsonObject{{"Latest Version Number", number},
                                         {"Latest Version String", QString::fromUtf8(name)},
                                         {"Latest Version Download URL", QString::fromUtf8(address)}})
            .toJson();
    }

    bool hasNetwork = true;
    bool knowsServer = true;
    bool isServed = true;
};

TEST_F(AdminUpdate, EndsWithFourAndShowsBothVersionsAndTheAddressWhenThereIsANewerOne)
{
    const Result result = run(latest(42));
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.output, "Installed version:  3.2 (41)\n"
                             "Latest version:     3.3\n"
                             "Address:            https://a.example/get?v=3.3\n");
    EXPECT_EQ(result.errors, "Dozely Admin: There is a newer version.\n");
    EXPECT_EQ(result.requests, 1);
}

TEST_F(AdminUpdate, EndsWithZeroWhenTheInstalledVersionIsTheLatest)
{
    for (const int number : {41, 40}) {
        const Result result = run(latest(number));
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "Installed version:  3.2 (41)\n"
                                 "Latest version:     3.2 (41), up to date\n"
                                 "Address:            https://a.example/get?v=3.3\n");
        EXPECT_EQ(result.errors, "");
    }
}

TEST_F(AdminUpdate, AnswersInJson)
{
    const Result newer = run(latest(42), {"update", "check", "--json"});
    EXPECT_EQ(newer.status, 4);
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(newer.output)).object(),
              (QJsonObject{{"installed", "3.2 (41)"},
                           {"latest", "3.3"},
                           {"isNewer", true},
                           {"address", "https://a.example/get?v=3.3"},
                           {"mayBeOpened", true}}));
    const Result same = run("{}", {"update", "check", "--json"});
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(same.output)).object(),
              (QJsonObject{{"installed", "3.2 (41)"},
                           {"latest", QJsonValue::Null},
                           {"isNewer", false},
                           {"address", QJsonValue::Null},
                           {"mayBeOpened", false}}));
}

TEST_F(AdminUpdate, OffersOnlyHttpsAddresses)
{
    for (const QByteArray address :
         {"http://a.example/get", "file:///etc/passwd", "javascript:alert(1)", "a.example"}) {
        const Result result = run(latest(42, "3.3", address));
        EXPECT_EQ(result.status, 4);
        EXPECT_THAT(result.output, HasSubstr("Address:            not offered, since it is not https: " +
                                             address.toStdString() + "\n"));
    }
    EXPECT_THAT(run(R"({"Latest Version Number": 1})").output,
                HasSubstr("Address:            the server gives none\n"));
}

TEST_F(AdminUpdate, ShowsTheServersTextsWithoutFollowingThem)
{
    const Result result =
        run(latest(42, "3.3\x1b]0;title\x07\n\xe2\x80\xae $(touch /tmp/x) %s", "https://a.example/\xce\xa9"));
    EXPECT_EQ(result.status, 4);
    EXPECT_THAT(
        result.output,
        HasSubstr("Latest version:     3.3\\u001b]0;title\\u0007\\u000a\\u202e $(touch /tmp/x) %s\n"));
    EXPECT_THAT(result.output, HasSubstr("Address:            https://a.example/%CE%A9\n"));
}

TEST_F(AdminUpdate, EndsWithFiveWhenTheAnswerIsNone)
{
    const Result result = run("<html>Sorry</html>");
    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "Dozely Admin: " + UpdateServer::host().toStdString() +
                                 " gave no answer that can be used; the log says why.\n");
    EXPECT_EQ(result.requests, 1);
    ASSERT_EQ(log().size(), 1);
    EXPECT_THAT(log().constFirst().toStdString(),
                testing::StartsWith("The update server's answer is not JSON: "));
}

TEST_F(AdminUpdate, EndsWithFiveWhenTheNameIsUnknown)
{
    knowsServer = false;
    const Result result = run(latest(42));
    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.requests, 0);
    EXPECT_THAT(log(), testing::ElementsAre(
                           QString("The update server \"%1\" cannot be reached.").arg(UpdateServer::host())));
}

TEST_F(AdminUpdate, EndsWithFiveWhenNoRouteLeadsThere)
{
    hasNetwork = false;
    const Result result = run(latest(42));
    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(result.requests, 0);
    EXPECT_THAT(log(), testing::ElementsAre(
                           QString("The update server \"%1\" cannot be reached.").arg(UpdateServer::host())));
}

TEST_F(AdminUpdate, EndsWithFiveWhenNobodyListens)
{
    isServed = false;
    const Result result = run({});
    EXPECT_EQ(result.status, 5);
    ASSERT_EQ(log().size(), 1);
    EXPECT_THAT(log().constFirst().toStdString(), testing::StartsWith("The update server gave no answer: "));
}

TEST_F(AdminUpdate, GoesOnWithoutTheApplication)
{
    QDir(root.join("/Applications")).removeRecursively();
    const Result result = run(latest(42));
    EXPECT_EQ(result.status, 4);
    EXPECT_THAT(result.output, HasSubstr("Installed version:  not known\n"));
    EXPECT_THAT(log(), testing::ElementsAre("The update check leaves out what is not known: versionString."));
}

TEST_F(AdminUpdate, AsksWithoutRootsRights)
{
    isServed = false;
    run({});
    ASSERT_EQ(root.logLines().size(), 1);
    EXPECT_THAT(root.logLines().constFirst().toStdString(),
                testing::ContainsRegex("^\\([0-9]+ - [0-9]+ - [1-9][0-9]* - Admin\\)"));
}

TEST_F(AdminUpdate, HelpNamesItAndItsStatuses)
{
    const Result result = run({}, {"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("update check "));
    EXPECT_THAT(result.output, HasSubstr("update check: 0 up to date; 4 there is a newer version;"));
}

TEST_F(AdminUpdate, TakesNoOtherArguments)
{
    for (const auto &[arguments, complaint] : QList<std::pair<QStringList, const char *>>{
             {{"update"}, "\"update\" needs an argument"},
             {{"update", "now"}, "\"now\" is not check"},
             {{"update", "check", "x"}, "\"update\" takes no argument \"x\""},
             {{"update", "check", "--follow"}, "\"update\" takes no option --follow"}}) {
        const Result result = run(latest(42), arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.errors, HasSubstr(complaint));
        EXPECT_EQ(result.requests, 0);
    }
}
