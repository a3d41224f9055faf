// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QHash>

namespace dozely
{

/// Tables of localised texts, the content of a file "Localizable.strings".
namespace StringsFile
{
/// The table in `data`: lines `"key" = "value";` with comments (`/* */`, `//`) and the escapes \n \r \t \" \'
/// \\ \uXXXX, in UTF-8, or in UTF-16 behind a byte order mark; or a property list whose root is a dictionary
/// of texts. A key or value of letters, digits and _ . - / $ needs no quotes. A later entry replaces an
/// earlier one of its key.
///
/// An error when `data` is anything else, or larger than PropertyList::maximumSize.
DOZELYKIT_AUTOTEST_EXPORT Result<QHash<QString, QString>> parse(const QByteArray &data);
} // namespace StringsFile

} // namespace dozely
