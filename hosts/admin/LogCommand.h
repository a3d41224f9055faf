// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVariantMap>

class AdminOptions;

/// The command that shows the shared log.
namespace LogCommand
{
/// Shows the last lines, and with `--follow` goes on until the process is ended. Raises AdminError when there
/// is no log to show.
void run(const AdminOptions &options);

/// The parts of a log line as `--json` shows them: "stamp" and "message", and for a line of one of the
/// system's processes "process", "parent", "user" and "role". A line of another form has only "message".
QVariantMap parts(const QByteArray &line);
} // namespace LogCommand
