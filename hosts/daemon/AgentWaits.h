// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/Scheduler.h"
#include "hosts/daemon/StoreWatcher.h"

#include <QHash>
#include <QObject>

#include <memory>
#include <optional>

/// Occurrences whose agent cannot be reached, until it can or their time is over.
///
/// Whether an agent is there is found out by a ping, before anything of an occurrence is sent and before the
/// record says "begun": so what waits has certainly not been performed, nor does waiting lose it when the
/// daemon ends meanwhile. One that has answered within the last minute is not asked first: when it cannot be
/// reached all the same, nothing was sent to it, and "begun" is taken back. An occurrence that was sent is
/// never sent again.
///
/// What waits is held back in the scheduler. It is let go, for `tryAgain`, when something changes in the
/// folder of sockets, and every now and then in any case.
///
/// THREADING: the main thread.
class AgentWaits : public QObject
{
    Q_OBJECT
public:
    /// Both must outlive the object.
    AgentWaits(dozely::Clock &clock, Scheduler &scheduler);
    ~AgentWaits() override;

    /// Whether the agent of `userId` answers, or has answered lately. One that took long not to answer is let
    /// be for ten times as long. BLOCKING: as a ping of WDCommunicationCenter.
    bool isReachable(quint32 userId);

    /// Whether the agent of `userId` is one that took long not to answer, and is let be.
    bool isLetBe(quint32 userId) const;

    /// The user whose agent an occurrence waits for; absent when it does not wait, or for anybody.
    std::optional<quint32> userOf(const Occurrence &occurrence) const;

    /// Whether it waits.
    bool contains(const Occurrence &occurrence) const;

    /// Has an occurrence wait, or wait longer, for the agent of `userId`, or, without one, for anybody at the
    /// console; false when its time is over. That is as late as `allowed` says, any time without it; but at
    /// least 15 s from now on where the socket of an agent that is there may have been taken away, as this
    /// daemon itself does when it starts, since an agent notices that within 10 s.
    bool wait(const Occurrence &occurrence, std::optional<quint32> userId,
              std::optional<std::chrono::milliseconds> allowed);

    /// The agent of `userId` has answered just now.
    void noteAnswer(quint32 userId);

    /// Something that was to be sent to the agent of `userId` failed after so long: as if it had not
    /// answered.
    void noteFailure(quint32 userId, std::chrono::milliseconds duration);

    /// It waits no more, whatever became of it.
    void end(const Occurrence &occurrence);

Q_SIGNALS:
    /// Something that waited is due again.
    void tryAgain();

private:
    struct Wait {
        std::optional<quint32> userId;
        QDateTime deadline; // invalid for none
    };
    using Waits = QHash<OccurrenceRecord::Key, Wait>;

    void stopWatching();
    void noticeChange();
    void attemptAfter(std::chrono::milliseconds delay);
    void attempt();

    dozely::Clock &m_clock;
    Scheduler &m_scheduler;
    const std::chrono::milliseconds m_start;
    Waits m_waits;
    QHash<quint32, std::chrono::milliseconds> m_lastAnswer; // absent after a failure
    QSet<quint32> m_everReached;                            // by this daemon
    QHash<quint32, std::chrono::milliseconds> m_letBeUntil;
    std::unique_ptr<StoreWatcher> m_sockets; // while something waits
    std::chrono::milliseconds m_delay;       // until the next attempt
    quint64 m_attempt = 0;                   // the latest that was planned
};
