// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/system/machine/ServiceManager.h"
#include "hosts/common/performing/ActionLimits.h"

#include <QString>

#include <functional>
#include <memory>

/// How a host gets a process for a performer. Under systemd it is a unit of its own; elsewhere, a process
/// that the host forks.
///
/// THREADING: the main thread. Handlers are called from its event loop, and none once the object is
/// destroyed; a handler may not destroy it.
class PerformerStart
{
public:
    /// Who is to be started.
    struct Performer {
        QString name;     ///< Letters and digits alone; another one for each that goes on.
        QString schedule; ///< For people.
        ActionLimits limits;
        int input; ///< An open descriptor, which becomes its standard input.
    };
    using Answered = std::function<void(const dozely::Result<void> &)>;
    using Told = std::function<void(const QString &)>;

    virtual ~PerformerStart() = default;

    /// What this machine has for performers whose program lies at the full path `program`; `whose` is the
    /// service manager that would run them. Which way it is, is found out once and said in one log line.
    static std::unique_ptr<PerformerStart> ofThisMachine(const QString &program,
                                                         dozely::ServiceManager::Whose whose);

    /// Starts one. `answered` is called once: an error says that it does not run, and, once the other end of
    /// its input is closed, that it never will.
    virtual void start(const Performer &performer, Answered answered) = 0;

    /// Tells what the machine knows of the end of one that was started here, a clause; empty for nothing.
    virtual void tellEnd(const QString &name, Told told) = 0;

    /// The unit in which one that was started here runs, or ran a moment ago; empty where it has none.
    virtual QString unitOf(const QString & /*name*/) const { return {}; }

    /// Nobody will ask for the end of this one any more. It may not have been started yet; it need not be.
    virtual void forget(const QString &name) = 0;
};
