// SPDX-License-Identifier: MIT
//
// event_host ROOT SIGNATURE IDENTITY
//
// A process of the tests that uses Apple events under that signature. IDENTITY is "as-started", "shut-off"
// for one that takes no connections, as if all were other users', or a user id to change to. Reads one
// command a line from standard input and answers with one line "= ..." on standard output; its handlers
// (HostEvents.h) say "heard ..." besides. Ends with its standard input.
//
//   listen              begins to listen
//   psn SIGNATURE       the number of the first process with the signature
//   send PROCESS ID     sends an event, waits for the reply: the result code
//   tell PROCESS N      sends 'note' with the number and ends: the result code
//   hold                serves nothing until the next line comes
//   series PROCESS N    sends N echoes in a row, each with its own number: how many came back right
//   meet PROCESS SIZE   sends events with so many bytes to a process that does the same (HostEvents::meet)
//   flood PATH N        connects N times to the socket, writing and closing: how often it was shut out
#include "HostEvents.h"

#include "DozelyKit/communication/events/AEReceiver_p.h"
#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/communication/events/ZDRAppleEvent.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "support/BecomeUser.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

using namespace dozely;

namespace
{
OSStatus sendWaiting(const AppleEvent &event, AppleEvent *reply)
{
    return AESend(&event, reply, kAEWaitReply, kAENormalPriority, kAEDefaultTimeout);
}

int series(qint64 process, int count)
{
    int right = 0;
    for (int i = 0; i < count; ++i) {
        AppleEvent event = HostEvents::eventTo(process, HostEvents::echo);
        event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, qint32{i}));
        AppleEvent reply;
        if (sendWaiting(event, &reply) == noErr &&
            reply.parameter(keyDirectObject) == AEDesc::of(typeSInt32, qint32{i}))
            ++right;
    }
    return right;
}

/// Connects without any manners; the times at which the other side closed without having said a word.
int flood(const QByteArray &path, int count)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    const QByteArray noise =
        QByteArray(1, '\0') + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n" + QByteArray(4096, 'x');
    int shutOut = 0;
    for (int i = 0; i < count; ++i) {
        const int stream = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (::connect(stream, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0) {
            ::send(stream, noise.constData(), static_cast<size_t>(noise.size()), MSG_NOSIGNAL);
            char byte = 0;
            shutOut += ::recv(stream, &byte, 1, 0) <= 0 ? 1 : 0; // reset or end: nothing was answered
        }
        ::close(stream);
    }
    return shutOut;
}

QString perform(const QStringList &words, HostEvents &events)
{
    const QString action = words.value(0);
    const qint64 process = words.value(1).toLongLong();
    if (action == "listen") {
        events.listen();
        return NSAppleEventManager::sharedAppleEventManager().isListening() ? "yes" : "no";
    }
    if (action == "psn")
        return QString::number(
            ZDRAppleEvent::psnOfProcessWithSignature(codeOfCharacters(words.value(1)).value_or(0))
                .lowLongOfPSN);
    if (action == "send") {
        AppleEvent reply;
        return QString::number(
            sendWaiting(HostEvents::eventTo(process, codeOfCharacters(words.value(2)).value_or(0)), &reply));
    }
    if (action == "tell") {
        AppleEvent event = HostEvents::eventTo(process, HostEvents::note);
        event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, words.value(2).toInt()));
        AppleEvent reply;
        QCoreApplication::quit();
        return QString::number(sendWaiting(event, &reply));
    }
    if (action == "hold") {
        for (char c = 0; ::read(STDIN_FILENO, &c, 1) == 1 && c != '\n';) {
        }
        return "yes";
    }
    if (action == "series")
        return QString::number(series(process, words.value(2).toInt()));
    if (action == "meet")
        return events.meet(process, words.value(2).toLongLong()) ? "yes" : "no";
    if (action == "flood")
        return QString::number(flood(words.value(1).toUtf8(), words.value(2).toInt()));
    return "unknown command";
}
} // namespace

int main(int argc, char **argv)
{
    const QByteArray identity = argc == 4 ? argv[3] : "";
    const bool isShutOff = identity == "shut-off";
    if (argc != 4 || (!isShutOff && identity != "as-started" && !Identity::becomeUser(identity.toUInt())))
        return 2;
    RootFolder::set(QString::fromUtf8(argv[1]));
    NSProcessInfo::setProcessName("event_host");
    ProcessSignature::set(codeOfCharacters(QString::fromUtf8(argv[2])).value_or(0));
    QCoreApplication application(argc, argv);
    if (isShutOff)
        AEReceiver::shared([](quint32) { return false; });
    HostEvents events;

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
            HostEvents::say("= " + perform(QString::fromUtf8(line).split(' '), events));
        }
    });
    return QCoreApplication::exec();
}
