// SPDX-License-Identifier: MIT
#include "integration/hosts/HostSystem.h"

#include "support/Identity.h"

#include <algorithm>
#include <csignal>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace dozely;

namespace
{
const QString daemonProgram = "/usr/sbin/dozelyd";
const QString agentProgram =
    "/Applications/Dozely.app/Contents/Helpers/Dozely Agent.app/Contents/Linux/Dozely Agent";
const QString performerProgram = QString(LIBEXEC_FOLDER) + "/dozely-performer";
const QString sessionPerformerProgram = QString(LIBEXEC_FOLDER) + "/dozely-session-performer";
const QString dyingAgentProgram = "/usr/lib/dying_agent";
const QString posterProgram = "/usr/lib/order_poster";
const QString library = "/usr/lib/libDozelyKit.so.0";
const QString interfaceLibrary = "/usr/lib/libDozelyInterface.so.0";
const QString logind = "org.freedesktop.login1";
constexpr rlim_t usualDescriptors = 1024; // what a program gets from most service managers
constexpr int patience = 60'000;          // milliseconds; only bounds a failing test
} // namespace

HostSystem::HostSystem()
{
    // Copies, since the console user need not be able to read the build folder.
    copyProgram(DAEMON_PROGRAM, daemonProgram);
    copyProgram(AGENT_PROGRAM, agentProgram);
    copyProgram(PERFORMER_PROGRAM, performerProgram);
    copyProgram(SESSION_PERFORMER_PROGRAM, sessionPerformerProgram);
    copyProgram(DYING_AGENT_PROGRAM, dyingAgentProgram);
    copyProgram(POSTER_PROGRAM, posterProgram);
    copyProgram(KIT_LIBRARY, library);
    copyProgram(QFileInfo(KIT_LIBRARY).path() + "/" + QFileInfo(interfaceLibrary).fileName(),
                interfaceLibrary);
    const QDir modules(QFileInfo(KIT_LIBRARY).path() + "/dozely");
    for (const QString &module : modules.entryList(QDir::Files))
        copyProgram(modules.filePath(module), "/usr/lib/dozely/" + module);
    makeProbe();
    root.makeFolder(runtimeFolder(), 0700);
    if (::geteuid() == 0) {
        EXPECT_EQ(::chown(qPrintable(root.join(runtimeFolder())), agentUser(), agentUser()), 0);
    }
    if (::geteuid() != 0)
        root.makeSocketFolder(); // only a root daemon makes it itself
    startLogind();
    switchTo(agentUser());
}

HostSystem::~HostSystem()
{
    for (auto *process : {&agent, &daemon}) {
        if (*process)
            kill(*process);
    }
    if (HasFailure())
        std::fprintf(stderr, "The log:\n%s", root.logContent().constData());
}

quint32 HostSystem::agentUser()
{
    return Identity::ordinaryUserHere();
}

QString HostSystem::runtimeFolder()
{
    return QString("/run/user/%1").arg(agentUser());
}

void HostSystem::copyProgram(const QString &from, const QString &fixedPath) const
{
    root.makeFolder(QFileInfo(fixedPath).path());
    ASSERT_TRUE(QFile::copy(from, root.join(fixedPath))) << from.toStdString();
    ASSERT_EQ(::chmod(qPrintable(root.join(fixedPath)), 0755), 0);
}

void HostSystem::startLogind()
{
    ASSERT_TRUE(bus.isRunning());
    ASSERT_TRUE(bus.startMock("logind", logind));
}

void HostSystem::switchTo(quint32 user)
{
    // The latest session of the seat is the active one.
    ASSERT_TRUE(
        bus.call(logind, "/org/freedesktop/login1", "org.freedesktop.DBus.Mock.AddSession",
                 {QString("c%1").arg(++m_sessions), "seat0", QString::number(user), "somebody", "true"}));
}

std::unique_ptr<QProcess> HostSystem::start(const QString &program, const QStringList &arguments,
                                            std::optional<quint32> user, const QString &preloaded)
{
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LD_LIBRARY_PATH", root.join(QFileInfo(library).path()));
    environment.insert("XDG_RUNTIME_DIR", root.join(runtimeFolder()));
    if (!preloaded.isEmpty()) {
        environment.insert("LD_PRELOAD", preloaded);
        // The address sanitizer's own library is not the first then, which it refuses unless told.
        environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":verify_asan_link_order=0");
    }
    process->setProcessEnvironment(environment);
    process->setProcessChannelMode(QProcess::SeparateChannels);
    process->setChildProcessModifier([user] {
        rlimit limit{};
        ::getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = std::min<rlim_t>(usualDescriptors, limit.rlim_max);
        if (::setrlimit(RLIMIT_NOFILE, &limit) != 0 || (user && !Identity::becomeUser(*user)))
            ::_exit(99);
    });
    process->start(root.join(program), arguments);
    return process;
}

