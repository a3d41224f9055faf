// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/Performances.h"
#include "hosts/common/plugins/ActionInhibitor.h"
#include "hosts/daemon/Scheduler.h"

#include <QHash>
#include <QObject>

class PlugInAnswers;
class ScheduleKeeper;

/// The actions that are the daemon's own to perform, each in a performer: from the moment before its date, at
/// which the performer is made ready, to its end, which is noted and told in the log. Meanwhile the machine
/// is kept from falling asleep by itself (ActionInhibitor).
///
/// An action outlives the daemon; the next one takes it up again.
///
/// THREADING: the main thread. BLOCKING: perform and prepare, until a program runs, some milliseconds.
class DaemonActions : public QObject
{
    Q_OBJECT
public:
    /// So many performers at most wait for the dates of their occurrences.
    static constexpr qsizetype mostPrepared = 32;

    /// All must outlive the object. Removes what is left of everything but of what the record says was begun.
    DaemonActions(ScheduleKeeper &keeper, Performances &performances, PlugInAnswers &answers);

    /// Where performers have their files, and where while the disk refuses; made, and closed to others, when
    /// it is not there.
    /// @{
    static QString folder();
    static QString spareFolder();
    /// @}

    /// The name of an occurrence's performance.
    static QString nameOf(const OccurrenceRecord::Key &key);

    /// Takes up what the record says was begun. Once, when the schedules have been read.
    void takeUp();

    /// Has a performer made ready. It may find that it cannot; that is told when the time has come. Nothing
    /// happens for an occurrence that was prepared before, even in vain, nor when there are enough.
    void prepare(const Occurrence &occurrence, const QVariantMap &bundleInfo);
    bool mayPrepare(const Occurrence &occurrence) const;

    /// Ends what was prepared for occurrences that are not to be performed any more, or not like that.
    void callOffUnless(const std::function<bool(const Occurrence &)> &isToBePerformed);

    /// Performs an occurrence that is recorded as begun.
    void perform(const Occurrence &occurrence, const QVariantMap &bundleInfo);

    /// Takes back all to which no performer has come yet: it is as if they had not begun.
    void takeBack();

    /// Whether some action of a schedule goes on.
    bool isGoingOn(const QString &identifier) const;

Q_SIGNALS:
    /// An action was noted, and logged, as one that failed or was not performed.
    void failed(const Occurrence &occurrence, const QString &why);

private:
    using Key = OccurrenceRecord::Key;
    static Key keyOf(const Occurrence &occurrence);
    dozely::Result<void> start(const Occurrence &occurrence, const QVariantMap &bundleInfo);
    void startNow(const Occurrence &occurrence, const QVariantMap &bundleInfo);
    void ended(const Occurrence &occurrence, const PerformanceOutcome &outcome);
    void endedLater(const Occurrence &occurrence, const PerformanceOutcome &outcome);

    ScheduleKeeper &m_keeper;
    Performances &m_performances;
    PlugInAnswers &m_answers;
    ActionInhibitor m_inhibitor;
    struct Prepared {
        Occurrence occurrence;
        bool isInVain; ///< Its performer has ended.
    };
    struct Acting {
        Occurrence occurrence;
        std::shared_ptr<const void> awake; ///< Keeps the machine so.
        QVariantMap bundleInfo;
        bool mayStartAnew = false; ///< If its performer, which was made ready, has not heard that it may act.
    };
    QHash<Key, Prepared> m_prepared;
    QHash<Key, Acting> m_acting;
    QStringList m_noted; // names of what has ended and is not on disk yet
};
