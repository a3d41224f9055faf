// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

/// What became of one performance, as its performer saw it. A plain value; on disk until the host has taken
/// it over, so that a host which was started again meanwhile finds it.
struct PerformanceOutcome {
    /// Of what an action writes to its standard streams the last so many bytes are kept.
    static constexpr qsizetype mostOutput = 64 << 10;

    bool hasBegun = false; ///< Whether the action was called, for all that is known.
    QString failure = {};  ///< A clause that says why it is none that succeeded; else empty.
    /// Of the program that it ran, where there was one; negative when that could not be started.
    std::optional<qint64> exitStatus = {};
    QDateTime ended = {};   ///< UTC; invalid when the performer ended without a word.
    QByteArray output = {}; ///< What the action wrote last.

    /// What became of an occurrence that was to be handed over or announced.
    enum class Delivery {
        None,     ///< It was not tried.
        Received, ///< The agent has it.
        NotSent,  ///< The agent has certainly not had it, nor will it.
        Unknown,  ///< The agent may have it.
    };
    Delivery delivery = Delivery::None;

    /// Whether the plug-in had its process end, by a crash or by itself. One that had to be killed is none
    /// such: that may be another's fault.
    bool hasDied = false;
    bool hasRaised = false; ///< Whether the failure is what the action raised.

    /// Whether it came to the action itself, and to the program that it runs.
    bool isPerformed() const { return hasBegun && exitStatus.value_or(0) >= 0; }
    /// Whether nothing went wrong, for all that is known.
    bool isSuccess() const { return isPerformed() && failure.isEmpty() && exitStatus.value_or(0) == 0; }

    /// A clause that says why it is none that succeeded; empty for one that is.
    QString reason() const;

    QByteArray toData() const;

    /// An error for what toData has not written.
    static dozely::Result<PerformanceOutcome> fromData(const QByteArray &data);

    /// The file for the outcome of the performance at `place`.
    static QString pathBeside(const QString &place) { return place + ".outcome"; }
    /// The same while it is written.
    static QString unfinishedPathBeside(const QString &place) { return pathBeside(place) + ".new"; }

    bool operator==(const PerformanceOutcome &) const = default;
};
