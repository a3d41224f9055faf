// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/scripting/LuaEngine_p.h"

namespace dozely
{

/// What a script finds when it starts.
namespace ScriptLibrary
{
/// Fills the interpreter's global table: the harmless part of the language's own library, and the table
/// `dozely` with `functions`, which must outlive the interpreter. Raises an error of the script when memory
/// does not suffice.
void open(lua_State *lua, const ScriptFunctions &functions);
} // namespace ScriptLibrary

} // namespace dozely
