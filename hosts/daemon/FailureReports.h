// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/Occurrence.h"

#include <QObject>

#include <memory>

namespace dozely
{
class Clock;
} // namespace dozely

class AgentWaits;
class PinnedConsoleUser;
class ScheduleKeeper;

/// Has the agent at the console tell its user that an action failed or was not performed, where the schedule
/// asks for that.
///
/// THREADING: the main thread. BLOCKING, in turns of its own: as a request of WDCommunicationCenter.
class FailureReports : public QObject
{
    Q_OBJECT
public:
    /// All must outlive the object.
    FailureReports(ScheduleKeeper &keeper, AgentWaits &waits, std::shared_ptr<PinnedConsoleUser> console,
                   const dozely::Clock &clock);

    /// Tells of an occurrence what became of it; `why` is a clause.
    void tellSoon(const Occurrence &occurrence, const QString &why);

private:
    void tell(const QString &schedule, const QString &why);

    ScheduleKeeper &m_keeper;
    AgentWaits &m_waits;
    std::shared_ptr<PinnedConsoleUser> m_console;
    const dozely::Clock &m_clock;
};
