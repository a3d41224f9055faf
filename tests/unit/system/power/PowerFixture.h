// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/Platform.h"
#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/ServiceRegistry.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <cstring>

#include <gmock/gmock.h>

/// What the ports were asked for, and in which order: one line each, with what the observers saw in between.
using Story = QStringList;

class FakeRegistry : public ServiceRegistry
{
public:
    explicit FakeRegistry(Story &story) : m_story(story) {}

    qint32 masterPort(quint32 *port) override
    {
        m_story += "masterPort";
        *port = 3;
        return masterPortResult;
    }
    quint32 matchingService(quint32 masterPort, const QByteArray &className) override
    {
        m_story += QString("matchingService %1 %2").arg(masterPort).arg(QString(className));
        return controller;
    }
    qint32 matchingServices(quint32 masterPort, const QByteArray &className, quint32 *iterator) override
    {
        m_story += QString("matchingServices %1 %2").arg(masterPort).arg(QString(className));
        *iterator = 40;
        return matchingResult;
    }
    quint32 next(quint32 iterator) override
    {
        m_story += QString("next %1").arg(iterator);
        return inputService;
    }
    qint32 release(quint32 handle) override
    {
        m_story += QString("release %1").arg(handle);
        return handle == 0 ? 0x10000003 : releaseResult;
    }
    qint32 properties(quint32 service, QVariantMap *properties) override
    {
        m_story += QString("properties %1").arg(service);
        if (service == 0 || propertiesResult != 0)
            return propertiesResult != 0 ? propertiesResult : 1;
        *properties = values;
        return 0;
    }

    qint32 masterPortResult = 0;
    qint32 matchingResult = 0;
    qint32 releaseResult = 0;
    qint32 propertiesResult = 0;
    quint32 inputService = 41;
    quint32 controller = 50;
    QVariantMap values;

private:
    Story &m_story;
};

class FakeKeyDriver : public KeyEventDriver
{
public:
    explicit FakeKeyDriver(Story &story) : m_story(story) {}

    qint32 open(quint32 service, quint32 connectType, quint32 *connection) override
    {
        m_story += QString("open %1 %2").arg(service).arg(connectType);
        if (openResult == 0)
            *connection = 77;
        return openResult;
    }
    qint32 post(quint32 connection, quint32 eventType, IOGPoint location, const NXEventData &data,
                quint32 version, quint32 flags, quint32 options) override
    {
        m_story += QString("post %1 type %2 at %3,%4 version %5 flags %6 options %7")
                       .arg(connection)
                       .arg(eventType)
                       .arg(location.x)
                       .arg(location.y)
                       .arg(version)
                       .arg(flags)
                       .arg(options);
        records += QByteArray(reinterpret_cast<const char *>(&data), sizeof data);
        return postResult;
    }

    qint32 openResult = 0;
    qint32 postResult = 0;
    QList<QByteArray> records;

private:
    Story &m_story;
};

class FakePower : public SystemPower
{
public:
    explicit FakePower(Story &story) : m_story(story) {}

    Registration registerForSystemPower(void *newReference, IOServiceInterestCallback newCallback) override
    {
        m_story += "register";
        reference = newReference;
        callback = newCallback;
        return {21, 22};
    }
    void deregisterForSystemPower(quint32 *notifier) override
    {
        m_story += QString("deregister %1").arg(*notifier);
        *notifier = 0;
    }
    void allowPowerChange(quint32 rootPort, void *messageArgument) override
    {
        m_story += QString("allow %1 %2").arg(rootPort).arg(reinterpret_cast<quintptr>(messageArgument));
    }
    quint32 findPowerManagement(quint32 masterPort) override
    {
        m_story += QString("find %1").arg(masterPort);
        return management;
    }
    qint32 sleepSystem(quint32 powerManagement) override
    {
        m_story += QString("sleep %1").arg(powerManagement);
        return sleepResult;
    }
    qint32 powerOff() override { return 0; }
    std::unique_ptr<Inhibition> inhibitSleep(const QString &) override
    {
        return std::make_unique<Inhibition>();
    }

    /// The machine sends a message.
    void send(quint32 type, quintptr argument)
    {
        callback(reference, 9, type, reinterpret_cast<void *>(argument));
    }

    void *reference = nullptr;
    IOServiceInterestCallback callback = nullptr;
    quint32 management = 60;
    qint32 sleepResult = 0;

private:
    Story &m_story;
};

class FakeScheduler : public PowerEventScheduler
{
public:
    qint32 schedule(const QDateTime &time, const QString &owner, const QString &type) override
    {
        asked += Event{time, owner, type};
        return scheduleResult;
    }
    qint32 cancel(const QDateTime &time, const QString &owner, const QString &type) override
    {
        cancelled += Event{time, owner, type};
        return cancelResult;
    }
    QList<Event> scheduledEvents() override { return events; }
    qint32 arm(Phase) override { return 0; }
    void keepArmed() override {}
    std::optional<Alarm> alarm() override { return {}; }
    QString testAlarm(const QDateTime &) override { return {}; }

    qint32 scheduleResult = 0;
    qint32 cancelResult = 0;
    QList<Event> events;
    QList<Event> asked;
    QList<Event> cancelled;
};

/// Adds the notifications to the story.
class PowerObserver : public QObject
{
    Q_OBJECT
public:
    explicit PowerObserver(Story &story) : m_story(story)
    {
        NSNotificationCenter::defaultCenter().addObserver(this, "notice", {});
    }
    Q_INVOKABLE void notice(const NSNotification &notification)
    {
        m_story += notification.name();
        last = notification;
        if (action)
            action();
    }

    NSNotification last;
    std::function<void()> action;

private:
    Story &m_story;
};

/// A process with fake ports on a scratch root, before its first use of the power manager.
class PowerFixture : public testing::Test
{
protected:
    PowerFixture()
    {
        NSProcessInfo::setProcessName("dozelyd");
        Platform &platform = Platform::current();
        platform.clock = clock;
        platform.serviceRegistry = registry;
        platform.keyEventDriver = keys;
        platform.systemPower = power;
        platform.powerEventScheduler = scheduler;
    }

    /// The lines of the log without who wrote them.
    QStringList log() const
    {
        QStringList lines = root.logLines();
        for (QString &line : lines)
            line = line.section(": ", 1);
        return lines;
    }
    QStringList takeStory() { return std::exchange(story, {}); }

    ScratchRoot root;
    Story story;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<FakeRegistry> registry = std::make_shared<FakeRegistry>(story);
    std::shared_ptr<FakeKeyDriver> keys = std::make_shared<FakeKeyDriver>(story);
    std::shared_ptr<FakePower> power = std::make_shared<FakePower>(story);
    std::shared_ptr<FakeScheduler> scheduler = std::make_shared<FakeScheduler>();
    PowerObserver observer{story};
};
