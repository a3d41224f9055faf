// SPDX-License-Identifier: MIT
#pragma once

struct lua_State;

namespace dozely
{

/// What one call of the language's library costs. Nothing counts the steps within such a call, and one can
/// go on for years, or copy a long text so often that a few instructions take minutes: so each function whose
/// work grows with what it is given tells the budget of that work first, and of what it made afterwards.
namespace ScriptWork
{
/// Have the functions in the table on top count their work: the global ones (before others take their place),
/// and those of the part of the library with that name.
/// @{
void countGlobalFunctions(lua_State *lua);
void countTextFunctions(lua_State *lua);
void countTableFunctions(lua_State *lua);
void countUtf8Functions(lua_State *lua);
void countDateFunctions(lua_State *lua);
/// @}
} // namespace ScriptWork

} // namespace dozely
