// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/performing/ActionLimits.h"

#include <QDateTime>
#include <QString>
#include <QVariantMap>

#include <optional>

/// What a performer is told to do: one occurrence of one schedule, and within which limits. A plain value,
/// which travels over an inherited descriptor.
struct PerformanceOrder {
    /// Which of the bundle's classes acts: the daemon's, or the one for the user's session.
    enum class Role { Daemon, Session };

    QString schedule;            ///< Its name, for people.
    QString bundlePath;          ///< The full path.
    QVariantMap parameters = {}; ///< The plug-in's.
    QDateTime date = {};         ///< The occurrence's, in its time zone.

    /// The file that stands for this performance, which the performer locks as long as it goes on: the full
    /// path. What became of it is written beside it (PerformanceOutcome::pathBeside).
    QString place = {};
    QByteArray placeMark = {}; ///< That file begins with it, and is not taken for the next one there.

    ActionLimits limits = {};

    /// What is to be done with the occurrence, by the plug-in's class in its own way.
    enum class Deed {
        Act,      ///< WDDaemonPlugIn::actInDaemon.
        HandOver, ///< actInUserAgentNow: for classes that have one of their own (PlugInAnswer).
        Announce, ///< anticipateInUserAgentNow.
    };
    Deed deed = Deed::Act;

    /// Who counts as the user at the console while the plug-in is at work, so that whom it tells is whom the
    /// host had in mind; absent for whoever is there.
    /// @{
    std::optional<quint32> consoleUser = {};
    QString consoleUserName = {};
    /// @}

    Role role = Role::Daemon;

    QString scheduleIdentifier = {}; ///< Where that matters to the host; else empty.

    QByteArray toData() const;

    /// An error for what toData has not written.
    static dozely::Result<PerformanceOrder> fromData(const QByteArray &data);

    bool operator==(const PerformanceOrder &) const = default;
};
