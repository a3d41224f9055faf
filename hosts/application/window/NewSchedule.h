// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionSides.h"

#include <QList>
#include <QVariantMap>

/// What a schedule begins with that a person adds.
namespace NewSchedule
{
/// A schedule that many people want, ready but for what only they know.
struct Wish {
    QString name;
    QString description; ///< A sentence.
    QString action;      ///< The path of its bundle.
    QVariantMap parameters;
    QTime time;
    QString rule;            ///< How often, as an RRULE.
    bool isOfSystem = false; ///< It acts for the machine rather than in the user's session.
    QVariantMap values;      ///< What else is not as usual.
};

/// Those whose bundles are there.
QList<Wish> wishes(ActionSides &sides);

/// The values of a schedule for a wish, from its next time on.
QVariantMap values(ActionSides &sides, const Wish &wish, quint32 user);

/// The action that is chosen for it at first; empty where there is none at all.
QString usualAction(const ActionSides &sides);

/// Its values: switched on, with what the action's side says, at the next full hour but one, in the session
/// of `user`.
QVariantMap values(ActionSides &sides, const QString &action, quint32 user);
} // namespace NewSchedule
