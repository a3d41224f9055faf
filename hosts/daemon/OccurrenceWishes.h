// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/AnticipationPlan.h"

struct ReceivedOrder;
class ScheduleKeeper;

/// What people wish of single occurrences: that one is skipped, or performed later. Finds out which is meant,
/// obeys whom AnticipationPlan::mayRemove obeys, and notes it.
///
/// Who wishes is answered the truth: what is not refused is on disk when the operation returns.
///
/// THREADING: the main thread. BLOCKING: for the disk.
class OccurrenceWishes
{
public:
    /// All must outlive the object.
    OccurrenceWishes(ScheduleKeeper &keeper, const AnticipationPlan &anticipation, const dozely::Clock &clock,
                     AnticipationPlan::ConsoleUserNow consoleUser);

    /// Obeys "DaemonMustSkipEvent" and "DaemonMustPostponeEvent". One line in the log. Raises OrderRefusal.
    /// @{
    void skip(const ReceivedOrder &order);
    void postpone(const ReceivedOrder &order);
    /// @}

    /// So far at most an occurrence is postponed at once.
    static constexpr qint64 longestDelay = 366LL * 24 * 3600; // seconds

    /// So many of a schedule's occurrences at most are removed in advance.
    static constexpr qsizetype mostAhead = 100;

private:
    QList<Occurrence> meant(const ReceivedOrder &order, bool mayBeAhead) const;
    Occurrence meantOf(const QString &identifier, const QVariant &date, bool mayBeAhead) const;
    void skipOne(const Occurrence &occurrence, const QDateTime &upTo, const QString &sender);
    void skipDayOf(const Occurrence &occurrence, const QString &sender);
    void postponeOne(const Occurrence &occurrence, qint64 delay, const QString &sender);

    ScheduleKeeper &m_keeper;
    const AnticipationPlan &m_anticipation;
    const dozely::Clock &m_clock;
    const AnticipationPlan::ConsoleUserNow m_consoleUser;
};
