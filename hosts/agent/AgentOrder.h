// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QDateTime>
#include <QString>
#include <QVariantMap>

struct ReceivedOrder;

/// What an order that is to be obeyed says: which occurrence the agent is to perform or to announce.
struct AgentOrder {
    QString bundlePath;
    QDateTime date;
    QVariantMap parameters;
    QString schedule = {};           ///< Its name, for people; empty from a daemon that does not tell.
    QString scheduleIdentifier = {}; ///< The same.
    bool skipsOverlap = false;       ///< Not to be performed while another action of that schedule goes on.

    bool operator==(const AgentOrder &) const = default;

    /// The order in what was received. The error says why it is refused: it is not from the system, names
    /// no date or no bundle, or has something else in the place of its parameters.
    static dozely::Result<AgentOrder> in(const ReceivedOrder &received);
};
