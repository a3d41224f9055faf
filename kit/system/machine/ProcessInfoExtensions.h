// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QList>
#include <QString>

/// Which processes run. The name is compared whole and with its case, as the kernel keeps it: Linux cuts a
/// name after 15 bytes, and a longer one is never found.
///
/// THREADING: any thread. BLOCKING: the process table is read afresh each time.
namespace zandorSoftwaresExtensions
{
/// The process ids of the running processes with that name, in the order of the process table; empty when
/// there are none or the table cannot be read.
DOZELYKIT_EXPORT QList<qint32> pidsOfProcessesWithName(const QString &name);

/// The real user ids of the same processes, in the same order; one id as often as that user has such a
/// process.
DOZELYKIT_EXPORT QList<quint32> uidsOfProcessesWithName(const QString &name);
} // namespace zandorSoftwaresExtensions
