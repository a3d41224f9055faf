// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

namespace dozely
{

/// Property lists, XML and binary. Values: bool, qint64 (quint64 for what is larger), double, QString,
/// QByteArray, QDateTime (UTC), QVariantList, QVariantMap.
namespace PropertyList
{
enum class Format { Xml, Binary };

/// The limits name the attacks: a list of a few hundred bytes that refers to the same object over and over
/// unfolds to gigabytes, and deep nesting overruns the stack.
constexpr qint64 maximumSize = 1 << 20; // bytes
constexpr int maximumDepth = 64;        // containers within containers
constexpr int maximumNodes = 100'000;   // values after unfolding shared references

/// Parses `data`, and says in `format` which form it has. The error says what is no property list,
/// or which limit it breaks.
DOZELYKIT_EXPORT Result<QVariant> fromData(const QByteArray &data, Format *format = nullptr);

/// Reads a regular file of at most maximumSize bytes and parses it. A file that changes while it is read is
/// no worse than a damaged one. Never follows a final symbolic link when `followLinks` is false.
DOZELYKIT_EXPORT Result<QVariant> fromFile(const QString &path, Format *format = nullptr,
                                           bool followLinks = true);

/// Null when `value` holds something that a property list of this form cannot carry, or when fromData would
/// refuse the result for its size, its depth or its number of values. XML carries whole seconds of the years
/// 1 to 9999; binary lists carry milliseconds, as far as 71,000 years from 2001.
DOZELYKIT_EXPORT QByteArray toData(const QVariant &value, Format format);
} // namespace PropertyList

} // namespace dozely
