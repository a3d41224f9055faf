// SPDX-License-Identifier: MIT
//
// Clients that nobody here wrote: gdbus, busctl and dbus-send on the socket of a process that vends its root
// object, which has a communication centre.
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "support/TestPort.h"
#include "support/TypedCommands.h"
#include "support/WaitUntil.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <unistd.h>

class VendedRoot : public QObject, public WDCommunicationProtocol
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool pong() override { return true; }
    NS_REMOTE Q_INVOKABLE QObject *communicationCenter() override
    {
        return WDCommunicationCenter::sharedInstance().get();
    }
};

class Hearer : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void hear(const NSNotification &notification)
    {
        heard += notification;
        caller = NSConnection::currentPeer();
    }
    QList<NSNotification> heard;
    std::optional<NSConnection::Peer> caller;
};

class ForeignClient : public testing::Test
{
protected:
    ForeignClient()
    {
        server->setRootObject(&root);
        WDNotificationCenter::defaultCenter()->addObserver(hearer, "hear", "MyNotification",
                                                           "com.example.Sender");
    }

    // What the client prints; "failed: ..." when it ends with another status than 0.
    QString run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; }))
            << qPrintable(program);
        const QString output = QString::fromUtf8(process.readAll()).trimmed();
        return process.exitCode() == 0 ? output : "failed: " + output;
    }

    QString gdbus(const QString &path, const QString &method, const QStringList &arguments = {})
    {
        return run("gdbus", QStringList{"call", "--address", address(), "--dest", ":1.1", "--object-path",
                                        path, "--method", method} +
                                arguments);
    }

    QString address() const { return "unix:path=" + path; }

    ScratchRoot scratch;
    const QString path = scratch.join("/dozelyd");
    VendedRoot root;
    /// Their handshakes are looked at as another user's.
    const std::shared_ptr<NSConnection> server =
        NSConnection::initWithReceivePortSendPort(TestPort::server(path), nullptr, {.trustsOwnUser = false});
    std::shared_ptr<Hearer> hearer = std::make_shared<Hearer>();
};

TEST_F(ForeignClient, GdbusCallsPong)
{
    EXPECT_EQ(gdbus("/root", "com.dozely.Object.pong"), "(true,)");
    EXPECT_EQ(gdbus("/", "com.dozely.Connection.rootObject"), "(objectpath '/root',)");
}

TEST_F(ForeignClient, EveryObjectAnswersWhatAPeerAnswers)
{
    EXPECT_EQ(gdbus("/root", "org.freedesktop.DBus.Peer.Ping"), "()");
    EXPECT_EQ(gdbus("/anything", "org.freedesktop.DBus.Peer.GetMachineId"),
              QString("('%1',)").arg(QString::fromLatin1(QSysInfo::machineUniqueId())));
    EXPECT_TRUE(gdbus("/root", "org.freedesktop.DBus.Peer.Nothing")
                    .contains("org.freedesktop.DBus.Error.UnknownMethod: no such method of a peer"));
}

TEST_F(ForeignClient, BusctlCallsPong)
{
    EXPECT_EQ(run("busctl", {"--address=" + address(), "call", ":1.1", "/root", "com.dozely.Object", "pong"}),
              "b true");
}

TEST_F(ForeignClient, DbusSendCallsPong)
{
    EXPECT_TRUE(run("dbus-send", {"--peer=" + address(), "--print-reply", "--type=method_call", "/root",
                                  "com.dozely.Object.pong"})
                    .contains("boolean true"));
}

TEST_F(ForeignClient, GdbusPostsANotificationWithADictionary)
{
    EXPECT_EQ(gdbus("/root", "com.dozely.Object.communicationCenter"), "(objectpath '/object/1',)");
    EXPECT_EQ(gdbus("/object/1", "com.dozely.Object.postNotification",
                    {"MyNotification", "com.example.Sender", "{'number': <7>, 'list': <[<'a'>, <true>]>}"}),
              "(true,)");
    ASSERT_EQ(hearer->heard.size(), 1);
    const QVariantMap expected{{"number", 7}, {"list", QVariantList{"a", true}}};
    EXPECT_EQ(hearer->heard[0].userInfo(), expected);
    ASSERT_TRUE(hearer->caller);
    EXPECT_EQ(hearer->caller->userId, ::geteuid());
}

TEST_F(ForeignClient, NumbersOfEveryWidthArriveAsTheNearestOfOurs)
{
    gdbus("/root", "com.dozely.Object.communicationCenter");
    EXPECT_EQ(gdbus("/object/1", "com.dozely.Object.postNotification",
                    {"MyNotification", "com.example.Sender",
                     "{'y': <byte 0x07>, 'n': <int16 -3>, 'q': <uint16 65535>, 'x': <int64 -9>, "
                     "'t': <uint64 9>, 'd': <0.25>, 'v': <<'within'>>, 'as': <['a', 'b']>}"}),
              "(true,)");
    ASSERT_EQ(hearer->heard.size(), 1);
    const QVariantMap expected{{"y", 7U},   {"n", -3},   {"q", 65535U},   {"x", -9LL},
                               {"t", 9ULL}, {"d", 0.25}, {"v", "within"}, {"as", QVariantList{"a", "b"}}};
    EXPECT_EQ(hearer->heard[0].userInfo(), expected);
    for (auto entry = expected.begin(); entry != expected.end(); ++entry)
        EXPECT_EQ(hearer->heard[0].userInfo().value(entry.key()).metaType(), entry.value().metaType());
}

