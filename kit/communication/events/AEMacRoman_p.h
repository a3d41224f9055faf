// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QString>

namespace dozely
{

/// Text in Mac OS Roman, one byte a character.
namespace AEMacRoman
{
/// `bytes` decoded; each of the 256 has a character of its own.
DOZELYKIT_AUTOTEST_EXPORT QString decoded(const QByteArray &bytes);

/// `text` encoded; a character that Mac OS Roman does not have becomes "?". Characters that are composed of
/// several are put together first.
DOZELYKIT_AUTOTEST_EXPORT QByteArray encoded(const QString &text);
} // namespace AEMacRoman

} // namespace dozely
