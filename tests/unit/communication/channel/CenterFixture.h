// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSLock.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "support/FakeClock.h"
#include "support/WaitUntil.h"
#include "unit/communication/channel/PortFixture.h"

#include <QThread>

#include <atomic>
#include <functional>

/// The root object of a process, which counts what it is asked.
class CountingRoot : public QObject, public WDCommunicationProtocol
{
    Q_OBJECT
public:
    explicit CountingRoot(QObject *center = nullptr) : m_center(center) {}
    NS_REMOTE Q_INVOKABLE bool pong() override
    {
        ++pongs;
        return onPong ? onPong() : true;
    }
    NS_REMOTE Q_INVOKABLE QObject *communicationCenter() override { return m_center; }

    std::atomic<int> pongs = 0;
    std::function<bool()> onPong;

private:
    QObject *m_center;
};

/// Stands for the communication centre of another process.
class CountingCenter : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool postNotification(const NSNotification &notification)
    {
        last = notification;
        ++posts;
        return onPost ? onPost() : true;
    }

    std::atomic<int> posts = 0;
    NSNotification last; // read it after the post
    std::function<bool()> onPost;
};

/// Another process, played by a thread with connections of its own.
class Peer
{
public:
    enum class Vends { Everything, NoCenter, Nothing };

    explicit Peer(const QString &name, Vends vends = Vends::Everything)
        : root(vends == Vends::Everything ? &center : nullptr)
    {
        center.moveToThread(&m_thread);
        root.moveToThread(&m_thread);
        m_context.moveToThread(&m_thread);
        m_thread.start();
        inThread([&] {
            connection = NSConnection::initWithReceivePortSendPort(
                ZDRUnixSocketPort::initAsServerWithName(name), nullptr);
            if (connection && vends != Vends::Nothing)
                connection->setRootObject(&root);
        });
        EXPECT_TRUE(connection);
    }

    ~Peer()
    {
        inThread([this] {
            if (connection)
                connection->invalidate();
            connection.reset();
        });
        m_thread.quit();
        m_thread.wait();
    }

    /// Runs the action on the peer's thread and waits for it.
    void inThread(const std::function<void()> &action)
    {
        QMetaObject::invokeMethod(&m_context, action, Qt::BlockingQueuedConnection);
    }

    /// Dies, as far as its callers can see. To be called by what the peer serves.
    bool die()
    {
        connection->invalidate();
        return true;
    }

    CountingCenter center;
    CountingRoot root;
    std::shared_ptr<NSConnection> connection;

private:
    QObject m_context;
    QThread m_thread;
};

/// An observer of the system's notification centre.
class Listener : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void hear(const NSNotification &notification)
    {
        last = notification;
        thread = QThread::currentThread();
        ++heard;
        if (onHear)
            onHear();
    }

    static std::shared_ptr<Listener> of(const QString &name, const QString &sender)
    {
        auto listener = std::make_shared<Listener>();
        WDNotificationCenter::defaultCenter()->addObserver(listener, "hear", name, sender);
        return listener;
    }

    std::atomic<int> heard = 0;
    NSNotification last;
    QThread *thread = nullptr;
    std::function<void()> onHear;
};

/// This process's centre with an observer, by the name "dozelyd" unless a test says otherwise, and a clock
/// that stands still.
class CenterFixture : public PortFixture
{
protected:
    CenterFixture()
    {
        dozely::Port<dozely::Clock>::current() = clock;
        NSProcessInfo::setProcessName("dozelyd");
        center = WDCommunicationCenter::sharedInstance();
        root = std::make_unique<CountingRoot>(center.get());
        center->setObserver(root.get());
    }

    static QList<std::chrono::milliseconds> delays(std::initializer_list<int> milliseconds)
    {
        return {milliseconds.begin(), milliseconds.end()};
    }

    /// What the role's log lines say, without process and user ids.
    QStringList logged() const
    {
        QStringList texts;
        for (const QString &line : PortFixture::root.logLines()) {
            if (!line.endsWith("Cleared sockets folder"))
                texts += line.section("): ", 1);
        }
        return texts;
    }

    bool hasReplyPort() const
    {
        const QString pattern =
            QStringLiteral("%1.%2.???").arg(NSProcessInfo::processName()).arg(::geteuid());
        return !QDir(ZDRUnixSocketPort::socketFolder())
                    .entryList({pattern}, QDir::System | QDir::Files)
                    .isEmpty();
    }

    static void removeSocketFolder()
    {
        ZDRUnixSocketPort::initAsClientWithName("first use of the class");
        ASSERT_TRUE(QDir(ZDRUnixSocketPort::socketFolder()).removeRecursively());
    }

    const quint32 self = ::geteuid();
    const std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<WDCommunicationCenter> center;
    std::unique_ptr<CountingRoot> root;
};
