// SPDX-License-Identifier: MIT
//
// peer_host ROOT PROCESS_NAME IDENTITY
//
// Takes the place of the daemon, an agent or an application in a test. IDENTITY is "as-started", "root"
// (without rights to that, the root of a user namespace), or a user id to change to. Reads one command a line
// from standard input and answers with one line "= ..." on standard output; says "heard NAME" when a
// notification is delivered. Ends with its standard input.
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "support/BecomeUser.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>

using namespace dozely;

namespace
{
const QString sender = QStringLiteral("com.dozely.test");

class RootObject : public QObject, public WDCommunicationProtocol
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool pong() override { return true; }
    NS_REMOTE Q_INVOKABLE QObject *communicationCenter() override
    {
        return WDCommunicationCenter::sharedInstance().get();
    }
};

void say(const QString &line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

class Observer : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void hear(const NSNotification &notification)
    {
        say("heard " + notification.name());
        if (notification.name() == "Hang")
            ::pause(); // until somebody kills this process
        if (notification.name() == "Die")
            ::_exit(1);
    }
};

QString perform(const QStringList &words)
{
    const auto center = WDCommunicationCenter::sharedInstance();
    const QString action = words.value(0);
    const QString target = words.value(1);
    const quint32 userId = words.value(2).toUInt();
    if (action == "touch") {
        ZDRUnixSocketPort::initAsClientWithName("touch");
        return "yes";
    }
    if (action == "publish") {
        center->createServerConnection();
        return center->connection() ? "yes" : "no";
    }
    bool answer = false;
    if (action == "ping" && target == "daemon")
        answer = center->pingDaemon();
    else if (action == "ping" && target == "agent")
        answer = center->pingAgentOfUser(userId);
    else if (action == "ping")
        answer = center->pingPrefPaneOfUser(userId);
    else if (action == "unlock" && target == "agent")
        center->unlockAgentAccessForUser(userId);
    else if (action == "post") {
        const NSNotification notification(words.value(3), sender, {{"Schedule Bundle Path", "/p"}});
        if (target == "daemon")
            answer = center->postNotificationToDaemon(notification);
        else if (target == "agent")
            answer = center->postNotificationToAgentOfUser(notification, userId);
        else
            answer = center->postNotificationToPrefPaneOfUser(notification, userId);
    } else
        return "unknown command";
    return answer ? "yes" : "no";
}

void obey(const QString &command)
{
    try {
        say("= " + perform(command.split(' ')));
    } catch (const NSException &exception) {
        say("= raised " + exception.name());
    }
}

bool takeIdentity(const QByteArray &identity)
{
    if (identity == "as-started")
        return true;
    return identity == "root" ? Identity::becomeRoot() : Identity::becomeUser(identity.toUInt());
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 4 || !takeIdentity(argv[3]))
        return 2;
    RootFolder::set(QString::fromUtf8(argv[1]));
    NSProcessInfo::setProcessName(QString::fromUtf8(argv[2]));
    QCoreApplication application(argc, argv);

    RootObject root;
    const auto observer = std::make_shared<Observer>();
    for (const char *name : {"Act", "Hang", "Die"})
        WDNotificationCenter::defaultCenter()->addObserver(observer, "hear", name, sender);
    WDCommunicationCenter::sharedInstance()->setObserver(&root);

    QByteArray pending;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
        char buffer[512];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count <= 0) {
            QCoreApplication::quit();
            return;
        }
        pending.append(buffer, count);
        for (qsizetype end = pending.indexOf('\n'); end >= 0; end = pending.indexOf('\n')) {
            const QByteArray line = pending.left(end);
            pending.remove(0, end + 1);
            obey(QString::fromUtf8(line));
        }
    });
    return QCoreApplication::exec();
}

#include "peer_host.moc"
