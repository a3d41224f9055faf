// SPDX-License-Identifier: MIT
//
// One Apple event with its reply, on a fresh connection and on a kept one, against the same bytes directly on
// sd-bus and bare exchanges over a Unix socket. Each server is a process of its own.
#include "BareSocket.h"
#include "Bench.h"
#include "DirectBus.h"
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

// ---- directly on sd-bus: the kit's bytes each way

void answerDirect(sd_bus_message *call)
{
    const void *event = nullptr;
    size_t size = 0;
    int priority = 0;
    sd_bus_message_read_array(call, 'y', &event, &size);
    sd_bus_message_read(call, "i", &priority);
    static const QByteArray answer = [] {
        AppleEvent reply;
        AECreateAppleEvent(kCoreEventClass, kAEAnswer, AEDesc(), kAutoGenerateReturnID, kAnyTransactionID,
                           &reply);
        const qint32 value = 42;
        AEPutParamPtr(&reply, keyDirectObject, typeSInt32, &value, sizeof value);
        QByteArray bytes;
        reply.flatten(&bytes);
        return QByteArray(sizeof(OSStatus), '\0') + bytes;
    }();
    sd_bus_message *reply = nullptr;
    sd_bus_message_new_method_return(call, &reply);
    sd_bus_message_append_array(reply, 'y', answer.constData(), static_cast<size_t>(answer.size()));
    sd_bus_send(nullptr, reply, nullptr);
    sd_bus_message_unref(reply);
}

void sendDirect(DirectBus &bus, const QByteArray &event)
{
    const auto call = bus.newCall("/root", "handleAppleEvent");
    sd_bus_message_append_array(call.get(), 'y', event.constData(), static_cast<size_t>(event.size()));
    sd_bus_message_append(call.get(), "i", 0);
    const auto reply = bus.call(call);
    const void *bytes = nullptr;
    size_t size = 0;
    if (sd_bus_message_read_array(reply.get(), 'y', &bytes, &size) < 0 || size == 0)
        fail("the event was not answered");
}
} // namespace

int main(int argc, char **argv)
{
    QTemporaryDir folder("/tmp/dz-XXXXXX");
    RootFolder::set(folder.path());
    const sockaddr_un address = addressOf(folder.filePath("bare").toUtf8());
    const sockaddr_un directAddress = addressOf(folder.filePath("direct").toUtf8());
    const int listening = listenAt(address);
    const int listeningDirect = listenAt(directAddress);
    const std::vector<pid_t> servers{startServer([&] { serveBare(listening); }), startServer([&] {
                                         serveDirect(argc, argv, listeningDirect, answerDirect);
                                     }),
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
    const auto keptBus = connectDirect(directAddress);
    QByteArray flat;
    eventTo(receiver).flatten(&flat);

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
    const auto freshDirect = [&] { sendDirect(*connectDirect(directAddress), flat); };
    const auto keptDirect = [&] { sendDirect(*keptBus, flat); };
    const auto keptEvent = [&] { sendEvent(receiver); };
    for (const Placement &placement : Placement::all()) {
        const auto take = [placement, &servers] { placement.take(servers); };
        const QString where = ", " + placement.name;
        bench.add("bare exchange, fresh" + where, freshBare, take);
        bench.add("direct sd-bus, fresh" + where, freshDirect, take);
        bench.add("request, fresh" + where, freshRequest, take);
        bench.add("event, fresh" + where, freshEvent, take);
        bench.add("bare exchange, kept" + where, keptBare, take);
        bench.add("direct sd-bus, kept" + where, keptDirect, take);
        bench.add("event, kept" + where, keptEvent, take);
        for (const QString way : {", fresh", ", kept"}) {
            reaches.emplace_back("event" + way + where, "direct sd-bus" + way + where, 1.15);
            reaches.emplace_back("event" + way + where, "bare exchange" + way + where,
                                 way == ", kept" ? 6.0 : 3.0);
        }
    }
    bench.run(20, 200);
    bench.print("one Apple event with its reply", reaches);
    endServers(servers);
    return 0;
}

#include "event_bench.moc"
