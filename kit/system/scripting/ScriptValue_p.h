// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

struct lua_State;

namespace dozely
{

/// Values on their way between a script and the functions that it calls.
namespace ScriptValue
{
/// Limits of one call's values. Attacks: a table that holds itself; tables that refer to one another so that
/// they unfold without an end; a long text that is referred to many times.
constexpr int maximumDepth = 20;
constexpr int maximumNodes = 10'000;
constexpr qsizetype maximumBytes = 1 << 20;

/// The values from stack index `first` to the top. A table with the keys 1 to n is a list, as is an empty
/// one; one with texts as keys is a dictionary. Raises an error of the script for anything else.
QVariantList arguments(lua_State *lua, int first);

/// Pushes a property-list value; a date as its text in ISO format, anything unknown as nil.
void push(lua_State *lua, const QVariant &value);

/// The text of a text, number or truth value at `index`; null for anything else. Does not allocate there.
QString text(lua_State *lua, int index);
} // namespace ScriptValue

} // namespace dozely
