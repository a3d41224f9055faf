// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QDateTime>
#include <QString>

namespace dozely
{

/// Dates as the user reads them: in the user's locale for dates (LC_ALL, LC_TIME, LANG) and the local time
/// zone, as the machine's zone data have it.
namespace DateStyles
{
/// The date alone, of medium length: "Mar 14, 2026".
DOZELYKIT_AUTOTEST_EXPORT QString mediumDate(const QDateTime &date);

/// The time of day alone, short: "6:55 AM". The blank before AM may be a narrow one that breaks no line.
DOZELYKIT_AUTOTEST_EXPORT QString shortTime(const QDateTime &date);
} // namespace DateStyles

} // namespace dozely
