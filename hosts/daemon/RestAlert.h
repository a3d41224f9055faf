// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/schedules/SchedulePolicies.h"

#include <QDateTime>

#include <memory>
#include <optional>

class PinnedConsoleUser;
class Scheduler;

/// The alert before the machine sleeps or goes off again: that of the plug-in which does the same for a
/// schedule, so that it says the same, and names who forbids it.
class RestAlert
{
public:
    /// `scheduler` must outlive the object; nothing is too late by the time for which an agent is waited for.
    RestAlert(Scheduler &scheduler, std::shared_ptr<PinnedConsoleUser> console);

    /// Has the agent of the user at the console show it; that user, absent when nobody is there. The error
    /// says why it was not shown. BLOCKING: as a request of WDCommunicationCenter.
    dozely::Result<std::optional<quint32>> show(AfterAction step, const QDateTime &date);

private:
    Scheduler &m_scheduler;
    std::shared_ptr<PinnedConsoleUser> m_console;
};
