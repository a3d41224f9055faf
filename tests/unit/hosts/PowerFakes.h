// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/SystemPower.h"

#include <QStringList>

/// A machine's scheduler that keeps its events in a list.
class ScheduledEvents : public PowerEventScheduler
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
    std::optional<Alarm> alarm() override { return {}; }
    QString testAlarm(const QDateTime &) override { return {}; }

    QList<Event> events;
    QList<Event> asked;
    QList<Event> cancelled;
    QList<Phase> phases;
    bool refuses = false;
};

/// Power that changes when the test says so.
class PowerByHand : public SystemPower
{
public:
    Registration registerForSystemPower(void *reference, IOServiceInterestCallback callback) override
    {
        m_reference = reference;
        m_callback = callback;
        return {1, 2};
    }
    void deregisterForSystemPower(quint32 *notifier) override
    {
        *notifier = 0;
        m_callback = nullptr;
    }
    void allowPowerChange(quint32, void *) override { ++consents; }
    quint32 findPowerManagement(quint32) override { return 3; }
    qint32 sleepSystem(quint32) override
    {
        ++sleeps;
        return 0;
    }
    qint32 powerOff() override
    {
        ++powerOffs;
        return powerOffResult;
    }
    std::unique_ptr<Inhibition> inhibitSleep(const QString &reason) override
    {
        reasons += reason;
        return std::make_unique<Counted>(inhibitions);
    }

    void send(quint32 messageType) { m_callback(m_reference, 1, messageType, nullptr); }

    QStringList reasons; // of all inhibitions ever taken
    int inhibitions = 0; // that are held now
    int consents = 0;
    int sleeps = 0;
    int powerOffs = 0;
    qint32 powerOffResult = 0;

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
    void *m_reference = nullptr;
    IOServiceInterestCallback m_callback = nullptr;
};

/// Keys that nobody sees.
class NoKeys : public KeyEventDriver
{
public:
    qint32 open(quint32, quint32, quint32 *connection) override
    {
        *connection = 1;
        return 0;
    }
    qint32 post(quint32, quint32, IOGPoint, const NXEventData &, quint32, quint32, quint32) override
    {
        return 0;
    }
};
