// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>

#include <optional>

namespace dozely
{

/// The record of a process in the folder of those that use Apple events.
namespace EventProcessRecord
{
/// A record's name: the process id, "-", and 16 random hexadecimal digits, so that nobody can have taken it
/// before.
QByteArray freshName(qint32 identifier);

/// The process id in a record's name; absent for a name of another form.
DOZELYKIT_AUTOTEST_EXPORT std::optional<qint32> identifierIn(const QByteArray &name);

/// The socket's name beside the record's.
inline QByteArray socketOf(const QByteArray &name)
{
    return name + ".socket";
}

/// Whether no process has this id.
bool isGone(qint32 identifier);

/// Makes the record, locked and still without content, which does not count yet; a descriptor that holds the
/// lock until it is closed, or -1.
int create(int folder, const QByteArray &name);

/// Writes the content: from now on the record counts. False on failure.
bool complete(int record, OSType signature);

/// Whether the record that this process holds is still where others look for it, and a socket of this user's
/// beside it.
bool isInPlace(int record, const QByteArray &name);

/// What the record says of a process that runs now; absent for any other record. Never for this process's
/// own records: closing them would give up their locks.
DOZELYKIT_AUTOTEST_EXPORT std::optional<AEProcesses::Process> read(int folder, const QByteArray &name);

/// Removes this user's records that nobody holds any more, and their sockets.
DOZELYKIT_AUTOTEST_EXPORT void sweep(int folder);
} // namespace EventProcessRecord

} // namespace dozely
