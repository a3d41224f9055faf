// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptLibrary_p.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/system/scripting/ScriptLocale_p.h"
#include "DozelyKit/system/scripting/ScriptText_p.h"
#include "DozelyKit/system/scripting/ScriptValue_p.h"
#include "DozelyKit/system/scripting/ScriptWork_p.h"

#include <algorithm>
#include <lua.hpp>
#include <string_view>
#include <vector>

namespace dozely
{

namespace
{
using Names = std::vector<std::string_view>;

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

/// Calls the function below its `count` arguments; what it gave, or the error, takes their place. Whether it
/// ended well.
bool callProtected(lua_State *lua, int count)
{
    const int status = lua_pcall(lua, count, LUA_MULTRET, 0);
    if (status == LUA_OK)
        return true;
    if (status == LUA_ERRMEM)
        ScriptBudget::of(lua).exhaustMemory();
    ScriptBudget::of(lua).spend(lua, ScriptBudget::stepsPerError);
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
             {"_G", "_VERSION", "assert", "error", "getmetatable", "ipairs", "load", "next", "pairs",
              "rawequal", "rawget", "rawlen", "rawset", "select", "tonumber", "tostring", "type"});
    ScriptWork::countGlobalFunctions(lua);
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
    ScriptWork::countTextFunctions(lua);
    ScriptText::addFunctions(lua);
    openPart(lua, LUA_TABLIBNAME, luaopen_table,
             {"concat", "insert", "move", "pack", "remove", "sort", "unpack"});
    ScriptWork::countTableFunctions(lua);
    openPart(lua, LUA_UTF8LIBNAME, luaopen_utf8,
             {"char", "charpattern", "codepoint", "codes", "len", "offset"});
    ScriptWork::countUtf8Functions(lua);
    openPart(lua, LUA_OSLIBNAME, luaopen_os, {"clock", "date", "difftime", "time"});
    ScriptWork::countDateFunctions(lua);

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
