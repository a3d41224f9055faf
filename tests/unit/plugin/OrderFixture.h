// SPDX-License-Identifier: MIT
#pragma once

#include "PlugInFixture.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "DozelyKit/system/machine/ConsoleUser.h"
#include "support/FakeConsoleUser.h"

#include <QTimeZone>

/// Collects what arrives.
class OrderObserver : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void orderHasArrived(const NSNotification &order) { orders += order; }
    QList<NSNotification> orders;
};

/// The object that the process vends.
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

/// A process that sends orders to itself over the channel: it plays the role that receives, at a console at
/// which this very user sits.
class OrderFixture : public PlugInFixture
{
protected:
    static constexpr quint32 stranger = 60'001;

    OrderFixture()
    {
        if (NSProcessInfo::effectiveUserID() != 0)
            root.makeSocketFolder();
        console->user = dozely::ConsoleUser::User{"alice", NSProcessInfo::effectiveUserID()};
        dozely::Port<dozely::ConsoleUser>::current() = console;
        bundle = makeBundle("Test", {{"CFBundleIdentifier", "com.dozely.Test"}});
        // A root process writes a line when it first uses the port class; the tests look at what follows.
        ZDRUnixSocketPort::initAsClientWithName("nobody");
        linesBefore = root.logLines().size();
    }

    /// What was logged, without what stands before the text of each line.
    std::vector<std::string> loggedTexts() const
    {
        std::vector<std::string> texts;
        for (const QString &line : root.logLines().mid(linesBefore))
            texts.push_back(line.section("): ", 1).toStdString());
        return texts;
    }

    /// May send; receives nothing yet.
    void beAProcessNamed(const QString &name)
    {
        NSProcessInfo::setProcessName(name);
        WDCommunicationCenter::sharedInstance()->setObserver(&rootObject);
    }

    /// Receives what is sent to it.
    void publishAs(const QString &name)
    {
        beAProcessNamed(name);
        WDCommunicationCenter::sharedInstance()->createServerConnection();
        ASSERT_TRUE(WDCommunicationCenter::sharedInstance()->connection());
    }

    void observe(const QString &name, const QString &sender) const
    {
        WDNotificationCenter::defaultCenter()->addObserver(observer, "orderHasArrived", name, sender);
    }

    /// What has arrived, when that is one order; else an empty one.
    NSNotification arrived() const
    {
        EXPECT_EQ(observer->orders.size(), 1);
        return observer->orders.value(0);
    }

    RootObject rootObject;
    std::shared_ptr<FakeConsoleUser> console = std::make_shared<FakeConsoleUser>();
    std::shared_ptr<OrderObserver> observer = std::make_shared<OrderObserver>();
    std::shared_ptr<NSBundle> bundle;
    qsizetype linesBefore = 0;
    const QDateTime date{{2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris")};
};
