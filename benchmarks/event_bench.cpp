// SPDX-License-Identifier: MIT
//
// One Apple event with its reply, on a fresh connection and on a kept one, against bare exchanges over a Unix
// socket. Each server is a process of its own.
#include "BareSocket.h"
#include "Bench.h"
#include "Placement.h"

#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/communication/events/AESender_p.h"
#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"
#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace dozely;

namespace
{
constexpr AEEventClass benchClass = fourCharCode("Bnch");
constexpr AEEventID benchID = fourCharCode("evnt");

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
    std::vector<std::tuple<QString, QString, double>> reaches;
    const auto freshBare = [&] {
        const int descriptor = connectBare(address);
        exchangeBare(descriptor);
        ::close(descriptor);
    };
    // What the layer below takes for one request on a connection of its own.
    const auto freshRequest = [&] {
        AEProcesses::Process process;
        const auto port =
            Port<AEProcesses>::current()->portOf(static_cast<qint32>(receiver.lowLongOfPSN), &process);
        if (!NSConnection::connectionWithReceivePortSendPort(nullptr, port)->rootProxy())
            fail("the request was not answered");
    };
    const auto freshEvent = [&] {
        AESender::forgetStreams();
        sendEvent(receiver);
    };
    const auto keptBare = [&] { exchangeBare(kept); };
    const auto keptEvent = [&] { sendEvent(receiver); };
    for (const Placement &placement : Placement::all()) {
        const auto take = [placement, &servers] { placement.take(servers); };
        const QString where = ", " + placement.name;
        bench.add("bare exchange, fresh" + where, freshBare, take);
        bench.add("request, fresh" + where, freshRequest, take);
        bench.add("event, fresh" + where, freshEvent, take);
        bench.add("bare exchange, kept" + where, keptBare, take);
        bench.add("event, kept" + where, keptEvent, take);
        reaches.emplace_back("event, fresh" + where, "bare exchange, fresh" + where, 3.0);
        reaches.emplace_back("event, kept" + where, "bare exchange, kept" + where, 6.0);
    }
    bench.run(20, 200);
    bench.print("one Apple event with its reply", reaches);
    for (const pid_t server : servers)
        ::kill(server, SIGKILL);
    while (::wait(nullptr) > 0) {
    }
    return 0;
}

#include "event_bench.moc"
