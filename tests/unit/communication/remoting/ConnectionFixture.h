// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "support/PrintTo.h"
#include "support/TestPort.h"

#include <QDateTime>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>

class Child : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE int answer() { return 42; }
};

/// A root object that shows what the connection layer does with it.
class Root : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool pong()
    {
        ++calls;
        peer = NSConnection::currentPeer();
        ++nesting;
        const bool result = !onPong || onPong();
        --nesting;
        return result;
    }
    NS_REMOTE Q_INVOKABLE int depth() { return nesting; }
    NS_REMOTE Q_INVOKABLE QObject *child() { return &m_child; }
    NS_REMOTE Q_INVOKABLE QObject *noChild() { return nullptr; }
    NS_REMOTE Q_INVOKABLE QObject *itself() { return this; }
    NS_REMOTE Q_INVOKABLE void raise() { throw NSException("TestException", "as asked: always"); }
    NS_REMOTE Q_INVOKABLE bool postNotification(const NSNotification &notification)
    {
        ++notifications;
        last = notification;
        return true;
    }
    NS_REMOTE Q_INVOKABLE qlonglong sizeOfBoth(const QString &first, const QString &second)
    {
        ++calls;
        return first.size() + second.size();
    }
    NS_REMOTE Q_INVOKABLE QByteArray bytes(int size) { return QByteArray(size, 'x'); }
    NS_REMOTE Q_INVOKABLE int integer() { return -7; }
    NS_REMOTE Q_INVOKABLE uint cardinal() { return 4'000'000'000U; }
    NS_REMOTE Q_INVOKABLE qlonglong largeInteger() { return -9'000'000'000LL; }
    NS_REMOTE Q_INVOKABLE qulonglong largeCardinal() { return 18'000'000'000'000'000'000ULL; }
    NS_REMOTE Q_INVOKABLE int sameInteger(int number) { return number; }
    NS_REMOTE Q_INVOKABLE uint sameCardinal(uint number) { return number; }
    NS_REMOTE Q_INVOKABLE qlonglong sameLargeInteger(qlonglong number) { return number; }
    NS_REMOTE Q_INVOKABLE qulonglong sameLargeCardinal(qulonglong number) { return number; }
    NS_REMOTE Q_INVOKABLE double fraction() { return 0.25; }
    NS_REMOTE Q_INVOKABLE QString text() { return QStringLiteral("Grüße"); }
    NS_REMOTE Q_INVOKABLE QString textWithNul() { return QString::fromUtf16(u"a\0b", 3); }
    NS_REMOTE Q_INVOKABLE QDateTime date() { return QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC); }
    NS_REMOTE Q_INVOKABLE QVariantList list() { return {1, "zwei", QVariantList{3U}}; }
    NS_REMOTE Q_INVOKABLE QVariantMap dictionary() { return {{"eins", 1}, {"zwei", 0.5}}; }
    NS_REMOTE Q_INVOKABLE QVariant anything() { return 0.75; }
    NS_REMOTE Q_INVOKABLE void nothing() {}
    Q_INVOKABLE void hidden() { ++hiddenCalls; }
    Q_INVOKABLE bool connectionShouldMakeNewConnection(NSConnection *, NSConnection *)
    {
        ++askedForWelcome;
        return welcome;
    }

    std::function<bool()> onPong;
    std::atomic<int> calls = 0;
    int nesting = 0;
    int hiddenCalls = 0;
    int notifications = 0;
    int askedForWelcome = 0;
    bool welcome = true;
    NSNotification last;
    std::optional<NSConnection::Peer> peer;

private:
    Child m_child;
};

/// Counts notifications of the default centre.
class Listener : public QObject
{
    Q_OBJECT
public:
    void observe(const QString &name, NSConnection *connection)
    {
        NSNotificationCenter::defaultCenter().addObserver(
            this, "hear", name, connection ? QVariant::fromValue(connection) : QVariant());
    }
    Q_INVOKABLE void hear(const NSNotification &) { ++heard; }
    int heard = 0;
};

class ConnectionTest : public testing::Test
{
protected:
    ConnectionTest()
    {
        server = NSConnection::initWithReceivePortSendPort(TestPort::server(path), nullptr);
        server->setRootObject(root.get());
    }

    std::shared_ptr<NSConnection> client() const
    {
        return NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(path));
    }

    QVariant post(const NSNotification &notification) const
    {
        return client()->rootProxy()->invoke("postNotification", {QVariant::fromValue(notification)});
    }

    static QVariant nested(int levels)
    {
        QVariant value = "bottom";
        for (int i = 0; i < levels; ++i)
            value = i % 2 ? QVariant(QVariantMap{{"in", value}}) : QVariant(QVariantList{value});
        return value;
    }

    template<class Action>
    static QString nameRaisedBy(Action action)
    {
        try {
            action();
        } catch (const NSException &exception) {
            return exception.name();
        }
        return "nothing";
    }

    QTemporaryDir folder{"/tmp/dz-XXXXXX"};
    QString path = folder.filePath("a server");
    std::unique_ptr<Root> root = std::make_unique<Root>();
    std::shared_ptr<NSConnection> server;
};
