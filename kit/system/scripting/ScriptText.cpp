// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptText_p.h"

#include "DozelyKit/system/scripting/LuaEngine_p.h"
#include "DozelyKit/system/scripting/ScriptPattern_p.h"

#include <cstring>
#include <lua.hpp>

namespace dozely
{

namespace
{
constexpr std::size_t bytesPerStep = 16; // of a text that is copied or searched

std::string_view textAt(lua_State *lua, int index)
{
    std::size_t size = 0;
    const char *text = luaL_checklstring(lua, index, &size);
    return {text, size};
}

ScriptPattern patternFor(lua_State *lua, std::string_view subject, std::string_view pattern)
{
    return {subject, pattern, [lua](std::size_t steps) { ScriptBudget::of(lua).spend(lua, steps); }};
}

/// Runs `body`, and turns a complaint about the pattern into an error of the script.
template<class Body>
int guarded(lua_State *lua, Body body)
{
    std::string complaint;
    try {
        return body();
    } catch (const ScriptPattern::Error &error) {
        complaint = error.text;
    }
    return luaL_error(lua, "%s", complaint.c_str());
}

/// The start that the optional argument at `index` names, counted from 0: 1 is the first byte, -1 the last.
std::size_t startAt(lua_State *lua, int index, std::size_t size)
{
    const lua_Integer given = luaL_optinteger(lua, index, 1);
    const auto length = static_cast<lua_Integer>(size);
    if (given > 0)
        return static_cast<std::size_t>(given) - 1;
    return given == 0 || given < -length ? 0 : static_cast<std::size_t>(length + given);
}

void pushText(lua_State *lua, std::string_view text)
{
    lua_pushlstring(lua, text.data(), text.size());
}

/// A capture of the match from `start` to `end`; the whole match when the pattern has none.
void pushCapture(lua_State *lua, const ScriptPattern &pattern, std::string_view subject, std::size_t index,
                 std::size_t start, std::size_t end)
{
    if (index >= pattern.captureCount()) {
        if (index != 0)
            throw ScriptPattern::Error{"invalid capture index %" + std::to_string(index + 1)};
        pushText(lua, subject.substr(start, end - start));
        return;
    }
    const ScriptPattern::Capture &capture = pattern.capture(index);
    if (capture.kind == ScriptPattern::Capture::Kind::Position)
        lua_pushinteger(lua, static_cast<lua_Integer>(capture.start) + 1);
    else
        pushText(lua, subject.substr(capture.start, capture.length));
}

int pushCaptures(lua_State *lua, const ScriptPattern &pattern, std::string_view subject, std::size_t start,
                 std::size_t end, std::size_t withoutCaptures)
{
    const std::size_t count = pattern.captureCount() == 0 ? withoutCaptures : pattern.captureCount();
    luaL_checkstack(lua, static_cast<int>(count), "too many captures");
    for (std::size_t i = 0; i < count; ++i)
        pushCapture(lua, pattern, subject, i, start, end);
    return static_cast<int>(count);
}

int findPlain(lua_State *lua, std::string_view subject, std::string_view wanted, std::size_t start)
{
    // In linear time, whatever the two are.
    ScriptBudget::of(lua).spend(lua, 1 + (subject.size() - start) / bytesPerStep);
    const void *found =
        ::memmem(subject.data() + start, subject.size() - start, wanted.data(), wanted.size());
    if (!found) {
        lua_pushnil(lua);
        return 1;
    }
    const auto place = static_cast<const char *>(found) - subject.data();
    lua_pushinteger(lua, place + 1);
    lua_pushinteger(lua, place + static_cast<lua_Integer>(wanted.size()));
    return 2;
}

int findOrMatch(lua_State *lua, bool isFind)
{
    const std::string_view subject = textAt(lua, 1);
    const std::string_view pattern = textAt(lua, 2);
    std::size_t start = startAt(lua, 3, subject.size());
    if (start > subject.size()) {
        lua_pushnil(lua);
        return 1;
    }
    const bool isPlain =
        lua_toboolean(lua, 4) != 0 || pattern.find_first_of("^$*+?.([%-") == std::string_view::npos;
    if (isFind && isPlain)
        return findPlain(lua, subject, pattern, start);
    return guarded(lua, [&] {
        ScriptPattern matcher = patternFor(lua, subject, pattern);
        do {
            const auto end = matcher.matchAt(start);
            if (!end)
                continue;
            if (!isFind)
                return pushCaptures(lua, matcher, subject, start, *end, 1);
            lua_pushinteger(lua, static_cast<lua_Integer>(start) + 1);
            lua_pushinteger(lua, static_cast<lua_Integer>(*end));
            return 2 + pushCaptures(lua, matcher, subject, start, *end, 0);
        } while (start++ < subject.size() && !matcher.isAnchored());
        lua_pushnil(lua);
        return 1;
    });
}

int find(lua_State *lua)
{
    return findOrMatch(lua, true);
}

int match(lua_State *lua)
{
    return findOrMatch(lua, false);
}

/// The iterator of gmatch. Upvalues: text, pattern, where to go on, the end of the match before (-1: none).
int nextMatch(lua_State *lua)
{
    const std::string_view subject = textAt(lua, lua_upvalueindex(1));
    const std::string_view pattern = textAt(lua, lua_upvalueindex(2));
    const auto last = lua_tointeger(lua, lua_upvalueindex(4));
    return guarded(lua, [&] {
        ScriptPattern matcher = patternFor(lua, subject, pattern);
        matcher.ignoreAnchor(); // it would end the iteration after the first match
        for (auto start = static_cast<std::size_t>(lua_tointeger(lua, lua_upvalueindex(3)));
             start <= subject.size(); ++start) {
            const auto end = matcher.matchAt(start);
            if (!end || static_cast<lua_Integer>(*end) == last)
                continue;
            for (const int upvalue : {3, 4}) {
                lua_pushinteger(lua, static_cast<lua_Integer>(*end));
                lua_replace(lua, lua_upvalueindex(upvalue));
            }
            return pushCaptures(lua, matcher, subject, start, *end, 1);
        }
        return 0;
    });
}

int gmatch(lua_State *lua)
{
    const std::string_view subject = textAt(lua, 1);
    textAt(lua, 2);
    const std::size_t start = startAt(lua, 3, subject.size());
    lua_settop(lua, 2);
    lua_pushinteger(lua, static_cast<lua_Integer>(std::min(start, subject.size() + 1)));
    lua_pushinteger(lua, -1);
    lua_pushcclosure(lua, nextMatch, 4);
    return 1;
}

/// Adds a text in which "%1" and its kind stand for captures.
void addTemplate(lua_State *lua, luaL_Buffer *buffer, const ScriptPattern &pattern, std::string_view subject,
                 std::size_t start, std::size_t end)
{
    const std::string_view text = textAt(lua, 3);
    ScriptBudget::of(lua).spend(lua, 1 + text.size() / bytesPerStep);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            luaL_addchar(buffer, text[i]);
            continue;
        }
        const char sign = ++i < text.size() ? text[i] : '\0';
        if (sign == '%') {
            luaL_addchar(buffer, '%');
        } else if (sign >= '0' && sign <= '9') {
            if (sign == '0')
                pushText(lua, subject.substr(start, end - start));
            else
                pushCapture(lua, pattern, subject, static_cast<std::size_t>(sign - '1'), start, end);
            luaL_tolstring(lua, -1, nullptr); // the place of a position capture is a number
            lua_remove(lua, -2);
            luaL_addvalue(buffer);
        } else {
            throw ScriptPattern::Error{"invalid use of '%' in replacement string"};
        }
    }
}

