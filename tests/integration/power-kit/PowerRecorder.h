// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/linux/LogindPower_p.h"
#include "integration/power-kit/FakeLogind.h"

#include <QStringList>

#include <functional>

/// Registers for power messages, writes them down and consents.
class PowerRecorder
{
public:
    explicit PowerRecorder(LogindPower &power) : m_power(power) {}
    ~PowerRecorder() { m_power.deregisterForSystemPower(&m_registration.notifier); }

    void listen()
    {
        m_registration =
            m_power.registerForSystemPower(this, [](void *self, quint32, quint32 type, void *argument) {
                static_cast<PowerRecorder *>(self)->hear(type, argument);
            });
    }

    static QString nameOf(quint32 type)
    {
        switch (type) {
        case kIOMessageSystemWillSleep:
            return "sleep";
        case kIOMessageSystemHasPoweredOn:
            return "wake";
        case kIOMessageSystemWillPowerOff:
            return "off";
        case kIOMessageSystemWillNotPowerOff:
            return "stay";
        default:
            return QString::number(type, 16);
        }
    }

    QStringList messages;
    void *lastArgument = nullptr;
    bool consents = true;
    std::function<void()> before; ///< Runs before consent.
    std::function<void()> after;  ///< Runs after it.
    SystemPower::Registration registration() const { return m_registration; }

private:
    void hear(quint32 type, void *argument)
    {
        messages += nameOf(type);
        lastArgument = argument;
        if (before)
            before();
        if (consents)
            m_power.allowPowerChange(m_registration.rootPort, argument);
        if (consents && after)
            after();
    }

    LogindPower &m_power;
    SystemPower::Registration m_registration;
};
