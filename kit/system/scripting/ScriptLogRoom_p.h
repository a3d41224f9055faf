// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace dozely
{

/// What one execution of a script may write to the log. It lives as long as the execution; a function that a
/// script calls may run another one, which has a room of its own.
class ScriptLogRoom
{
public:
    static constexpr qsizetype most = 1 << 20; ///< Bytes.

    ScriptLogRoom();
    ~ScriptLogRoom();
    ScriptLogRoom(const ScriptLogRoom &) = delete;
    ScriptLogRoom &operator=(const ScriptLogRoom &) = delete;

    /// Takes so many bytes from the room of the script that runs on this thread; false when there are not so
    /// many left, and from then on. True where none runs.
    static bool take(qsizetype bytes);

private:
    ScriptLogRoom *m_outer;
    qsizetype m_left = most;
};

} // namespace dozely
