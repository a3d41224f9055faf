// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QVariant>

/// A file in which people and programs say what they want: a property list, JSON or YAML.
namespace StructuredFile
{
/// The value in a file's bytes, which themselves tell its form: dictionaries, lists, texts, whole numbers
/// (qint64), numbers (double), booleans, and of property lists data and dates. Refused are more than 16 MiB,
/// 64 levels and 1,600,000 values, and what may mean more than it says: aliases, tags and keys that stand
/// twice in YAML.
dozely::Result<QVariant> parse(const QByteArray &data);
} // namespace StructuredFile
