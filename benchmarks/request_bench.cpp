// SPDX-License-Identifier: MIT
//
// One complete request, fresh connection, post of ten keys: through the kit, as a bare exchange over a Unix
// socket, directly on sd-bus, and through a dbus-daemon. Each server is a process of its own.
#include "BareSocket.h"
#include "Bench.h"
#include "DirectBus.h"
#include "Placement.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <cstring>
#include <unistd.h>

using namespace dozely;

namespace
{
constexpr const char *interface = "com.dozely.Bench";

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

// ---- bare socket

void requestBare(const QByteArray &path)
{
    const int descriptor = connectBare(addressOf(path));
    for (int i = 0; i < 3; ++i) { // root object, centre, post
        exchangeBare(descriptor);
    }
    ::close(descriptor);
}

// ---- what sd-bus carries, with and without a dbus-daemon

void answerCall(sd_bus_message *call)
{
    const char *const member = sd_bus_message_get_member(call);
    if (member && std::strcmp(member, "postNotification") == 0)
        sd_bus_reply_method_return(call, "b", 1);
    else
        sd_bus_reply_method_return(call, "o", "/object/1");
}

void appendTenKeys(sd_bus_message *message)
{
    const unsigned char data[16] = {};
    sd_bus_message_append(message, "ss", "UserAgentMustActEvent", "com.dozely.UserAgent");
    sd_bus_message_open_container(message, 'a', "{sv}");
    sd_bus_message_append(message, "{sv}{sv}{sv}{sv}", "text", "s", "some text of usual length", "number",
                          "i", 7, "truth", "b", 1, "fraction", "d", 0.25);
    sd_bus_message_append(message, "{sv}{sv}{sv}", "large", "x", int64_t{9'000'000'000}, "date", "(xis)",
                          int64_t{1789000000123}, 3600, "Europe/Paris", "path", "s",
                          "/Library/Application Support");
    sd_bus_message_open_container(message, 'e', "sv");
    sd_bus_message_append_basic(message, 's', "data");
    sd_bus_message_open_container(message, 'v', "ay");
    sd_bus_message_append_array(message, 'y', data, sizeof data);
    sd_bus_message_close_container(message);
    sd_bus_message_close_container(message);
    sd_bus_message_append(message, "{sv}{sv}", "list", "av", 2, "s", "alpha", "s", "beta", "nested", "a{sv}",
                          1, "a", "i", 1);
    sd_bus_message_close_container(message);
}

// ---- directly on sd-bus

void requestDirect(const sockaddr_un &address)
{
    const auto bus = connectDirect(address);
    for (const char *member : {"rootObject", "communicationCenter", "postNotification"}) {
        const auto call = bus->newCall("/object/1", member);
        if (std::strcmp(member, "postNotification") == 0)
            appendTenKeys(call.get());
        bus->call(call);
    }
}

// ---- through a dbus-daemon

sd_bus *openBus(const QByteArray &address)
{
    sd_bus *bus = nullptr;
    if (sd_bus_new(&bus) < 0 || sd_bus_set_address(bus, address.constData()) < 0 ||
        sd_bus_set_bus_client(bus, 1) < 0 || sd_bus_start(bus) < 0)
        fail("bus");
    return bus;
}

void serveBus(const QByteArray &address)
{
    sd_bus *const bus = openBus(address);
    sd_bus_request_name(bus, interface, 0);
    for (;;) {
        sd_bus_message *message = nullptr;
        if (sd_bus_process(bus, &message) == 0)
            sd_bus_wait(bus, UINT64_MAX);
        if (!message)
            continue;
        const char *const member = sd_bus_message_get_member(message);
        if (member && std::strcmp(member, "NameAcquired") != 0)
            answerCall(message);
        sd_bus_message_unref(message);
    }
}

void requestBus(const QByteArray &address)
{
    sd_bus *const bus = openBus(address);
    for (const char *member : {"rootObject", "communicationCenter", "postNotification"}) {
        sd_bus_message *call = nullptr;
        sd_bus_message *reply = nullptr;
        sd_bus_message_new_method_call(bus, &call, interface, "/object/1", interface, member);
        if (std::strcmp(member, "postNotification") == 0)
            appendTenKeys(call);
        if (sd_bus_call(bus, call, 0, nullptr, &reply) < 0)
            fail(member);
        sd_bus_message_unref(reply);
        sd_bus_message_unref(call);
    }
    sd_bus_flush_close_unref(bus);
}

// ---- through the kit

void serveKit(int argc, char **argv)
{
    qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    NSProcessInfo::setProcessName("dozelyd");
    RootObject root;
    WDCommunicationCenter::sharedInstance()->setObserver(&root);
    WDCommunicationCenter::sharedInstance()->createServerConnection();
    application.exec();
}

const NSNotification &tenKeys()
{
    static const NSNotification notification(
        "UserAgentMustActEvent", "com.dozely.UserAgent",
        {{"text", "some text of usual length"},
         {"number", 7},
         {"truth", true},
         {"fraction", 0.25},
         {"large", 9'000'000'000LL},
         {"date", QDateTime({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris"))},
         {"path", "/Library/Application Support"},
         {"data", QByteArray(16, '\0')},
         {"list", QVariantList{"alpha", "beta"}},
         {"nested", QVariantMap{{"a", 1}}}});
    return notification;
}

void waitFor(const QString &path)
{
    for (int i = 0; i < 5000 && !QFile::exists(path); ++i)
        ::usleep(1000);
}
} // namespace

int main(int argc, char **argv)
{
    // A root process would clear the socket folder of the server.
    if (::geteuid() == 0 && ::setresuid(65534, 65534, 65534) != 0)
        fail("setresuid");
    QTemporaryDir folder("/tmp/dz-XXXXXX");
    RootFolder::set(folder.path());
    QDir().mkpath(folder.filePath("private/var/tmp/com.dozely"));
    QDir().mkpath(folder.filePath("var/log"));
    const QByteArray barePath = folder.filePath("bare").toUtf8();
    const QByteArray busPath = folder.filePath("bus").toUtf8();
    const QByteArray busAddress = "unix:path=" + busPath;

    const sockaddr_un directAddress = addressOf(folder.filePath("direct").toUtf8());
    const int listening = listenAt(addressOf(barePath));
    const int listeningDirect = listenAt(directAddress);

    std::vector<pid_t> servers;
    servers.push_back(startServer([&] { serveBare(listening); }));
    servers.push_back(startServer([&] { serveDirect(argc, argv, listeningDirect, answerCall); }));
    servers.push_back(startServer([&] {
        ::execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile", "--address",
                 busAddress.constData(), nullptr);
        fail("dbus-daemon");
    }));
    waitFor(QString::fromUtf8(busPath));
    servers.push_back(startServer([&] { serveBus(busAddress); }));
    servers.push_back(startServer([&] { serveKit(argc, argv); }));
    waitFor(folder.filePath("private/var/tmp/com.dozely/dozelyd"));

    qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    NSProcessInfo::setProcessName("bench");
    RootObject root;
    const auto center = WDCommunicationCenter::sharedInstance();
    center->setObserver(&root);
    for (int i = 0; !center->pingDaemon(); ++i) {
        ::usleep(1000);
        if (i == 5000) {
            std::fputs("the daemon does not answer\n", stderr);
            return 1;
        }
    }

    Bench bench;
    std::vector<std::tuple<QString, QString, double>> reaches;
    const auto bare = [&] { requestBare(barePath); };
    const auto kit = [&] {
        if (!center->postNotificationToDaemon(tenKeys()))
            fail("the daemon did not answer");
    };
    const auto direct = [&] { requestDirect(directAddress); };
    const auto bus = [&] { requestBus(busAddress); };
    for (const Placement &placement : Placement::all()) {
        const auto take = [placement, &servers] { placement.take(servers); };
        const QString where = ", " + placement.name;
        bench.add("bare socket" + where, bare, take);
        bench.add("direct sd-bus" + where, direct, take);
        bench.add("kit" + where, kit, take);
        bench.add("dbus-daemon" + where, bus, take);
        reaches.emplace_back("kit" + where, "bare socket" + where, 3.0);
        reaches.emplace_back("kit" + where, "direct sd-bus" + where, 1.10);
        reaches.emplace_back("kit" + where, "dbus-daemon" + where, 0.35);
    }
    bench.run(20, 200);
    bench.print("one complete request, fresh connection, post of ten keys", reaches);
    endServers(servers);
    return 0;
}

#include "request_bench.moc"
