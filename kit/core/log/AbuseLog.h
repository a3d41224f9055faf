// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QtGlobal>

#include <optional>

namespace dozely
{

/// Tells in the log of attacks, and of what looks like one, without letting the attacker fill the log: one
/// line a minute at most for each user and kind.
///
/// The first case is told at once, "User 1001: message larger than 256 KiB refused". Those of the minute that
/// follows are counted and told in one line when it is over, which begins another minute: "User 1001: 17 x
/// message larger than 256 KiB refused". At most 256 pairs of user and kind are counted at a time; what goes
/// beyond is one more, "Other users: further misuse".
///
/// THREADING: any thread. BLOCKING: for a line of the log. What was counted is told from the main thread's
/// event loop, where no timer is left once a minute was quiet; without a loop, by the first note after the
/// minute.
class DOZELYKIT_EXPORT AbuseLog
{
public:
    /// Tells or counts one case. `userId` is whose doing it is, absent when that is not known. `what` says in
    /// a few words what came of it; it is the kind, compared by its text. Never a text of a stranger.
    static void note(std::optional<quint32> userId, const char *what);
};

} // namespace dozely
