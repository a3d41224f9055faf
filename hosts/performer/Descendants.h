// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <sys/types.h>

/// The processes that began in one, whatever sessions and groups they have made for themselves. Those whose
/// parents have ended count as long as this process takes them in (PR_SET_CHILD_SUBREAPER, prctl(2)).
namespace Descendants
{
/// All that live now; those that have ended and were not waited for do not. BLOCKING: reads /proc.
QList<pid_t> of(pid_t ancestor);

/// Sends them all a signal; how many there were.
qsizetype signal(pid_t ancestor, int number);
} // namespace Descendants
