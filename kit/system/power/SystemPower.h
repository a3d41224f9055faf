// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

#include <memory>

/// Types of power messages.
/// @{
constexpr quint32 kIOMessageSystemWillPowerOff = 0xE0000250;
constexpr quint32 kIOMessageSystemWillNotPowerOff = 0xE0000260;
constexpr quint32 kIOMessageCanSystemSleep = 0xE0000270;
constexpr quint32 kIOMessageSystemWillSleep = 0xE0000280;
constexpr quint32 kIOMessageSystemWillNotSleep = 0xE0000290;
constexpr quint32 kIOMessageSystemHasPoweredOn = 0xE0000300;
constexpr quint32 kIOMessageSystemWillPowerOn = 0xE0000320;
/// @}

/// Gets a power message. `reference` is what was given at registration; `messageArgument` tells the change
/// when consent is given.
using IOServiceInterestCallback = void (*)(void *reference, quint32 service, quint32 messageType,
                                           void *messageArgument);

/// Port: what happens to the machine's power, and putting it to sleep.
///
/// THREADING: the thread that registers; its event loop delivers the messages.
class DOZELYKIT_EXPORT SystemPower
{
public:
    /// Handles of 0 mean that the registration failed.
    struct Registration {
        quint32 rootPort = 0; ///< For consent.
        quint32 notifier = 0; ///< For ending it.
    };

    /// The machine does not fall asleep by itself while an object of this kind lives.
    class Inhibition
    {
    public:
        virtual ~Inhibition() = default;
    };

    virtual ~SystemPower() = default;

    /// From now on `callback` gets the power messages, each from the event loop. The machine waits with a
    /// change that it announces until consent is given, some seconds at most. One registration at a time;
    /// another one meanwhile fails. What `callback` throws is logged and counts as consent.
    virtual Registration registerForSystemPower(void *reference, IOServiceInterestCallback callback) = 0;

    /// Ends a registration, at once; `*notifier` becomes 0. Nothing happens when it is 0.
    virtual void deregisterForSystemPower(quint32 *notifier) = 0;

    /// Consents to the change that a message announced with this argument: this process no longer holds it
    /// up. Null, or an argument that nothing waits for, changes nothing.
    virtual void allowPowerChange(quint32 rootPort, void *messageArgument) = 0;

    /// A connection to whatever can put the machine to sleep; 0 when there is nothing. Blocks for at most two
    /// seconds.
    virtual quint32 findPowerManagement(quint32 masterPort) = 0;

    /// Puts the machine to sleep now, also when somebody else wants it awake. 0 when that was accepted; it
    /// follows after everybody who asked for notice has consented. Blocks for at most ten seconds.
    virtual qint32 sleepSystem(quint32 powerManagement) = 0;

    /// Switches the machine off now, also when somebody else wants it on. 0 when that was accepted; it
    /// follows after everybody who asked for notice has consented. Blocks for at most ten seconds.
    virtual qint32 powerOff() = 0;

    /// Keeps the machine from falling asleep by itself (idle, a closed lid) until the object is destroyed;
    /// what root forces, and a shutdown, are not kept from happening. `reason` is shown to people. Never
    /// null; does not wait: the machine is asked from the event loop, and asked again when its login manager
    /// was restarted. A refusal is logged.
    virtual std::unique_ptr<Inhibition> inhibitSleep(const QString &reason) = 0;
};
