// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/DateTerms.h"

#include <QDateTime>
#include <QString>
#include <QTimeZone>

class AdminOptions;

/// The options that say when something takes place once: `--date` with `--time-zone`, or `--in`. All raise
/// AdminError when they are wrong, or can be read in two ways.
namespace DateOptions
{
struct Moment {
    QDateTime date;   ///< UTC, whole seconds.
    QString timeZone; ///< IANA name.
    QString remark;   ///< A sentence for the person when the date is not the one that was asked for.
};

/// The zone of `--time-zone`, "machine" being the machine's, or else of `usual`.
QTimeZone zone(const AdminOptions &options, const QString &usual);

/// The name of the machine's zone.
QString machineZone();

/// What a text says, by clocks in a zone. What leaves the day open is that way from now.
FriendlyTerms::Date written(const QString &text, const QTimeZone &zone,
                            DateTerms::Towards towards = DateTerms::Towards::ToCome);

/// The moment at which clocks in a zone show a date that `text` says, past or not. A day alone is refused.
Moment inZone(const FriendlyTerms::Date &date, const QString &text, const QTimeZone &zone);

/// The moment that the options name, in `usualZone` unless they name one. One that is past is refused.
Moment read(const AdminOptions &options, const QString &usualZone = machineZone());
} // namespace DateOptions
