// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/system/machine/ProgramLimits.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>

namespace dozely
{

class Clock;

/// A program that the service manager runs once, in a unit of its own: with nothing of the process that asks
/// for it but one descriptor and what is said here.
struct TransientService {
    QString name;        ///< Of the unit: letters, digits, '-', and ".service" at its end.
    QString description; ///< For people who look at the unit.
    QString program;     ///< An absolute path.
    QStringList arguments = {};
    /// Entries NAME=VALUE, beside what the manager gives all that it runs. It refuses a service for one whose
    /// name is not of letters, digits and '_', or whose value has control characters.
    QStringList environment = {};
    QString logName = {}; ///< Before each line that it writes, in the journal.
    int input = -1;       ///< An open descriptor, which becomes its standard input.
    ProgramLimits limits = {};
    /// From SIGTERM, of which only the program itself is told, to SIGKILL for all that it has started.
    std::chrono::seconds timeToStop{90};
};

/// systemd, as far as it runs programs for others.
///
/// THREADING: one thread, which needs an event loop. Handlers are called from there, and none once the object
/// is destroyed. A handler may not destroy it. BLOCKING: never.
class DOZELYKIT_EXPORT ServiceManager
{
public:
    enum class Whose {
        Machine, ///< The one that started the machine; it runs programs for root.
        User,    ///< The one of this user's sessions.
    };
    using Answered = std::function<void(const Result<void> &)>;
    using Told = std::function<void(const QString &)>;

    explicit ServiceManager(Whose whose, std::shared_ptr<Clock> clock);
    ~ServiceManager();
    ServiceManager(const ServiceManager &) = delete;
    ServiceManager &operator=(const ServiceManager &) = delete;

    /// Whether systemd has started this machine: "/run/systemd/system" is there (sd_booted(3)).
    static bool hasStartedMachine();

    /// Looks for the manager on its bus, once: an error when there is none.
    void find(Answered answered);

    /// Has the manager run a service. Success says that it has taken it on. While the manager is away, as
    /// when it begins anew, the service waits for it for some seconds. The unit is remembered after its end
    /// until `forget`, or this object's end.
    void start(const TransientService &service, Answered answered);

    /// Tells what the manager says of a unit that ended: "success", "signal", "oom-kill" and so on, the
    /// property Result of org.freedesktop.systemd1(5); empty when it says nothing.
    void tellResult(const QString &name, Told told);

    /// The unit need not be remembered any more, nor started if it still waits.
    void forget(const QString &name);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace dozely
