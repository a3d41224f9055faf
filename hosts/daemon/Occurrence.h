// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"
#include "hosts/daemon/OccurrenceRecord.h"

#include <optional>

/// One date at which a schedule's action is to run.
struct Occurrence {
    Schedule schedule;
    QDateTime date; ///< UTC. Differs from the schedule's own for an action that was asked for by hand.
    bool mayHaveRun = false;    ///< It fell due in a time of which nothing is known.
    bool isAskedFor = false;    ///< By hand, apart from all others of the schedule.
    QDateTime postponedTo = {}; ///< UTC; invalid for one that is not postponed.

    /// What the record tells it by.
    OccurrenceRecord::Key key() const { return {schedule.identifier, date}; }

    /// When it is to be performed, UTC: its date, or what it is postponed to.
    const QDateTime &moment() const { return postponedTo.isValid() ? postponedTo : date; }

    /// Whether it is not to be performed while another action of the schedule goes on. What is asked for is,
    /// and so is what a schedule that does not repeat has, unless it says otherwise.
    bool skipsOverlap() const;

    /// The moment in the schedule's time zone: what plug-ins and agents are told, and tell it by.
    QDateTime calendarDate() const;

    /// The user in whose session alone it may act; absent for one of root's, which acts for whoever is there.
    std::optional<quint32> onlyUser() const;

    /// What a line of the log calls it: "Schedule "Backup"".
    QString label() const;
};