/// Adds what the third argument puts in the place of the match.
void addReplacement(lua_State *lua, luaL_Buffer *buffer, const ScriptPattern &pattern,
                    std::string_view subject, std::size_t start, std::size_t end)
{
    switch (lua_type(lua, 3)) {
    case LUA_TFUNCTION:
        lua_pushvalue(lua, 3);
        lua_call(lua, pushCaptures(lua, pattern, subject, start, end, 1), 1);
        break;
    case LUA_TTABLE:
        pushCapture(lua, pattern, subject, 0, start, end);
        lua_gettable(lua, 3);
        break;
    default:
        addTemplate(lua, buffer, pattern, subject, start, end);
        return;
    }
    if (!lua_toboolean(lua, -1)) {
        lua_pop(lua, 1);
        luaL_addlstring(buffer, subject.data() + start, end - start); // stays as it is
    } else if (lua_isstring(lua, -1)) {
        luaL_addvalue(buffer);
    } else {
        luaL_error(lua, "invalid replacement value (a %s)", luaL_typename(lua, -1));
    }
}

int gsub(lua_State *lua)
{
    const std::string_view subject = textAt(lua, 1);
    const std::string_view pattern = textAt(lua, 2);
    const int kind = lua_type(lua, 3);
    luaL_argexpected(
        lua, kind == LUA_TNUMBER || kind == LUA_TSTRING || kind == LUA_TFUNCTION || kind == LUA_TTABLE, 3,
        "string/function/table");
    const lua_Integer most = luaL_optinteger(lua, 4, static_cast<lua_Integer>(subject.size()) + 1);
    return guarded(lua, [&] {
        ScriptPattern matcher = patternFor(lua, subject, pattern);
        luaL_Buffer buffer;
        luaL_buffinit(lua, &buffer);
        lua_Integer count = 0;
        std::size_t place = 0;
        std::optional<std::size_t> last;
        while (count < most) {
            const auto end = matcher.matchAt(place);
            if (end && end != last) {
                ++count;
                addReplacement(lua, &buffer, matcher, subject, place, *end);
                last = end;
                place = *end;
            } else if (place < subject.size()) {
                luaL_addchar(&buffer, subject[place]);
                ++place;
            } else {
                break;
            }
            if (matcher.isAnchored())
                break;
        }
        ScriptBudget::of(lua).spend(lua, 1 + (subject.size() - place) / bytesPerStep);
        luaL_addlstring(&buffer, subject.data() + place, subject.size() - place);
        luaL_pushresult(&buffer);
        lua_pushinteger(lua, count);
        return 2;
    });
}
} // namespace

void ScriptText::addFunctions(lua_State *lua)
{
    constexpr luaL_Reg functions[] = {
        {"find", find}, {"match", match}, {"gmatch", gmatch}, {"gsub", gsub}, {nullptr, nullptr}};
    luaL_setfuncs(lua, functions, 0);
}

} // namespace dozely
