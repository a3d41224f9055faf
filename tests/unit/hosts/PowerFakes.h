// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/PowerMessages.h"
#include "DozelyKit/system/power/SystemPower.h"

#include <QStringList>

/// A machine's scheduler that keeps its events in a list.
class ScheduledEvents : public dozely::PowerEventScheduler
{
public:
    qint32 schedule(const QDateTime &time, const QString &owner, const QString &type) override
    {
        asked += Event{time, owner, type};
        if (refuses)
            return 1;
        events += asked.last();
        return 0;
    }
    qint32 cancel(const QDateTime &time, const QString &owner, const QString &type) override
    {
        cancelled += Event{time, owner, type};
        return events.removeOne(cancelled.last()) ? 0 : 1;
    }
    QList<Event> scheduledEvents() override { return events; }
    qint32 arm(Phase phase) override
    {
        phases += phase;
        return 0;
    }
    void keepArmed() override {}
    std::optional<Alarm> alarm() override { return clock; }
    Controller controller() override { return {}; }
    std::optional<QVariantMap> controllerProperties() override { return {}; }
    QString testAlarm(const QDateTime &time) override
    {
        tested += time;
        return alarmFault;
    }
    qint32 putBackAlarm(const QDateTime &time) override
    {
        putBack += time;
        return 0;
    }

    QList<Event> events;
    QList<Event> asked;
    QList<Event> cancelled;
    QList<Phase> phases;
    bool refuses = false;
    std::optional<Alarm> clock; // that wakes the machine
    QList<QDateTime> tested;
    QList<QDateTime> putBack; // alarms of others
    QString alarmFault;
};

/// Power that changes when the test says so.
class PowerByHand : public dozely::SystemPower
{
public:
    /// As new, and the one that the manager of power knows, of which a process has but one.
    static std::shared_ptr<PowerByHand> ofThisProcess()
    {
        static const auto only = std::make_shared<PowerByHand>();
        *only = PowerByHand();
        return only;
    }

    std::unique_ptr<Listening> listen(Listener listener) override
    {
        m_listener = std::move(listener);
        return std::make_unique<Listening>();
    }
    void allow(void *) override { ++consents; }
    bool canSleep() override { return !isSleepless; }
    bool sleep() override
    {
        ++sleeps;
        return !refusesSleep;
    }
    bool powerOff() override
    {
        ++powerOffs;
        return !refusesPowerOff;
    }
    bool restart() override
    {
        ++restarts;
        return !refusesPowerOff;
    }
    QStringList blockers(Change) override { return blocking; }
    bool isKeptAwakeElsewhere() override { return keptAwakeElsewhere; }
    bool isGoingOff() override { return goesOff; }
    std::unique_ptr<Inhibition> inhibitSleep(const QString &reason) override
    {
        reasons += reason;
        return std::make_unique<Counted>(inhibitions);
    }

    void send(quint32 messageType) { m_listener(messageType, nullptr); }

    QStringList reasons;  // of all inhibitions ever taken
    QStringList blocking; // who forbids whatever is asked for
    bool goesOff = false;
    bool keptAwakeElsewhere = false;
    int inhibitions = 0; // that are held now
    int consents = 0;
    int sleeps = 0;
    int powerOffs = 0;
    int restarts = 0;
    bool refusesPowerOff = false; // and to be restarted
    bool refusesSleep = false;
    bool isSleepless = false;

private:
    class Counted : public Inhibition
    {
    public:
        explicit Counted(int &count) : m_count(count) { ++m_count; }
        ~Counted() override { --m_count; }
        Counted(const Counted &) = delete;
        Counted &operator=(const Counted &) = delete;

    private:
        int &m_count;
    };
    static inline Listener m_listener; // given but once in a process
};

/// Keys that nobody sees.
class NoKeys : public dozely::KeyEventDriver
{
public:
    Opening open() override { return Opening::Opened; }
    bool post(const NXEventData &) override { return true; }
};
