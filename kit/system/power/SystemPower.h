// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace dozely
{

/// Port: what happens to the machine's power, putting it to sleep and switching it off.
///
/// THREADING: the thread that listens; its event loop delivers the messages.
class DOZELYKIT_EXPORT SystemPower
{
public:
    /// Is told a power message: its type (PowerMessages.h), and a token of the change that waits for consent.
    using Listener = std::function<void(quint32 messageType, void *change)>;

    /// Somebody listens while an object of this kind lives.
    class Listening
    {
    public:
        virtual ~Listening() = default;
    };

    /// The machine does not fall asleep by itself while an object of this kind lives.
    class Inhibition
    {
    public:
        virtual ~Inhibition() = default;
    };

    /// What may happen to the machine. A restart is a PowerOff to whoever forbids it.
    enum class Change { Sleep, PowerOff };

    virtual ~SystemPower() = default;

    /// From now on `listener` is told the power messages, each from the event loop. The machine waits with a
    /// change that it announces until that is allowed, some seconds at most. One at a time listens: null
    /// while another one does. What `listener` throws is logged and allows the change.
    virtual std::unique_ptr<Listening> listen(Listener listener) = 0;

    /// Allows the change that was announced with this token: this process no longer holds it up. Null, or a
    /// token that nothing waits for, changes nothing.
    virtual void allow(void *change) = 0;

    /// Whether there is something that can put the machine to sleep. Blocks for at most two seconds.
    virtual bool canSleep() = 0;

    /// Puts the machine to sleep now, also when somebody else wants it awake. True when that was accepted; it
    /// follows after everybody who listens has allowed it. Blocks for at most ten seconds.
    virtual bool sleep() = 0;

    /// Switches the machine off now, also when somebody else wants it on. True when that was accepted; it
    /// follows after everybody who listens has allowed it. Blocks for at most ten seconds.
    virtual bool powerOff() = 0;

    /// Restarts the machine now. As powerOff: it is announced and forbidden as that is.
    virtual bool restart() = 0;

    /// Who forbids a change for now, this system itself left out: names and reasons for people ("apt:
    /// Upgrades packages"). What sleep and powerOff order happens all the same: ask before. Empty as well
    /// when nobody can be asked. Blocks for at most two seconds.
    virtual QStringList blockers(Change change) = 0;

    /// Whether another process of this system keeps the machine from falling asleep by itself, as an agent
    /// does while it has an action performed. False as well when nobody can be asked. Blocks for at most two
    /// seconds.
    virtual bool isKeptAwakeElsewhere() = 0;

    /// Whether the machine is about to be switched off or restarted. Blocks for at most two seconds.
    virtual bool isGoingOff() = 0;

    /// Keeps the machine from falling asleep by itself (idle, a closed lid) until the object is destroyed;
    /// what root forces, and a shutdown, are not kept from happening. `reason` is shown to people. Never
    /// null; does not wait: the machine is asked from the event loop, and asked again when its login manager
    /// was restarted. A refusal is logged.
    virtual std::unique_ptr<Inhibition> inhibitSleep(const QString &reason) = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<SystemPower> &Port<SystemPower>::current();

} // namespace dozely
