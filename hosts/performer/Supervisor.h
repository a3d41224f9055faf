// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "hosts/common/performing/PerformanceOrder.h"
#include "hosts/common/performing/PerformanceOutcome.h"
#include "hosts/performer/Report.h"

#include <chrono>
#include <optional>
#include <sys/types.h>

/// Watches over the process that acts: lets it go, keeps the end of what it writes, ends it and all that it
/// started when it is asked to or the time is over, and writes down what became of it. Runs no code of the
/// plug-in, so that there is somebody to tell when that brings its process down.
///
/// BLOCKING: to the end.
class Supervisor
{
public:
    /// Where the two processes meet, and the host.
    struct Ends {
        dozely::Descriptor host;   ///< From the host: a byte when it is time to act, or the end.
        dozely::Descriptor go;     ///< To the process that acts.
        dozely::Descriptor report; ///< From it.
        dozely::Descriptor output; ///< Its standard output and error.
    };

    /// `signals` is a signalfd(2) of SIGTERM, SIGINT and SIGCHLD, which are blocked here. `isInUnit` says
    /// that a service manager keeps the limits of a unit that has nothing else in it.
    Supervisor(PerformanceOrder order, Ends ends, dozely::Descriptor signals, pid_t actor, bool isInUnit);

    /// The exit status of the process: 0 when the action succeeded, 1 when it did not, or was none.
    int run();

private:
    using Moment = std::chrono::steady_clock::time_point;

    void wait();
    void hearHost();
    void hearSignals();
    void hearReports();
    void takeOutput(qsizetype most);
    void reap();
    void stop(const QString &why);
    void continueStopping();
    bool isOver() const;
    bool hasSucceeded() const;
    bool writeDown();

    PerformanceOrder m_order;
    Ends m_ends;
    dozely::Descriptor m_signals;
    const pid_t m_actor;
    const bool m_isInUnit;
    PerformanceOutcome m_outcome;
    QByteArray m_reports;            // not whole yet
    std::optional<int> m_waitStatus; // of the actor, once it has ended
    bool m_mayStillGo = true;        // the host has not said
    bool m_isDone = false;           // it said so
    bool m_isCalledOff = false;      // by the host, before it began
    bool m_isStopping = false;
    std::optional<Moment> m_deadline; // for the action, then for its end
    Moment m_outputAgain;             // when output is taken again; until then it stays where it is
};
