// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// One schedule in the window: as the daemon has it, and as the person wants it. A plain value; the keys are
/// those of ScheduleKey.
struct BookEntry {
    QString key;        ///< By which it is known in this process; never changes.
    QString identifier; ///< By which the daemon knows it; empty while it does not.

    /// What can be set: as the daemon has it, and as it is wanted. Absent where there is none: a new one has
    /// nothing applied, one that is to be removed nothing wanted.
    /// @{
    std::optional<QVariantMap> applied;
    std::optional<QVariantMap> wanted;
    /// @}

    QDateTime next;                  ///< When it takes place next, as the daemon says; invalid: not at all.
    QString revision;                ///< Of what is applied.
    bool mayChange = true;           ///< Whether the caller may change it without a password.
    QString failure;                 ///< Why it could not be applied, a sentence; empty: no such thing.
    bool isInfeasible = false;       ///< It failed because nothing could come of it.
    bool isChangedElsewhere = false; ///< Somebody else changed the same as the person here, since.

    bool isChanged() const { return wanted != applied; }

    /// What is wanted under a key; invalid for what is not there.
    QVariant value(const QString &name) const { return wanted ? wanted->value(name) : QVariant(); }

    /// What must be told to the daemon, so that it has what is wanted. Only where both are there.
    QVariantMap changes() const;

    /// Takes over what the daemon tells (an answer to Get or List). What the person has changed stays
    /// changed, and is marked where somebody else has changed it, too.
    void takeOver(const QVariantMap &told);

    /// The daemon has it no longer.
    void takeOverRemoval();
};
