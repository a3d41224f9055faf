// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/GuardedFile.h"

#include <QString>

#include <chrono>
#include <optional>

/// That there is one configuration application a user: the first has a lock, as long as it lives, and the
/// next ones ask it to show itself.
///
/// THREADING: the main thread.
class SingleInstance
{
public:
    /// Takes the lock, in the user's home below the root folder.
    SingleInstance();

    /// Whether another one has it. Where nobody can lock, as on a disk that cannot be written, nobody has it.
    bool isSecond() const { return m_isSecond; }

    /// Asks the first one to show itself, by the open-application event, with what
    /// the desktop gave this start (StartToken); false when it did not answer within
    /// `limit`. Blocks that long: one that has only just been started cannot be asked yet.
    static bool raiseFirst(const QString &startToken,
                           std::chrono::milliseconds limit = std::chrono::seconds(5));

private:
    std::optional<dozely::GuardedFile::Lock> m_lock;
    bool m_isSecond = false;
};
