// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/admin/RuleOptions.h"

#include <QStringList>
#include <QTimeZone>

class AdminOptions;

/// The options that say how a schedule repeats: `--every` and `--on`, or `--rule`, with `--at`, `--from`,
/// `--until`, `--count` and `--endless`, `--except` and `--no-except`. All raise AdminError when they are
/// wrong, do not fit together or can be read in two ways.
namespace RecurrenceOptions
{
using Former = RuleOptions::Former;

struct Made {
    Recurrence recurrence; ///< Begins with its first occurrence from now or from `--from` on.
    QStringList remarks;   ///< Sentences for the person.
};

/// Whether one of those is there that say when it takes place, which all do but the last two.
bool areSet(const AdminOptions &options);

/// What the options make of the former.
Made read(const AdminOptions &options, const Former &former, const QTimeZone &zone);

/// Takes back the exceptions that `--no-except` names, which have to be there.
void takeBackExceptions(const AdminOptions &options, Recurrence &recurrence, const QTimeZone &zone);

/// The wall times that `--except` takes away from a recurrence.
QList<WallTime> exceptions(const AdminOptions &options, const Recurrence &recurrence, const QTimeZone &zone);
} // namespace RecurrenceOptions
