// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptWork_p.h"

#include "DozelyKit/system/scripting/LuaEngine_p.h"

#include <algorithm>
#include <cstring>
#include <lua.hpp>
#include <string_view>

namespace dozely
{

namespace
{
// What a step does of it, in the time that an instruction takes.
constexpr quint64 bytesPerStep = 16;
constexpr quint64 valuesPerStep = 4;

/// Steps for each byte of a text that is read as a program, a format of a text, and one of a date.
constexpr quint64 stepsPerProgramByte = 4;
constexpr quint64 stepsPerFormatByte = 8;
constexpr quint64 stepsPerDateFormatByte = 100;

/// More would let one call of the library run for minutes.
constexpr lua_Integer longestRange = 1 << 21;

void spend(lua_State *lua, quint64 steps)
{
    ScriptBudget::of(lua).spend(lua, 1 + steps);
}

/// 0 for what is no text.
quint64 lengthAt(lua_State *lua, int index)
{
    return lua_type(lua, index) == LUA_TSTRING ? lua_rawlen(lua, index) : 0;
}

/// For a function that goes through all texts that it is given.
void spendOnArguments(lua_State *lua)
{
    quint64 bytes = 0;
    for (int index = 1; index <= lua_gettop(lua); ++index)
        bytes += lengthAt(lua, index);
    spend(lua, bytes / bytesPerStep);
}

void spendOnFormat(lua_State *lua)
{
    spendOnArguments(lua);
    spend(lua, lengthAt(lua, 1) * stepsPerFormatByte);
}

void spendOnDateFormat(lua_State *lua)
{
    spend(lua, lengthAt(lua, 1) * stepsPerDateFormatByte);
}

/// utf8.len(text, from, to) goes from one place of a text to another.
void spendOnPlaces(lua_State *lua)
{
    const auto length = static_cast<lua_Integer>(lengthAt(lua, 1));
    const auto placeAt = [&](int index, lua_Integer otherwise) {
        const lua_Integer place = lua_isinteger(lua, index) ? lua_tointeger(lua, index) : otherwise;
        return std::clamp<lua_Integer>(place < 0 ? place + length + 1 : place, 0, length);
    };
    const lua_Integer distance = placeAt(3, length) - placeAt(2, 1);
    spend(lua, static_cast<quint64>(std::max<lua_Integer>(distance, 0)) / bytesPerStep);
}

/// utf8.offset(text, count, place): so many characters from there.
void spendOnCount(lua_State *lua)
{
    const auto length = static_cast<lua_Integer>(lengthAt(lua, 1));
    const lua_Integer count = lua_isinteger(lua, 2) ? lua_tointeger(lua, 2) : 0;
    spend(lua, static_cast<quint64>(
                   std::max(std::clamp(count, -length, length), -std::clamp(count, -length, length))) /
                   valuesPerStep);
}

void spendNothingAhead(lua_State *) {}

/// A function of the library that gives texts (first upvalue), and what it costs (second). It is called in
/// the place of this one, not by it: its complaints name it by the name under which the script knows it.
int callCounted(lua_State *lua)
{
    reinterpret_cast<void (*)(lua_State *)>(lua_touserdata(lua, lua_upvalueindex(2)))(lua);
    const int count = lua_tocfunction(lua, lua_upvalueindex(1))(lua);
    quint64 bytes = 0;
    for (int result = 1; result <= count; ++result)
        bytes += lengthAt(lua, -result);
    spend(lua, bytes / bytesPerStep + static_cast<quint64>(count) / valuesPerStep);
    return count;
}

/// Puts `counted` in the place of the function of that name, with it as the first upvalue; the others are on
/// top.
void replace(lua_State *lua, const char *name, lua_CFunction counted, int otherUpvalues = 0)
{
    lua_getfield(lua, -1 - otherUpvalues, name);
    lua_insert(lua, -1 - otherUpvalues);
    lua_pushcclosure(lua, counted, 1 + otherUpvalues);
    lua_setfield(lua, -2, name);
}

void count(lua_State *lua, const char *name, void (*cost)(lua_State *))
{
    lua_pushlightuserdata(lua, reinterpret_cast<void *>(cost));
    replace(lua, name, callCounted, 1);
}

int callOriginal(lua_State *lua)
{
    return lua_tocfunction(lua, lua_upvalueindex(1))(lua);
}

/// rep(text, count [, separator]): the language's own repeats the empty text as often as it is told.
int repeat(lua_State *lua)
{
    std::size_t size = 0;
    std::size_t separator = 0;
    luaL_checklstring(lua, 1, &size);
    const lua_Integer count = luaL_checkinteger(lua, 2);
    luaL_optlstring(lua, 3, "", &separator);
    const lua_Unsigned piece = size + separator;
    if (piece == 0 || count <= 0) {
        lua_pushliteral(lua, "");
        return 1;
    }
    const auto times = static_cast<lua_Unsigned>(count);
    if (times <=
        static_cast<lua_Unsigned>(LUA_MAXINTEGER) / piece) { // else the original says that it is too much
        ScriptBudget::of(lua).needMemory(lua, times * piece - separator);
        spend(lua, times / valuesPerStep + times * piece / bytesPerStep);
    }
    return callOriginal(lua);
}

/// load(chunk [, name [, mode [, environment]]]), for texts alone whatever the mode says. Compiled code could
/// make the interpreter do anything.
int load(lua_State *lua)
{
    const std::string_view mode = luaL_optstring(lua, 3, "t");
    if (lua_gettop(lua) < 3)
        lua_settop(lua, 3); // an environment that is given, even nil, stays one that is given
    lua_pushstring(lua, mode.find('t') == std::string_view::npos ? "" : "t");
    lua_replace(lua, 3);
    spend(lua, lengthAt(lua, 1) * stepsPerProgramByte);
    const int count = callOriginal(lua);
    if (count > 1) // nil and a message: it catches what the chunk's function raises
        spend(lua, ScriptBudget::stepsPerError);
    return count;
}

/// The order that sort asks for: that of the function in the upvalue, or without one the language's own. To
/// compare two texts takes as long as they are.
int isBefore(lua_State *lua)
{
    constexpr quint64 stepsPerComparison = 4;
    spend(lua, stepsPerComparison + std::min(lengthAt(lua, 1), lengthAt(lua, 2)) / bytesPerStep);
    if (lua_isnil(lua, lua_upvalueindex(1))) {
        lua_pushboolean(lua, lua_compare(lua, 1, 2, LUA_OPLT));
        return 1;
    }
    lua_pushvalue(lua, lua_upvalueindex(1));
    lua_insert(lua, 1);
    lua_call(lua, 2, 1);
    return 1;
}

/// Who says how long a table is could make the library count for years.
void refuseLengths(lua_State *lua)
{
    for (int index = 1; index <= lua_gettop(lua); ++index) {
        if (lua_istable(lua, index) && luaL_getmetafield(lua, index, "__len") != LUA_TNIL)
            luaL_error(lua, "a table with \"__len\" is not accepted here");
    }
}

int sort(lua_State *lua)
{
    refuseLengths(lua);
    if (!lua_isnoneornil(lua, 2))
        luaL_checktype(lua, 2, LUA_TFUNCTION);
    lua_settop(lua, 2);
    lua_pushcclosure(lua, isBefore, 1);
    return callOriginal(lua);
}

/// insert and remove move all that lies behind the place.
int shift(lua_State *lua)
{
    refuseLengths(lua);
    const auto length = lua_istable(lua, 1) ? static_cast<lua_Integer>(lua_rawlen(lua, 1)) : 0;
    // insert(table, value) and remove(table) work at the end.
    const bool hasPlace = lua_tointeger(lua, lua_upvalueindex(2)) <= lua_gettop(lua);
    const lua_Integer place = hasPlace ? std::clamp<lua_Integer>(lua_tointeger(lua, 2), 0, length) : length;
    spend(lua, static_cast<quint64>(length - place) / valuesPerStep);
    return callOriginal(lua);
}

/// A function that goes from one index to another; where the first of them stands among the arguments is the
/// second upvalue.
int walkRange(lua_State *lua)
{
    refuseLengths(lua);
    const int first = static_cast<int>(lua_tointeger(lua, lua_upvalueindex(2)));
    const auto length = lua_istable(lua, 1) ? static_cast<lua_Integer>(lua_rawlen(lua, 1)) : 0;
    const auto from = luaL_optinteger(lua, first, 1);
    const auto to = luaL_optinteger(lua, first + 1, length);
    const auto range = to < from ? 0 : static_cast<lua_Unsigned>(to) - static_cast<lua_Unsigned>(from);
    if (range > longestRange)
        luaL_error(lua, "the range is too large");
    spend(lua, range / valuesPerStep);
    const int count = callOriginal(lua);
    spend(lua, count > 0 ? lengthAt(lua, -1) / bytesPerStep : 0);
    return count;
}

void replaceWithNumber(lua_State *lua, const char *name, lua_CFunction counted, int number)
{
    lua_pushinteger(lua, number);
    replace(lua, name, counted, 1);
}
} // namespace

void ScriptWork::countGlobalFunctions(lua_State *lua)
{
    replace(lua, "load", load);
    count(lua, "tonumber", spendOnArguments);
}

void ScriptWork::countTextFunctions(lua_State *lua)
{
    replace(lua, "rep", repeat);
    for (const char *name : {"lower", "reverse", "upper"})
        count(lua, name, spendOnArguments);
    for (const char *name : {"format", "pack", "packsize", "unpack"})
        count(lua, name, spendOnFormat);
    for (const char *name : {"byte", "char", "sub"}) // these cost what they give
        count(lua, name, spendNothingAhead);
}

void ScriptWork::countTableFunctions(lua_State *lua)
{
    replace(lua, "sort", sort);
    constexpr int placeOfInsert = 3; // arguments when there is a place
    constexpr int placeOfRemove = 2;
    replaceWithNumber(lua, "insert", shift, placeOfInsert);
    replaceWithNumber(lua, "remove", shift, placeOfRemove);
    replaceWithNumber(lua, "concat", walkRange, 3);
    replaceWithNumber(lua, "move", walkRange, 2);
    replaceWithNumber(lua, "unpack", walkRange, 2);
}

void ScriptWork::countUtf8Functions(lua_State *lua)
{
    count(lua, "len", spendOnPlaces);
    count(lua, "offset", spendOnCount);
    for (const char *name : {"char", "codepoint"})
        count(lua, name, spendNothingAhead);
}

void ScriptWork::countDateFunctions(lua_State *lua)
{
    count(lua, "date", spendOnDateFormat);
}

} // namespace dozely
