// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ConsoleUser.h"
#include "hosts/common/performing/Performances.h"
#include "hosts/daemon/PlugInAnswers.h"
#include "hosts/daemon/Scheduler.h"

/// Gives occurrences to the agent of the user at the console: to be performed there, or announced. Where the
/// plug-in's class has a way of its own to do that (PlugInAnswer), a performer goes that way.
///
/// THREADING: the main thread. BLOCKING: as a request of WDCommunicationCenter, but for plug-ins with a way
/// of their own.
class AgentPosts
{
public:
    using Delivery = PerformanceOutcome::Delivery;
    using Delivered = std::function<void(Delivery)>;

    /// All must outlive the object.
    AgentPosts(Scheduler &scheduler, Performances &performances)
        : m_scheduler(scheduler), m_performances(performances)
    {
    }

    /// What became of it; absent while that is not known: then `delivered` is called once, from the event
    /// loop.
    /// @{
    std::optional<Delivery> handOver(const Occurrence &occurrence, const PlugInAnswers::Answers &answers,
                                     const dozely::ConsoleUser::User &user, const Delivered &delivered);
    std::optional<Delivery> announce(const Occurrence &occurrence, const PlugInAnswers::Answers &answers,
                                     const dozely::ConsoleUser::User &user, const Delivered &delivered);
    /// @}

    /// Tells the agent of `userId` that it will soon be given an occurrence, by this class's own
    /// way. Whether it hears that nobody learns. Nothing waits.
    static void tellSoonDue(const Occurrence &occurrence, quint32 userId);

    /// Has the agent of `userId` withdraw the alert of this bundle (full path) and date, in the same way.
    static void withdraw(const QString &bundlePath, const QDateTime &date, quint32 userId);

private:
    Delivery post(QLatin1StringView name, const Occurrence &occurrence, quint32 userId);
    std::optional<Delivery> perform(PerformanceOrder::Deed deed, const QString &name,
                                    const Occurrence &occurrence, const dozely::ConsoleUser::User &user,
                                    const Delivered &delivered);

    Scheduler &m_scheduler;
    Performances &m_performances;
};
