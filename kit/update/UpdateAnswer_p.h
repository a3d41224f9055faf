// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <QVariantMap>

namespace dozely
{

/// What the update server answers, a stranger's text: a JSON object in UTF-8.
namespace UpdateAnswer
{
constexpr qint64 largest = 1 << 20; // bytes
constexpr int deepest = 64;         // objects and lists within one another, the outermost counted

/// The object in `data`; an error, the end of a sentence, when it is none or breaks a limit.
DOZELYKIT_AUTOTEST_EXPORT Result<QVariantMap> parse(const QByteArray &data);

/// Whether the answer's version is newer than the installed one. Its number is taken at 32 bits and then
/// without its sign, so -1 is newer than most; a number that is missing is 0.
DOZELYKIT_AUTOTEST_EXPORT bool isNewer(const QVariantMap &answer, quint64 installed);

/// The latest version as people call it; null when the answer has none, or not as text.
DOZELYKIT_AUTOTEST_EXPORT QString versionString(const QVariantMap &answer);

/// Where the latest version is to be had; invalid when the answer has no valid address. Of any scheme.
DOZELYKIT_AUTOTEST_EXPORT QUrl downloadAddress(const QVariantMap &answer);
} // namespace UpdateAnswer

} // namespace dozely