void HostSystem::startDaemon()
{
    const qsizetype starts = countOf("Schedules: ");
    daemon = start(daemonProgram, {"--root", root.path()}, {});
    // The socket file of a daemon that was killed is still there, but nobody listens.
    ASSERT_TRUE(waitUntil([this] { return isListening(socketPath("dozelyd")); }));
    // It listens before it has read its record and its schedules.
    ASSERT_TRUE(waitUntil([&] { return countOf("Schedules: ") > starts; }));
}

void HostSystem::startAgent(quint32 user)
{
    agent = start(agentProgram, {"--root", root.path()}, user);
    ASSERT_TRUE(waitUntil([&] { return isListening(socketPath(QString("Dozely Agent.%1").arg(user))); }));
}

void HostSystem::startDyingAgent()
{
    agent = start(dyingAgentProgram, {root.path()}, agentUser());
    ASSERT_TRUE(waitUntil([this] { return isListening(agentSocket()); }));
}

int HostSystem::endOf(std::unique_ptr<QProcess> &process)
{
    process->terminate();
    if (!waitUntil([&] { return process->state() == QProcess::NotRunning; }))
        return -1;
    const int status = process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1;
    process.reset();
    return status;
}

void HostSystem::kill(std::unique_ptr<QProcess> &process)
{
    process->kill();
    process->waitForFinished(patience);
    process.reset();
}

HostSystem::Ended HostSystem::run(const QString &program, const QStringList &arguments,
                                  const QString &preloaded)
{
    const auto process = start(program, arguments, {}, preloaded);
    const bool ended = waitUntil([&] { return process->state() == QProcess::NotRunning; });
    return {ended && process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1,
            process->readAllStandardError(), process->readAllStandardOutput()};
}

bool HostSystem::postAsAgentUser(const QString &target, const NSNotification &order)
{
    return postAs(agentUser(), target, order);
}

std::unique_ptr<QProcess> HostSystem::startPostAs(quint32 user, const QString &target,
                                                  const NSNotification &order,
                                                  const std::function<void()> &before)
{
    auto process = start(posterProgram, {root.path(), target, order.name(), order.object().toString()}, user);
    if (before) {
        EXPECT_TRUE(waitUntil([&] { return process->canReadLine(); }));
        before();
    }
    process->write(PropertyList::toData(order.userInfo(), PropertyList::Format::Xml));
    process->closeWriteChannel();
    return process;
}

bool HostSystem::postAs(quint32 user, const QString &target, const NSNotification &order)
{
    const auto process = startPostAs(user, target, order);
    return waitUntil([&] { return process->state() == QProcess::NotRunning; }) &&
           process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0;
}

QDateTime HostSystem::soon()
{
    return QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch() + 2, Qt::UTC);
}

QVariantMap HostSystem::probeEntry(const QString &identifier, QVariantMap parameters,
                                   const QDateTime &date) const
{
    parameters.insert("Text", identifier);
    return changed(changed(entry(identifier, date), "Parameters", parameters), "Owner",
                   static_cast<qint64>(agentUser()));
}

testing::AssertionResult HostSystem::logs(const QString &part, std::chrono::seconds limit) const
{
    if (waitUntil([&] { return countOf(part) > 0; }, limit))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "no line holds \"" << part.toStdString() << "\"";
}

qsizetype HostSystem::countOf(const QString &part) const
{
    return root.logLines().filter(part).size();
}

testing::AssertionResult HostSystem::logsInOrder(const QStringList &parts) const
{
    const QStringList lines = root.logLines();
    qsizetype from = 0;
    for (const QString &part : parts) {
        while (from < lines.size() && !lines[from].contains(part))
            ++from;
        if (from++ >= lines.size())
            return testing::AssertionFailure() << "not there, or not in this place: " << part.toStdString();
    }
    return testing::AssertionSuccess();
}

QString HostSystem::socketPath(const QString &name) const
{
    return root.join("/private/var/tmp/com.dozely/" + name);
}

QString HostSystem::agentSocket() const
{
    return socketPath(QString("Dozely Agent.%1").arg(agentUser()));
}

bool HostSystem::isListening(const QString &path)
{
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.toUtf8().constData(), sizeof address.sun_path);
    const bool listening =
        ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    ::close(descriptor);
    return listening;
}
