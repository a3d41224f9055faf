// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

#include <optional>

/// Who listens in the socket folder, found out without a request: nobody has to answer. THREADING: any
/// thread. BLOCKING: never.
namespace Listeners
{
/// What the daemon listens under, and, followed by a dot and a user id, what a user's agent does.
inline constexpr char daemon[] = "dozelyd";
inline constexpr char agent[] = "Dozely Agent";

/// The user whose process listens under a name; absent when none does. Anybody may take a name: compare.
std::optional<quint32> userAt(const QString &name);

/// Whether the daemon listens: a process of the system's owner.
bool isDaemonThere();

/// Whether a user's agent listens: a process of that user.
bool isAgentThere(quint32 user);

/// The users whose agents listen, in order.
QList<quint32> agents();
} // namespace Listeners
