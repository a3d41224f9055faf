// SPDX-License-Identifier: MIT
//
// One Apple event with its reply, on a fresh connection and on a kept one, against bare exchanges over a Unix
// socket. Each server is a process of its own.
#include "Bench.h"

#include "platform/AEManager.h"
#include "platform/AEProcesses.h"
#include "platform/AESender_p.h"
#include "platform/NSAppleEventDescriptor.h"
#include "platform/NSAppleEventManager.h"
#include "platform/NSConnection.h"
#include "platform/NSDistantObject.h"
#include "platform/NSSocketPort.h"
#include "platform/Platform.h"
#include "platform/ProcessSerialNumber.h"
#include "platform/RootFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstring>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr size_t exchangeSize = 300; // about what one of the kit's messages holds
constexpr AEEventClass benchClass = fourCharCode("Bnch");
constexpr AEEventID benchID = fourCharCode("evnt");

[[noreturn]] void fail(const char *what)
{
    std::perror(what);
    std::exit(1);
}

class Receiver : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void answer(const std::shared_ptr<NSAppleEventDescriptor> &event,
                            const std::shared_ptr<NSAppleEventDescriptor> &reply)
    {
        reply->setParamDescriptorForKeyword(event->paramDescriptorForKeyword(keyDirectObject),
                                            keyDirectObject);
    }
};

/// Starts a server process, which ends with this one.
template<class Serve>
pid_t startServer(Serve serve)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        serve();
        ::_exit(0);
    }
    return child;
}

// ---- bare socket

void transfer(int descriptor, bool sending)
{
    static char buffer[exchangeSize];
    for (size_t done = 0; done < exchangeSize;) {
        const ssize_t n = sending ? ::send(descriptor, buffer + done, exchangeSize - done, MSG_NOSIGNAL)
                                  : ::recv(descriptor, buffer + done, exchangeSize - done, 0);
        if (n <= 0)
            return;
        done += static_cast<size_t>(n);
    }
}

void serveBare(int listening)
{
    std::vector<pollfd> watched{{listening, POLLIN, 0}};
    for (;;) {
        ::poll(watched.data(), watched.size(), -1);
        for (size_t i = watched.size(); i-- > 1;) {
            if (!watched[i].revents)
                continue;
            char byte = 0;
            if (::recv(watched[i].fd, &byte, 1, MSG_PEEK) <= 0) {
                ::close(watched[i].fd);
                watched.erase(watched.begin() + static_cast<std::ptrdiff_t>(i));
                continue;
            }
            transfer(watched[i].fd, false);
            transfer(watched[i].fd, true);
        }
        if (watched[0].revents)
            watched.push_back({::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC), POLLIN, 0});
    }
}

int connectBare(const sockaddr_un &address)
{
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        fail("connect");
    return descriptor;
}

void exchangeBare(int descriptor)
{
    transfer(descriptor, true);
    transfer(descriptor, false);
}

// ---- through the kit

void serveEvents(int argc, char **argv)
{
    qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    ProcessSignature::set(fourCharCode("Bnch"));
    Receiver receiver;
    NSAppleEventManager::sharedAppleEventManager().setEventHandlerForEventClass(&receiver, "answer",
                                                                                benchClass, benchID);
    QCoreApplication::exec();
}

AppleEvent eventTo(const ProcessSerialNumber &number)
{
    AEDesc address;
    AECreateDesc(typeProcessSerialNumber, &number, sizeof number, &address);
    AppleEvent event;
    AECreateAppleEvent(benchClass, benchID, address, kAutoGenerateReturnID, kAnyTransactionID, &event);
    const qint32 value = 42;
    AEPutParamPtr(&event, keyDirectObject, typeSInt32, &value, sizeof value);
    AEPutParamPtr(&event, fourCharCode("text"), typeText, "some text of usual length", 25);
    return event;
}

void sendEvent(const ProcessSerialNumber &number)
{
    const AppleEvent event = eventTo(number);
    AppleEvent reply;
    if (AESend(&event, &reply, kAEWaitReply, kAENormalPriority, kAEDefaultTimeout) != noErr ||
        reply.parameter(keyDirectObject) != event.parameter(keyDirectObject))
        fail("the event was not answered");
}
} // namespace

int main(int argc, char **argv)
{
    QTemporaryDir folder("/tmp/dz-XXXXXX");
    RootFolder::set(folder.path());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, folder.filePath("bare").toUtf8().constData(), sizeof address.sun_path);
    const int listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::bind(listening, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 ||
        ::listen(listening, 128) != 0)
        fail("listen");
    const std::vector<pid_t> servers{startServer([&] { serveBare(listening); }),
                                     startServer([&] { serveEvents(argc, argv); })};

    qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    ProcessSerialNumber receiver;
    for (int i = 0; GetNextProcess(&receiver) != noErr; ++i) {
        ::usleep(1000);
        if (i == 5000)
            fail("the receiver cannot be found");
    }
    const int kept = connectBare(address);

    Bench bench;
    bench.add("bare exchange, fresh", [&] {
        const int descriptor = connectBare(address);
        exchangeBare(descriptor);
        ::close(descriptor);
    });
    // What the layer below takes for one request on a connection of its own.
    bench.add("request, fresh", [&] {
        AEProcesses::Process process;
        const auto port =
            Platform::current().aeProcesses->portOf(static_cast<qint32>(receiver.lowLongOfPSN), &process);
        if (!NSConnection::connectionWithReceivePortSendPort(nullptr, port)->rootProxy())
            fail("the request was not answered");
    });
    bench.add("event, fresh", [&] {
        AESender::forgetStreams();
        sendEvent(receiver);
    });
    bench.add("bare exchange, kept", [&] { exchangeBare(kept); });
    bench.add("event, kept", [&] { sendEvent(receiver); });
    bench.run(20, 200);
    bench.print("one Apple event with its reply",
                {{"event, fresh", "bare exchange, fresh", 3.0}, {"event, kept", "bare exchange, kept", 6.0}});
    for (const pid_t server : servers)
        ::kill(server, SIGKILL);
    while (::wait(nullptr) > 0) {
    }
    return 0;
}

#include "event_bench.moc"
