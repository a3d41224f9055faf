// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

/// Who calls the tool, and giving up root.
///
/// A process whose effective user is root wipes the socket folder when it first touches the port class: that
/// is the daemon's right alone. So this tool is never root when it first touches the channel.
namespace Identity
{
/// The person behind the call: the user who used sudo to become root, else the user who runs the tool.
quint32 caller();

/// The user of that name or number; absent when there is none of that name.
std::optional<quint32> userNamed(const QString &nameOrNumber);

/// The user's name, or the number when the user database has none.
QString nameOf(quint32 userId);

/// Becomes that user for good; user 0 stands for the caller, and where that is root, for "nobody". Nothing
/// happens in a process that is not root. Raises AdminError when root cannot be given up.
void giveUpRoot(quint32 userId = 0);

/// Touches the port class as "nobody" and comes back as root, for the few requests that root alone may make.
/// Nothing happens in a process that is not root.
void touchChannelWithoutRoot();
} // namespace Identity
