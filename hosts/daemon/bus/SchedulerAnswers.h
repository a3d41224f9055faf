// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/daemon/OccurrenceRecord.h"
#include "hosts/daemon/WakeTrial.h"
#include "hosts/daemon/bus/BusCaller.h"
#include "hosts/daemon/bus/PolkitAuthority.h"

#include <QDateTime>
#include <QHash>
#include <QVariantMap>

#include <optional>

namespace dozely
{
class Clock;
} // namespace dozely

class ScheduleKeeper;
class UpcomingOccurrences;
struct Occurrence;
struct RecordedOccurrence;
struct Schedule;

/// What is told on the bus of schedules and their occurrences: the dictionaries of docs/bus.md. It decides
/// nothing and changes nothing.
///
/// THREADING: the main thread. BLOCKING: for the disk.
class SchedulerAnswers
{
public:
    /// So many occurrences are told at once.
    static constexpr qsizetype mostTold = 1000;

    /// Both must outlive the object.
    SchedulerAnswers(ScheduleKeeper &keeper, const dozely::Clock &clock);

    /// All schedules, and one of them, for a caller of that standing.
    /// @{
    QVariantList list(const BusCaller &caller, const PolkitAuthority::Standing &standing) const;
    QVariantMap schedule(qint32 place, const BusCaller &caller,
                         const PolkitAuthority::Standing &standing) const;
    /// @}

    /// What comes from `from` on up to `until` (invalid for open), of one schedule or of all.
    QVariantList next(const std::optional<qint32> &place, const QDateTime &from, const QDateTime &until,
                      qsizetype most) const;

    /// What became of occurrences, newest first: of one schedule, or, without one, of those of `owner`, or
    /// of all without that, too.
    dozely::Result<QVariantList> history(const std::optional<QString> &identifier,
                                         const std::optional<quint32> &owner, qsizetype most) const;

    QVariantMap occurrence(const Occurrence &occurrence) const;

    /// What became of one that is over, but for what is nobody's business but his whose it is; empty for one
    /// that is not over.
    QVariantMap outcomeForAll(const OccurrenceRecord::Key &key) const;

    /// What a test of the clock that wakes the machine has shown.
    static QVariantMap wakeTrial(const WakeTrial::Finding &finding);

private:
    using Places = QHash<QString, QString>; // where bundles act that decide themselves, by path
    QVariantMap describe(qint32 place, const BusCaller &caller, const PolkitAuthority::Standing &standing,
                         Places &places) const;
    QList<RecordedOccurrence> known(const Schedule &schedule) const;

    ScheduleKeeper &m_keeper;
    const dozely::Clock &m_clock;
};
