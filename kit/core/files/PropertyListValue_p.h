// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/PropertyList.h"

#include <QByteArrayView>
#include <QDateTime>

#include <optional>

namespace dozely
{

/// What both forms of a property list, XML and binary, have in common.
namespace PropertyListValue
{
/// What a property list knows; None is everything else.
enum class Kind { None, Boolean, Integer, Real, Text, Data, Date, DamagedDate, Array, Dictionary };

/// The kind as which `value` is written.
Kind kindOf(const QVariant &value);

/// Whether a list of this form can carry `value` and be read back: no limit is broken, no date is out of
/// range, and no text holds what the form has no place for.
bool fits(const QVariant &value, PropertyList::Format format, const PropertyList::Terms &terms = {});

/// An integer as a qint64, or as a quint64 when it is too large for that.
QVariant integer(quint64 number);

/// Binary dates count seconds from the start of 2001 UTC, in a double, to the nearest millisecond. Absent for
/// what is no number, is infinite, or lies more than 71,000 years away, where a double no longer tells every
/// millisecond.
std::optional<QDateTime> dateAfter2001(double seconds);

/// The other way; `date` lies in that range.
double secondsAfter2001(const QDateTime &date);

/// Absent when the bytes are no UTF-8. A byte order mark is a character like others.
std::optional<QString> fromUtf8(QByteArrayView bytes);

/// The clauses for the limits that both forms have.
QString tooDeep();
QString tooMany(const PropertyList::Terms &terms);
} // namespace PropertyListValue

} // namespace dozely
