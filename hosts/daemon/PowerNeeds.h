// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/Scheduler.h"
#include "hosts/daemon/SchedulerObserver.h"

#include <QHash>
#include <QVariantMap>

#include <chrono>
#include <set>
#include <vector>

class PlugInAnswers;

/// Which occurrences need the machine woken, or switched on: what plug-ins answered, by schedule, in the
/// order of dates. Only what has changed is asked about again: a schedule, or its bundle.
///
/// THREADING: the main thread.
class PowerNeeds final : private SchedulerObserver
{
public:
    /// A need is over so long after its occurrence's date.
    static constexpr std::chrono::minutes longestHold{5};

    /// All must outlive the object.
    PowerNeeds(Scheduler &scheduler, const dozely::Clock &clock, PlugInAnswers &answers);
    ~PowerNeeds() override;
    PowerNeeds(const PowerNeeds &) = delete;
    PowerNeeds &operator=(const PowerNeeds &) = delete;

    /// Asks about what has changed. BLOCKING: for the disk, a few entries a bundle.
    void update();

    /// The plug-ins that had no answer may have one now.
    void noteAnswers() { m_hasAnswers = true; }

    /// Whether some plug-in has no answer yet.
    bool isAsking() const { return !m_unknown.isEmpty(); }

    enum class Need { Wake, PowerOn };

    /// When there is need for it next: dates of occurrences later than `after`, each once, the earliest
    /// `most` of them.
    QList<QDateTime> next(Need need, const QDateTime &after, qsizetype most) const;

    /// What a lead time and longestHold make of all needs of that kind.
    struct Hold {
        std::optional<QVariantMap> bundleInfo = {}; ///< Of one whose time it is; absent when there is none.
        QDateTime change = {};                      ///< When to look again; invalid for never.
    };
    Hold holdNow(Need need, std::chrono::seconds lead) const;

private:
    struct Needs {
        bool wake = false;
        bool powerOn = false;
        QVariantMap bundleInfo;
        QList<qint64> dates; // milliseconds since 1970
    };
    using Dates = std::set<std::pair<qint64, qint32>>; // with the schedule's place

    void schedulesReplaced() override;
    void scheduleChanged(qint32 place) override;
    void lookAtClock();
    void lookAtBundles();
    void askAbout(qint32 place);
    void forget(qint32 place);
    const Dates &datesOf(Need need) const { return need == Need::Wake ? m_wakes : m_powerOns; }

    Scheduler &m_scheduler;
    const dozely::Clock &m_clock;
    PlugInAnswers &m_answers;
    QHash<qint32, Needs> m_needs; // by place, of those that need something
    Dates m_wakes;
    Dates m_powerOns;
    std::vector<qint32> m_changed;     // places
    std::vector<bool> m_isChanged;     // by place
    QSet<qint32> m_over;               // with an occurrence that is over by the clock, and open
    QDateTime m_now;                   // when that was looked at last
    QSet<qint32> m_unknown;            // being asked
    QSet<qint32> m_failed;             // that could not be asked
    QHash<QString, quint64> m_bundles; // what PlugInAnswers::stateOf said, by the path in the store
    bool m_hasAnswers = false;
    std::chrono::milliseconds m_latestTrial{0}; // of those that failed, on the steady clock
};
