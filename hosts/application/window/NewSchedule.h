// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionSides.h"

#include <QVariantMap>

/// What a schedule begins with that a person adds.
namespace NewSchedule
{
/// The action that is chosen for it at first; empty where there is none at all.
QString usualAction(const ActionSides &sides);

/// Its values: switched on, with what the action's side says, at the next full hour but one, in the session
/// of `user`.
QVariantMap values(ActionSides &sides, const QString &action, quint32 user);

/// A ready wish as one that this user adds, with what the action's side says beside it.
QVariantMap ofWish(ActionSides &sides, const QVariantMap &wish, quint32 user);
} // namespace NewSchedule
