// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// The option that has a command run on another machine, over ssh, as the tool there does it for the user
/// there. BLOCKING: until that has ended.
namespace RemoteHost
{
/// Runs "dozely-admin" with `arguments`, which are those of this process, but for `--host`, on `host`, and
/// gives its exit status. What "apply" reads is this machine's; all other files are those of that one. Raises
/// AdminError when that machine cannot be reached.
int run(const QString &host, const QStringList &arguments);

/// The arguments of ssh for that.
QStringList commandFor(const QString &host, const QStringList &arguments);
} // namespace RemoteHost
