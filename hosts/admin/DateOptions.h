// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

class AdminOptions;

/// The options that say when: `--date` with `--time-zone`, or `--in`.
namespace DateOptions
{
struct Moment {
    QDateTime date;   ///< UTC, whole seconds.
    QString timeZone; ///< IANA name.
    QString remark;   ///< A sentence for the person when the date is not the one that was asked for.
};

/// The moment that `--date` names, past or not, in the zone of `--time-zone`, or else in `usualZone`. Raises
/// AdminError when it names none.
Moment readDate(const AdminOptions &options, const QString &usualZone);

/// The moment that the options name. Raises AdminError when they name none, or one that is past.
Moment read(const AdminOptions &options);
} // namespace DateOptions
