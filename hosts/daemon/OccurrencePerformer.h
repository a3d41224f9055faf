// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/daemon/AgentPosts.h"
#include "hosts/daemon/AgentWaits.h"
#include "hosts/daemon/DaemonActions.h"
#include "hosts/daemon/FailureReports.h"
#include "hosts/daemon/PlugInAnswers.h"
#include "hosts/daemon/SessionOutcomes.h"
#include "hosts/daemon/SoonDue.h"

#include <deque>
#include <vector>

class PinnedConsoleUser;
class ScheduleKeeper;

/// Decides what becomes of occurrences, has each performed in its place, and notes what became of it. Every
/// one ends in exactly one line of the log that says so, and one more where an agent has something to add.
/// No code of a plug-in runs in this process: performers ask them, and act.
///
/// BLOCKING: handing an occurrence to an agent waits as a request of WDCommunicationCenter does.
class OccurrencePerformer : public QObject
{
    Q_OBJECT
public:
    /// All must outlive the object.
    OccurrencePerformer(ScheduleKeeper &keeper, Performances &performances, PlugInAnswers &answers,
                        std::shared_ptr<PinnedConsoleUser> console, dozely::Clock &clock);

    /// Takes up the actions that an earlier daemon began. Once, when the schedules have been read.
    void takeUp() { m_actions.takeUp(); }

    /// Makes ready what comes due soon, unless something is to be started first (SoonDue).
    void prepareSoonDue();

    /// When there is next something to make ready; absent when there is nothing.
    std::optional<QDateTime> nextPreparation() const { return m_soonDue.next(); }

    /// Decides what becomes of those that came due or were asked for. One is skipped when it is later than
    /// MissedRule allows, or when another action of its schedule goes on and that is not to be, and held back
    /// in the scheduler while it is for a session whose agent cannot be reached. The others are recorded as
    /// begun, all of them at once, and then to be started. As an agent may take its time to answer, those for
    /// sessions stay as they are while there are some for the daemon. The disk has it all before the log has
    /// a line of it.
    void decide(const QList<Occurrence> &due);

    /// Whether something was decided upon and not started.
    bool hasMore() const { return !m_ready.empty(); }
    /// Whether what startNext would start is nothing that came due by its date.
    bool isNextAskedFor() const { return hasMore() && m_ready.front().occurrence.isAskedFor; }

    /// Starts the next.
    void startNext();

    /// Records that what was not started has not begun. For the end of the daemon.
    void takeBack();

    /// One that an agent hands back to be performed here.
    void performHandedBack(const Occurrence &occurrence);

    /// What agents say of what they were handed.
    SessionOutcomes &sessionOutcomes() { return m_sessionOutcomes; }

    /// Tells when something that was held back is due again.
    const AgentWaits &waits() const { return m_waits; }

Q_SIGNALS:
    /// Something that waited for its plug-in's answers is due again, or can be announced.
    void tryAgain();

private:
    enum class Place { AsConfigured, Daemon };
    /// One that is to be started, in the daemon or in the session of a user.
    struct Ready {
        Occurrence occurrence;
        PlugInAnswers::Answers answers;
        std::optional<quint32> user;
    };
    /// One that is neither skipped nor impossible.
    struct Possible {
        Occurrence due;
        Occurrence occurrence; ///< Of several that are due the one to be performed.
        PlugInAnswers::Answers answers;
        MissedRule rule;
        OccurrenceSeries::Run missed; ///< Those before it that are not.
        bool isForSession;
    };
    std::chrono::milliseconds waitForAnswers(const OccurrenceRecord::Key &key);
    void takeAnswers();
    std::optional<Possible> examine(const Occurrence &occurrence, Place place, bool mayBeTooLate);
    void begin(std::vector<Ready> &&ready);
    void waitForAgent(const Ready &ready);
    void takeBackThoseFor(quint32 userId);
    void actInUserAgent(const Ready &ready);
    void noteDelivery(const Ready &ready, AgentPosts::Delivery delivery, std::chrono::milliseconds took);
    std::optional<quint32> reachableUser(const Possible &possible);
    void decideOne(const Occurrence &occurrence, std::vector<Ready> &ready,
                   std::vector<Possible> &forSessions);
    bool isGoingOn(const QString &identifier) const;
    void skip(const Occurrence &due, const OccurrenceSeries::Run &run, const QString &why = {});
    void tell(const QString &line);
    void noteUnknown(const Occurrence &occurrence, quint32 userId);
    void notPerformed(const Occurrence &occurrence, const QString &why);

    ScheduleKeeper &m_keeper;
    std::shared_ptr<PinnedConsoleUser> m_console;
    dozely::Clock &m_clock;
    PlugInAnswers &m_answers;
    AgentPosts m_posts;
    DaemonActions m_actions;
    QStringList m_lines; // for the log, once the disk has what they tell
    bool m_isDeciding = false;
    std::deque<Ready> m_ready;                                            // recorded as begun
    QHash<OccurrenceRecord::Key, std::chrono::milliseconds> m_unanswered; // since when, on the steady clock
    QList<Occurrence> m_handedBack;                                       // the same
    AgentWaits m_waits;
    SoonDue m_soonDue;
    FailureReports m_failures;
    SessionOutcomes m_sessionOutcomes;
};
