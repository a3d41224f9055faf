// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
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

class FakeKeyDriver : public dozely::KeyEventDriver
{
public:
    explicit FakeKeyDriver(Story &story) : m_story(story) {}

    Opening open() override
    {
        m_story += "open";
        return opening;
    }
    bool post(const NXEventData &event) override
    {
        m_story += "post";
        records += QByteArray(reinterpret_cast<const char *>(&event), sizeof event);
        return !refuses;
    }

    Opening opening = Opening::Opened;
    bool refuses = false;
    QList<QByteArray> records;

private:
    Story &m_story;
};

class FakePower : public dozely::SystemPower
{
public:
    explicit FakePower(Story &story) : m_story(story) {}

    std::unique_ptr<Listening> listen(Listener newListener) override
    {
        m_story += "listen";
        listener = std::move(newListener);
        return std::make_unique<Told>(m_story);
    }
    void allow(void *change) override
    {
        m_story += QString("allow %1").arg(reinterpret_cast<quintptr>(change));
    }
    bool canSleep() override
    {
        m_story += "canSleep";
        return isManaged;
    }
    bool sleep() override
    {
        m_story += "sleep";
        return !refusesSleep;
    }
    bool powerOff() override { return true; }
    bool restart() override { return true; }
    QStringList blockers(Change) override { return {}; }
    bool isKeptAwakeElsewhere() override { return false; }
    bool isGoingOff() override { return false; }
    std::unique_ptr<Inhibition> inhibitSleep(const QString &) override
    {
        return std::make_unique<Inhibition>();
    }

    /// The machine sends a message.
    void send(quint32 type, quintptr change) { listener(type, reinterpret_cast<void *>(change)); }

    Listener listener;
    bool isManaged = true;
    bool refusesSleep = false;

private:
    class Told : public Listening
    {
    public:
        explicit Told(Story &story) : m_story(story) {}
        ~Told() override { m_story += "listen no longer"; }
        Told(const Told &) = delete;
        Told &operator=(const Told &) = delete;

    private:
        Story &m_story;
    };
    Story &m_story;
};

class FakeScheduler : public dozely::PowerEventScheduler
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
    Controller controller() override { return found; }
    std::optional<QVariantMap> controllerProperties() override { return properties; }
    QString testAlarm(const QDateTime &) override { return {}; }
    qint32 putBackAlarm(const QDateTime &) override { return 0; }

    qint32 scheduleResult = 0;
    qint32 cancelResult = 0;
    Controller found{true};
    std::optional<QVariantMap> properties = QVariantMap();
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
        dozely::Port<dozely::Clock>::current() = clock;
        dozely::Port<dozely::KeyEventDriver>::current() = keys;
        dozely::Port<dozely::SystemPower>::current() = power;
        dozely::Port<dozely::PowerEventScheduler>::current() = scheduler;
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
    std::shared_ptr<FakeKeyDriver> keys = std::make_shared<FakeKeyDriver>(story);
    std::shared_ptr<FakePower> power = std::make_shared<FakePower>(story);
    std::shared_ptr<FakeScheduler> scheduler = std::make_shared<FakeScheduler>();
    PowerObserver observer{story};
};
