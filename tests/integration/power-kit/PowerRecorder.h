// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/PowerMessages.h"
#include "DozelyKit/system/power/linux/LogindPower_p.h"
#include "integration/power-kit/FakeLogind.h"

#include <QStringList>

#include <functional>

/// Listens to power messages, writes them down and allows the changes.
class PowerRecorder
{
public:
    explicit PowerRecorder(dozely::LogindPower &power) : m_power(power) {}

    void listen()
    {
        m_listening = m_power.listen([this](quint32 type, void *change) { hear(type, change); });
    }
    void stopListening() { m_listening.reset(); }
    bool isListening() const { return m_listening != nullptr; }

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
    void *lastChange = nullptr;
    bool consents = true;
    std::function<void()> before; ///< Runs before consent.
    std::function<void()> after;  ///< Runs after it.

private:
    void hear(quint32 type, void *change)
    {
        messages += nameOf(type);
        lastChange = change;
        if (before)
            before();
        if (consents)
            m_power.allow(change);
        if (consents && after)
            after();
    }

    dozely::LogindPower &m_power;
    std::unique_ptr<dozely::SystemPower::Listening> m_listening;
};
