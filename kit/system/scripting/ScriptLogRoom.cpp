// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptLogRoom_p.h"

namespace dozely
{

namespace
{
thread_local ScriptLogRoom *current = nullptr;
} // namespace

ScriptLogRoom::ScriptLogRoom() : m_outer(current)
{
    current = this;
}

ScriptLogRoom::~ScriptLogRoom()
{
    current = m_outer;
}

bool ScriptLogRoom::take(qsizetype bytes)
{
    if (!current)
        return true;
    current->m_left = bytes <= current->m_left ? current->m_left - bytes : -1;
    return current->m_left >= 0;
}

} // namespace dozely
