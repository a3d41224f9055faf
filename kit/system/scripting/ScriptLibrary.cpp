// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptLibrary_p.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/system/scripting/ScriptLocale_p.h"
#include "DozelyKit/system/scripting/ScriptText_p.h"
#include "DozelyKit/system/scripting/ScriptValue_p.h"

#include <algorithm>
#include <lua.hpp>
#include <string_view>
#include <vector>

namespace dozely
{

namespace
{
using Names = std::vector<std::string_view>;

/// More would let one call of the library run for minutes, and nothing counts steps within a call.
constexpr lua_Integer longestRange = 1 << 21;

/// Takes everything else out of the table on top.
void keepOnly(lua_State *lua, const Names &names)
{
    lua_pushnil(lua);
    while (lua_next(lua, -2) != 0) {
        lua_pop(lua, 1); // the value
        const std::string_view name = lua_type(lua, -1) == LUA_TSTRING ? lua_tostring(lua, -1) : "";
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            lua_pushvalue(lua, -1);
            lua_pushnil(lua);
            lua_rawset(lua, -4);
        }
    }
}

/// Opens a part of the language's library as the global `name`; it stays on top.
void openPart(lua_State *lua, const char *name, lua_CFunction opener, const Names &names)
{
    luaL_requiref(lua, name, opener, 1);
    keepOnly(lua, names);
}

void setField(lua_State *lua, const char *name, lua_CFunction function)
{
    lua_pushcfunction(lua, function);
    lua_setfield(lua, -2, name);
}

/// load(text [, name [, environment]]): as the language's own, but for texts alone. Compiled code could make
/// the interpreter do anything.
int loadText(lua_State *lua)
{
    std::size_t size = 0;
    luaL_checktype(lua, 1, LUA_TSTRING);
    const char *source = lua_tolstring(lua, 1, &size);
    const char *name = luaL_optstring(lua, 2, "=text");
    const bool hasEnvironment = !lua_isnone(lua, 3) && lua_gettop(lua) >= 3;
    if (luaL_loadbufferx(lua, source, size, name, "t") != LUA_OK) {
        lua_pushnil(lua);
        lua_insert(lua, -2);
        return 2; // nil and the message
    }
    if (hasEnvironment) {
        lua_pushvalue(lua, 3);
        if (!lua_setupvalue(lua, -2, 1))
            lua_pop(lua, 1);
    }
    return 1;
}

/// setmetatable without "__gc": such a function runs while nothing counts its steps.
int setMetatable(lua_State *lua)
{
    luaL_checktype(lua, 1, LUA_TTABLE);
    luaL_argexpected(lua, lua_isnil(lua, 2) || lua_istable(lua, 2), 2, "nil or table");
    if (lua_istable(lua, 2)) {
        lua_pushliteral(lua, "__gc");
        if (lua_rawget(lua, 2) != LUA_TNIL)
            luaL_error(lua, "a metatable with \"__gc\" is not accepted");
        lua_pop(lua, 1);
    }
    if (luaL_getmetafield(lua, 1, "__metatable") != LUA_TNIL)
        luaL_error(lua, "cannot change a protected metatable");
    lua_settop(lua, 2);
    lua_setmetatable(lua, 1);
    return 1;
}

/// What an error costs that is caught: raising one takes far longer than an instruction.
constexpr quint64 stepsPerError = 500;

/// Calls the function below its `count` arguments; what it gave, or the error, takes their place. Whether it
/// ended well.
bool callProtected(lua_State *lua, int count)
{
    if (lua_pcall(lua, count, LUA_MULTRET, 0) == LUA_OK)
        return true;
    ScriptBudget::of(lua).spend(lua, stepsPerError);
    return false;
}

int protectedCall(lua_State *lua)
{
    luaL_checkany(lua, 1);
    const bool endedWell = callProtected(lua, lua_gettop(lua) - 1);
    lua_pushboolean(lua, endedWell ? 1 : 0);
    lua_insert(lua, 1);
    return lua_gettop(lua);
}

/// xpcall(function, handler, ...). The language's own calls the handler before the error is left behind; when
/// it was the budget that raised it, nothing counts at that point what the handler does.
int protectedCallWithHandler(lua_State *lua)
{
    luaL_checktype(lua, 2, LUA_TFUNCTION);
    lua_pushvalue(lua, 2);
    lua_remove(lua, 2);
    lua_insert(lua, 1); // the handler, the function, its arguments
    const bool endedWell = callProtected(lua, lua_gettop(lua) - 2);
    if (!endedWell) {
        lua_insert(lua, 1); // the error
        lua_settop(lua, 2);
        lua_insert(lua, 1); // the handler, the error
        lua_call(lua, 1, LUA_MULTRET);
        lua_pushboolean(lua, 0);
        lua_insert(lua, 1);
        return lua_gettop(lua);
    }
    lua_pushboolean(lua, 1);
    lua_replace(lua, 1);
    return lua_gettop(lua);
}

/// A function of the table library (first upvalue) that goes from one index to another; where the first of
/// them stands among the arguments is the second upvalue, 0 when the function takes none.
int callWithinRange(lua_State *lua)
{
    for (int index = 1; index <= lua_gettop(lua); ++index) {
        // Who says how long a table is could make the library count for years.
        if (lua_istable(lua, index) && luaL_getmetafield(lua, index, "__len") != LUA_TNIL)
            luaL_error(lua, "a table with \"__len\" is not accepted here");
    }
    if (const int first = static_cast<int>(lua_tointeger(lua, lua_upvalueindex(2)))) {
        const auto from = luaL_optinteger(lua, first, 1);
        const auto to = luaL_optinteger(lua, first + 1, static_cast<lua_Integer>(lua_rawlen(lua, 1)));
        if (to >= from && static_cast<lua_Unsigned>(to) - static_cast<lua_Unsigned>(from) > longestRange)
            luaL_error(lua, "the range is too large");
    }
    lua_pushvalue(lua, lua_upvalueindex(1));
    lua_insert(lua, 1);
    lua_call(lua, lua_gettop(lua) - 1, LUA_MULTRET);
    return lua_gettop(lua);
}

void guardTableFunctions(lua_State *lua)
{
    const std::pair<const char *, int> functions[] = {{"concat", 3}, {"insert", 0}, {"move", 2},
                                                      {"remove", 0}, {"sort", 0},   {"unpack", 2}};
    for (const auto &[name, firstOfRange] : functions) {
        lua_getfield(lua, -1, name);
        lua_pushinteger(lua, firstOfRange);
        lua_pushcclosure(lua, callWithinRange, 2);
        lua_setfield(lua, -2, name);
    }
}

/// Calls the registered function that the upvalue points to.
int callRegistered(lua_State *lua)
{
    const auto &function =
        *static_cast<const NSAppleScript::Function *>(lua_touserdata(lua, lua_upvalueindex(1)));
    const QVariantList arguments = ScriptValue::arguments(lua, 1);
    QVariant result;
    QByteArray failure;
    try {
        const ScriptLocale locale = ScriptLocale::ofProcess();
        result = function(arguments);
    } catch (const NSException &exception) {
        failure = exception.reason().toUtf8();
    } catch (const std::exception &exception) {
        failure = exception.what();
    }
    // Errors of the interpreter are exceptions of another kind and pass.
    if (!failure.isNull())
        luaL_error(lua, "%s", failure.constData());
    ScriptBudget::of(lua).spend(lua, 1);
    ScriptValue::push(lua, result);
    return 1;
}
} // namespace

