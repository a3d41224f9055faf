// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QStringList>
#include <QTimeZone>

#include <optional>

class AdminOptions;

/// The option that says from when on something repeats.
struct StartOptions {
    QDateTime now;                 ///< UTC.
    QDateTime notBefore;           ///< UTC: nothing takes place before it.
    std::optional<QDateTime> from; ///< UTC: what `--from` says, a day being its begin; absent without it.
    std::optional<QTime> time;     ///< The time of day in `--from`.
    QStringList remarks;           ///< Sentences for the person.

    /// What `--from` says by clocks in a zone. Raises AdminError when it is wrong, past, or can be read in
    /// two ways.
    static StartOptions read(const AdminOptions &options, const QTimeZone &zone);
};