TEST_F(ForeignClient, TypesThatAreNotOursAreRefused)
{
    gdbus("/root", "com.dozely.Object.communicationCenter");
    for (const char *value : {"[0.5]", "[1, 2]", "(1, 'a')", "{1: 2}", "signature 's'", "[objectpath '/a']",
                              "(int64 0, 68400, 'Nowhere')", "{objectpath '/a': <1>}"}) {
        const QString info = QString("{'key': <%1>}").arg(value);
        EXPECT_TRUE(gdbus("/object/1", "com.dozely.Object.postNotification",
                          {"MyNotification", "com.example.Sender", info})
                        .contains("arguments of these types are not known"))
            << value;
    }
    EXPECT_TRUE(hearer->heard.isEmpty());
    EXPECT_EQ(gdbus("/root", "com.dozely.Object.pong"), "(true,)");
}

TEST_F(ForeignClient, BusctlPostsANotification)
{
    gdbus("/root", "com.dozely.Object.communicationCenter");
    EXPECT_EQ(run("busctl", {"--address=" + address(), "call", ":1.1", "/object/1", "com.dozely.Object",
                             "postNotification", "ssa{sv}", "MyNotification", "com.example.Sender", "1",
                             "key", "s", "value"}),
              "b true");
    ASSERT_EQ(hearer->heard.size(), 1);
    EXPECT_EQ(hearer->heard[0].userInfo().value("key"), "value");
}

TEST_F(ForeignClient, DbusSendPostsANotificationWithADictionaryOfStrings)
{
    gdbus("/root", "com.dozely.Object.communicationCenter");
    EXPECT_TRUE(run("dbus-send", {"--peer=" + address(), "--print-reply", "--type=method_call", "/object/1",
                                  "com.dozely.Object.postNotification", "string:MyNotification",
                                  "string:com.example.Sender", "dict:string:string:key,value"})
                    .contains("boolean true"));
    ASSERT_EQ(hearer->heard.size(), 1);
    EXPECT_EQ(hearer->heard[0].userInfo().value("key"), "value");
}

TEST_F(ForeignClient, IntrospectionTellsObjectsAndMethods)
{
    gdbus("/root", "com.dozely.Object.communicationCenter");
    const QString tree = run(
        "gdbus", {"introspect", "--address", address(), "--dest", ":1.1", "--object-path", "/", "--recurse"});
    EXPECT_TRUE(tree.contains("rootObject(out o object)")) << qPrintable(tree);
    EXPECT_TRUE(tree.contains("pong(out b result)"));
    EXPECT_TRUE(tree.contains("node /object/1"));
    EXPECT_TRUE(tree.contains("postNotification(in  s name"));
    EXPECT_FALSE(tree.contains("deleteLater"));
    const QString methods = run("busctl", {"--address=" + address(), "introspect", ":1.1", "/root"});
    EXPECT_TRUE(methods.contains("communicationCenter")) << qPrintable(methods);
}

TEST_F(ForeignClient, WhatTheDocumentTellsPeopleToTypeWorks)
{
    // The daemon, and the agent of user 501, in the folder of the sockets below the scratch root.
    const QString folder = "/private/var/tmp/com.dozely";
    scratch.makeFolder(folder, 0755);
    QList<std::shared_ptr<NSConnection>> listeners;
    for (const char *name : {"dozelyd", "Dozely Agent.501"}) {
        listeners += NSConnection::initWithReceivePortSendPort(
            TestPort::server(scratch.join(folder + '/' + name)), nullptr, {.trustsOwnUser = false});
        listeners.last()->setRootObject(&root);
    }
    QStringList addresses; // each an assignment to a variable of the shell
    QStringList programs;
    for (QString command : typedCommands("wire-protocol.md", "## By hand")) {
        command.replace("unix:path=/", "unix:path=" + scratch.path() + '/');
        const QString program = command.section(' ', 0, 0);
        if (program.contains('=')) {
            addresses += command;
            continue;
        }
        programs += program;
        const QString output = run("bash", {"-ec", addresses.join('\n') + '\n' + command});
        EXPECT_FALSE(output.startsWith("failed")) << qPrintable(command + '\n' + output);
    }
    EXPECT_EQ(addresses.size(), 2);
    for (const auto &[program, count] : {std::pair("gdbus", 5), {"busctl", 3}, {"dbus-send", 3}})
        EXPECT_EQ(programs.count(QString(program)), count) << program;
    ASSERT_EQ(hearer->heard.size(), 3);
    EXPECT_EQ(hearer->heard[0].userInfo(), QVariantMap({{"key", -1}}));
    EXPECT_EQ(hearer->heard[1].userInfo(), QVariantMap({{"key", -1}}));
    EXPECT_EQ(hearer->heard[2].userInfo(), QVariantMap({{"key", "-1"}}));
}

TEST_F(ForeignClient, WrongCallsAreAnsweredWithTheUsualErrors)
{
    EXPECT_TRUE(gdbus("/nowhere", "com.dozely.Object.pong").contains("UnknownObject"));
    EXPECT_TRUE(gdbus("/root", "com.dozely.Object.deleteLater").contains("UnknownMethod"));
    EXPECT_TRUE(gdbus("/root", "com.example.Other.pong").contains("UnknownMethod"));
    EXPECT_TRUE(run("busctl", {"--address=" + address(), "call", ":1.1", "/root", "com.dozely.Object", "pong",
                               "s", "surplus"})
                    .contains("takes other arguments"));
    EXPECT_EQ(gdbus("/root", "com.dozely.Object.pong"), "(true,)");
}

#include "ForeignClientTest.moc"
