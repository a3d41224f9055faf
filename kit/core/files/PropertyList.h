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

/// Stands for a date that is none, or out of range, where Terms have such a one kept: what stands there, to
/// be written again as it is in a list of the same form.
struct DamagedDate {
    QByteArray content;
    bool operator==(const DamagedDate &) const = default;
};

/// On what terms a list is read and written.
struct Terms {
    qint64 size = maximumSize;               ///< At most so many bytes,
    int nodes = maximumNodes;                ///< so many values,
    qint64 unfoldedBytes = 16 * maximumSize; ///< and so many bytes of texts and data after unfolding.
    bool keepsDamagedDates = false;          ///< Otherwise one refuses the whole list.
};

/// Those of a file that root alone writes, as large as it may be: it need not be kept from its own owner.
constexpr Terms ofTheSystem{16 * maximumSize, 16 * maximumNodes, 64 * maximumSize, true};

/// Parses `data`, and says in `format` which form it has. The error says what is no property list,
/// or which limit it breaks.
DOZELYKIT_EXPORT Result<QVariant> fromData(const QByteArray &data, Format *format = nullptr,
                                           const Terms &terms = {});

/// Reads a regular file of at most maximumSize bytes and parses it. A file that changes while it is read is
/// no worse than a damaged one. Never follows a final symbolic link when `followLinks` is false.
DOZELYKIT_EXPORT Result<QVariant> fromFile(const QString &path, Format *format = nullptr,
                                           bool followLinks = true);

/// Null when `value` holds something that a property list of this form cannot carry, or when fromData would
/// refuse the result for its size, its depth or its number of values. XML carries whole seconds of the years
/// 1 to 9999; binary lists carry milliseconds, as far as 71,000 years from 2001.
DOZELYKIT_EXPORT QByteArray toData(const QVariant &value, Format format, const Terms &terms = {});
} // namespace PropertyList

} // namespace dozely

Q_DECLARE_METATYPE(dozely::PropertyList::DamagedDate)