void ScriptLibrary::open(lua_State *lua, const ScriptFunctions &functions)
{
    openPart(lua, "_G", luaopen_base,
             {"_G", "_VERSION", "assert", "error", "getmetatable", "ipairs", "next", "pairs", "rawequal",
              "rawget", "rawlen", "rawset", "select", "tonumber", "tostring", "type"});
    setField(lua, "load", loadText);
    setField(lua, "pcall", protectedCall);
    setField(lua, "xpcall", protectedCallWithHandler);
    setField(lua, "setmetatable", setMetatable);
    openPart(lua, LUA_MATHLIBNAME, luaopen_math,
             {"abs",  "acos",   "asin",       "atan", "ceil",       "cos", "deg",        "exp",  "floor",
              "fmod", "huge",   "log",        "max",  "maxinteger", "min", "mininteger", "modf", "pi",
              "rad",  "random", "randomseed", "sin",  "sqrt",       "tan", "tointeger",  "type", "ult"});
    openPart(lua, LUA_STRLIBNAME, luaopen_string,
             {"byte", "char", "format", "len", "lower", "pack", "packsize", "rep", "reverse", "sub", "unpack",
              "upper"});
    ScriptText::addFunctions(lua);
    openPart(lua, LUA_TABLIBNAME, luaopen_table,
             {"concat", "insert", "move", "pack", "remove", "sort", "unpack"});
    guardTableFunctions(lua);
    openPart(lua, LUA_UTF8LIBNAME, luaopen_utf8,
             {"char", "charpattern", "codepoint", "codes", "len", "offset"});
    openPart(lua, LUA_OSLIBNAME, luaopen_os, {"clock", "date", "difftime", "time"});

    lua_newtable(lua);
    for (auto function = functions.cbegin(); function != functions.cend(); ++function) {
        // Not changed through this pointer: the interpreter knows no pointer to what is constant.
        lua_pushlightuserdata(lua, const_cast<NSAppleScript::Function *>(&function.value()));
        lua_pushcclosure(lua, callRegistered, 1);
        lua_setfield(lua, -2, function.key().toUtf8().constData());
    }
    lua_setglobal(lua, "dozely");
}

} // namespace dozely
