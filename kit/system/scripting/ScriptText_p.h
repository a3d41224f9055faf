// SPDX-License-Identifier: MIT
#pragma once

struct lua_State;

namespace dozely
{

/// The functions of the language's text library that match patterns: find, match, gmatch and gsub. They do
/// what the language's own do, but each step of the matching counts: a pattern of a few bytes can keep the
/// original busy for years, within one call, where nothing counts.
namespace ScriptText
{
/// Adds the four to the table on top.
void addFunctions(lua_State *lua);
} // namespace ScriptText

} // namespace dozely
