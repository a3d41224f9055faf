// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QTimeZone>

/// Finds lines of the shared log by their time. A line has no year: it is the latest that lets it lie before
/// the line after it, some weeks aside by which somebody may have set the clock.
namespace LogLines
{
/// What a person may look at.
constexpr qsizetype mostLines = 2000;

struct Found {
    QList<QByteArray> lines; ///< The first ones, no more than mostLines.
    bool hasMore = false;
};

/// The lines of a file from one moment to another, by clocks in `zone`; lines without a stamp go with the one
/// before them. `now` tells the year of the last one. An error says why the file cannot be read.
/// BLOCKING: for the disk; no more than the last 16 MiB are looked at.
dozely::Result<Found> between(const QString &path, const QDateTime &from, const QDateTime &until,
                              const QDateTime &now, const QTimeZone &zone);

/// The wall time in a line's stamp, in a year; not valid where the line has none, or the year no such day.
QDateTime stampOf(const QByteArray &line, int year);
} // namespace LogLines
