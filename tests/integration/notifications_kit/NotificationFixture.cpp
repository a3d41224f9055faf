// SPDX-License-Identifier: MIT
#include "NotificationFixture.h"

#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "support/SignalProcess.h"

#include <csignal>
#include <unistd.h>

using namespace dozely;

namespace
{
constexpr int patience = 60'000; // milliseconds; only bounds a failing test
constexpr char mock[] = "org.freedesktop.DBus.Mock";
} // namespace

void MockProcess::start(const QStringList &arguments)
{
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(DOZELY_PYTHON, QStringList{"-m", "dbusmock", "--session", "-l", "/dev/null"} + arguments);
    ASSERT_TRUE(m_process.waitForStarted(patience));
}

void MockProcess::end()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(patience);
}

void MockProcess::hold() const
{
    ASSERT_TRUE(signalProcess(m_process.processId(), SIGSTOP));
}

void MockProcess::letGo() const
{
    ASSERT_TRUE(signalProcess(m_process.processId(), SIGCONT));
}

NotificationFixture::NotificationFixture()
{
    NSProcessInfo::setProcessName("Dozely Agent");
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    EXPECT_TRUE(connect());
}

bool NotificationFixture::connect()
{
    auto opened = BusConnection::open(BusConnection::Bus::Session);
    control = opened ? *std::move(opened) : nullptr;
    return control != nullptr;
}

NotificationFixture::~NotificationFixture()
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void NotificationFixture::startServer(MockProcess &server, const QString &capabilities)
{
    ASSERT_TRUE(bus.isRunning());
    server.start({"--template", "notification_daemon", "-p", "{\"capabilities\": \"" + capabilities + "\"}"});
    ASSERT_TRUE(waitUntil([&] { return !owner(service).isEmpty(); }));
}

void NotificationFixture::endServer(MockProcess &server)
{
    server.end();
    ASSERT_TRUE(waitUntil([&] { return owner(service).isEmpty(); }));
}

void NotificationFixture::startStranger(MockProcess &stranger)
{
    stranger.start({"com.example.Stranger", path, service});
    ASSERT_TRUE(waitUntil([&] { return !owner("com.example.Stranger").isEmpty(); }));
}

NotificationFixture::Alert NotificationFixture::makeAlert(const QString &title, const QString &text)
{
    auto alert = std::make_shared<NSUserNotification>();
    alert->setTitle(title);
    alert->setIdentifier(title);
    alert->setInformativeText(text);
    alert->setActionButtonTitle("Cancel");
    WDUserNotificationCenterDelegate::sharedInstance()->setDelegateForUserNotification(plugIn, alert);
    return alert;
}

void NotificationFixture::show(const Alert &alert)
{
    const auto before = plugIn->delivered.size();
    center.deliverNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return plugIn->delivered.size() > before; }));
    ASSERT_EQ(plugIn->delivered.constLast(), alert->title());
}

QVariantList NotificationFixture::call(const QByteArray &destination, const QByteArray &interface,
                                       const QByteArray &method, const QByteArray &signature,
                                       const QVariantList &arguments)
{
    const auto reply =
        control->call({destination, path, interface, method}, signature, arguments, QDeadlineTimer(patience));
    if (reply)
        return *reply;
    ADD_FAILURE() << method.constData() << ": " << qPrintable(reply.error().text);
    return {};
}

QList<QVariantList> NotificationFixture::calls(const QString &method)
{
    QList<QVariantList> all;
    for (const QVariant &entry : call(service, mock, "GetMethodCalls", "s", {method}).value(0).toList())
        all += entry.toList().value(1).toList(); // time, arguments
    return all;
}

void NotificationFixture::teach(const QString &method, const QString &in, const QString &out,
                                const QString &code)
{
    call(service, mock, "AddMethod", "sssss", {QString(service), method, in, out, code});
}

void NotificationFixture::emitFrom(const QByteArray &process, const QString &signal, const QString &signature,
                                   const QVariantList &arguments)
{
    call(process, mock, "EmitSignal", "sssav", {QString(service), signal, signature, arguments});
}

QByteArray NotificationFixture::owner(const QByteArray &name) const
{
    const auto reply = control->call(
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetNameOwner"}, "s",
        {QString::fromLatin1(name)}, QDeadlineTimer(patience));
    return BusConnection::firstOf(reply).toString().toLatin1();
}

QByteArray NotificationFixture::ownName()
{
    const auto ask = [&](const QByteArray &method, const QByteArray &signature,
                         const QVariantList &arguments) {
        return BusConnection::firstOf(
            control->call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method},
                          signature, arguments, QDeadlineTimer(patience)));
    };
    for (const QString &name : ask("ListNames", "", {}).toStringList()) {
        if (name.startsWith(':') && name.toLatin1() != control->uniqueName() &&
            ask("GetConnectionUnixProcessID", "s", {name}).toUInt() == static_cast<quint32>(::getpid()))
            return name.toLatin1();
    }
    ADD_FAILURE() << "the kit is not on the bus";
    return {};
}

std::vector<std::string> NotificationFixture::logged() const
{
    std::vector<std::string> texts;
    for (const QString &line : root.logLines())
        texts.push_back(line.section("): ", 1).toStdString());
    return texts;
}
