// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/daemon/AnticipationPlan.h"

#include <chrono>
#include <optional>

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

    /// The same for somebody of whom it is known that he may: `who` is for the log. The next occurrence, or
    /// that with this date; the date of the one that is left out, and when it takes place.
    /// @{
    dozely::Result<QDateTime> skipOf(const QString &identifier, const std::optional<QDateTime> &date,
                                     const QString &who);
    dozely::Result<QDateTime> postponeOf(const QString &identifier, const std::optional<QDateTime> &date,
                                         std::chrono::seconds delay, const QString &who);
    /// @}

    /// Whether a user is obeyed about that occurrence although the schedule may be another's: he was told of
    /// it.
    bool isObeyed(const QString &identifier, const std::optional<QDateTime> &date, quint32 user) const;

    /// So far at most an occurrence is postponed at once.
    static constexpr qint64 longestDelay = 366LL * 24 * 3600; // seconds

    /// So many of a schedule's occurrences at most are removed in advance.
    static constexpr qsizetype mostAhead = 100;

private:
    QList<Occurrence> meant(const ReceivedOrder &order, bool mayBeAhead) const;
    Occurrence meantOf(const QString &identifier, const QVariant &date, bool mayBeAhead) const;
    void skipOne(const Occurrence &occurrence, const QDateTime &upTo, const QString &sender);
    void skipDayOf(const Occurrence &occurrence, const QString &sender);
    QDateTime postponeOne(const Occurrence &occurrence, qint64 delay, const QString &sender);

    ScheduleKeeper &m_keeper;
    const AnticipationPlan &m_anticipation;
    const dozely::Clock &m_clock;
    const AnticipationPlan::ConsoleUserNow m_consoleUser;
};
