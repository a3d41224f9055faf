// SPDX-License-Identifier: MIT
//
// A check for updates, lookup and routing table included, against the same exchange by the curl command line:
// in this process, and in one that is started for it as curl is. The server is a process on this machine with
// real TLS.
//
// "update_bench --once ROOT AUTHORITY SERVER" is that process.
#include "Bench.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/network/HttpClient.h"
#include "DozelyKit/system/network/Reachability.h"
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"
#include "DozelyKit/system/network/linux/RouteReachability_p.h"
#include "DozelyKit/update/UpdateServer.h"
#include "DozelyKit/update/WDUpdateChecker.h"
#include "integration/update/TlsServer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

using namespace dozely;

namespace
{
void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "update_bench: %s\n", what);
    std::exit(1);
}

/// The server's name is reserved and leads nowhere: this looks up the machine that runs it instead.
class LookupOfThisMachine : public Reachability
{
public:
    std::optional<quint32> flagsOfHost(const QString &) override { return m_lookup.flagsOfHost("localhost"); }

private:
    RouteReachability m_lookup;
};

void writeList(const QString &path, const QVariantMap &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const QByteArray data = PropertyList::toData(content, PropertyList::Format::Xml);
    require(file.open(QIODevice::WriteOnly) && file.write(data) == data.size(), "no scratch system");
}

/// Runs a program whose output nobody wants to the end, with as little around it as there can be.
int run(const std::vector<std::string> &command)
{
    std::vector<char *> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string &word : command)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int problem =
        ::posix_spawnp(&child, arguments.front(), &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    if (problem != 0 || ::waitpid(child, &status, 0) != child)
        return -1;
    return status;
}
/// The one object that asks, in a system below that folder, of a server that the transport is led to.
std::shared_ptr<WDUpdateChecker> checkerFor(const QString &root, const QString &authority,
                                            const QByteArray &server)
{
    RootFolder::set(root);
    NSProcessInfo::setProcessName("Dozely Admin");
    CurlHttpClient::Options options;
    options.certificateAuthorities = authority;
    options.connectTo = server;
    Port<HttpClient>::current() = std::make_shared<CurlHttpClient>(options);
    Port<Reachability>::current() = std::make_shared<LookupOfThisMachine>();
    return WDUpdateChecker::sharedInstance();
}
} // namespace

int main(int argc, char **argv)
{
    if (argc == 5 && QByteArray(argv[1]) == "--once")
        return checkerFor(argv[2], argv[3], argv[4])->updateLatestVersionDictionary() ? 0 : 1;
    for (const char *name : {"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"})
        qunsetenv(name);
    const QTemporaryDir folder("/tmp/dz-XXXXXX");
    QDir().mkpath(folder.filePath("var/log"));
    writeList(folder.filePath("Applications/Dozely.app/Contents/Info.plist"),
              {{"CFBundleShortVersionString", "3.2"}, {"CFBundleVersion", "41"}});
    writeList(folder.filePath("System/Library/CoreServices/SystemVersion.plist"),
              {{"ProductVersion", "12.5"}});

    TlsServer server({ServerAnswer::ok(
        R"({"Latest Version Number": 42, "Latest Version String": "3.3", "Latest Version Download URL": "https://a.example/"})")});
    require(server.isRunning(), "the server does not run");
    const auto checker = checkerFor(folder.path(), server.authority(), server.address());
    const std::string body =
        "{\n    \"schedulesCount\": 0,\n    \"systemVersion\": \"12.5\",\n    \"version\": 41,\n"
        "    \"versionString\": \"3.2\"\n}\n";
    const std::vector<std::string> command{"curl",
                                           "--silent",
                                           "--fail",
                                           "--http1.1",
                                           "--location",
                                           "--cacert",
                                           server.authority().toStdString(),
                                           "--connect-to",
                                           "::" + server.address().toStdString(),
                                           "--header",
                                           "Content-Type: application/x-www-form-urlencoded charset=utf-8",
                                           "--data-binary",
                                           body,
                                           UpdateServer::address().toString().toStdString()};
    const std::vector<std::string> once{argv[0], "--once", folder.path().toStdString(),
                                        server.authority().toStdString(), server.address().toStdString()};
    Bench bench;
    bench.add("curl command", [&] { require(run(command) == 0, "curl failed"); });
    bench.add("check", [&] { require(checker->updateLatestVersionDictionary(), "the check failed"); });
    bench.add("check by a process", [&] { require(run(once) == 0, "the process failed"); });
    bench.run(20, 5);
    const auto seen = server.end();
    require(seen.isComplete && seen.requests.size() == 315, "requests are missing"); // 21 rounds of 5 of each
    require(seen.requests.constFirst().endsWith(QByteArray::fromStdString(body)) &&
                seen.requests.constLast().endsWith(QByteArray::fromStdString(body)),
            "they did not ask the same");
    // The process has a figure but nothing to reach: most of it is starting a program that is linked with Qt.
    bench.print("a check for updates", {{"check", "curl command", 1.3}});
    return 0;
}
