// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/LuaEngine_p.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/system/scripting/ScriptLibrary_p.h"
#include "DozelyKit/system/scripting/ScriptLocale_p.h"
#include "DozelyKit/system/scripting/ScriptValue_p.h"

#include <algorithm>
#include <cstdlib>
#include <lua.hpp>

namespace dozely
{

namespace
{
constexpr int stepsBetweenChecks = 100;
constexpr char notEnoughMemory[] = "not enough memory"; // as the interpreter says it
constexpr int chunkIndex = 1; // where the compiled script lies on the interpreter's stack

static_assert(LUA_SIGNATURE[0] == ScriptEngine::beginOfCompiledCode);

/// The interpreter's memory: counted, and refused beyond the limit.
void *reallocate(void *budgetAddress, void *block, std::size_t oldSize, std::size_t newSize)
{
    auto &budget = *static_cast<ScriptBudget *>(budgetAddress);
    const qint64 former = block ? static_cast<qint64>(oldSize) : 0; // without a block it is a type
    if (newSize == 0) {
        std::free(block);
        budget.memory -= former;
        return nullptr;
    }
    const bool isPossible = newSize <= static_cast<std::size_t>(std::numeric_limits<qint64>::max() / 2);
    const qint64 growth = isPossible ? static_cast<qint64>(newSize) - former : 0;
    const bool isAllowed = isPossible && (growth <= 0 || budget.memory + growth <= budget.limits.memory);
    void *moved = isAllowed ? std::realloc(block, newSize) : nullptr;
    if (!moved) {
        budget.noteRefusal(block, newSize);
        return nullptr;
    }
    budget.memory += growth;
    if (growth > 0)
        budget.noteGrowth();
    return moved;
}

void countSteps(lua_State *lua, lua_Debug *)
{
    ScriptBudget::of(lua).spend(lua, stepsBetweenChecks);
}

int openLibraries(lua_State *lua)
{
    const auto *functions = static_cast<const ScriptFunctions *>(lua_touserdata(lua, 1));
    ScriptLibrary::open(lua, *functions);
    return 0;
}
} // namespace

ScriptBudget &ScriptBudget::of(lua_State *lua)
{
    return **static_cast<ScriptBudget **>(lua_getextraspace(lua));
}

void ScriptBudget::renew()
{
    m_steps = 0;
    m_deadline = Port<Clock>::current()->steadyTime() + limits.time;
    m_exhaustion = nullptr;
    m_refusedSize = 0;
}

void ScriptBudget::spend(lua_State *lua, quint64 steps)
{
    m_steps += steps;
    if (!m_exhaustion && m_steps > limits.instructions)
        m_exhaustion = "the script takes too many steps";
    if (!m_exhaustion && Port<Clock>::current()->steadyTime() >= m_deadline)
        m_exhaustion = "the script takes too long";
    if (!m_exhaustion)
        return;
    lua_sethook(lua, countSteps, LUA_MASKCOUNT, 1);
    luaL_error(lua, "%s", m_exhaustion);
}

void ScriptBudget::needMemory(lua_State *lua, quint64 bytes)
{
    if (bytes <= static_cast<quint64>(std::max<qint64>(limits.memory, 0)))
        return;
    exhaustMemory();
    spend(lua, 0);
}

void ScriptBudget::noteRefusal(const void *block, std::size_t size)
{
    if (m_refusedSize == size && m_refusedBlock == block)
        exhaustMemory();
    m_refusedBlock = block;
    m_refusedSize = size;
}

void ScriptBudget::exhaustMemory()
{
    if (!m_exhaustion)
        m_exhaustion = notEnoughMemory;
}

QString ScriptBudget::exhaustion() const
{
    if (!m_exhaustion || m_exhaustion == notEnoughMemory)
        return m_exhaustion;
    return QString("%1.").arg(m_exhaustion);
}

void LuaEngine::Close::operator()(lua_State *lua) const
{
    lua_close(lua);
}

LuaEngine::LuaEngine(const NSAppleScript::Limits &limits, ScriptFunctions functions)
    : m_budget(limits), m_functions(std::move(functions))
{
}

LuaEngine::~LuaEngine() = default;

Result<void> LuaEngine::compile(const QByteArray &source, const QString &name)
{
    if (source.size() > NSAppleScript::maximumSourceSize)
        return Error{QString("The script is larger than %1 bytes.").arg(NSAppleScript::maximumSourceSize)};
    const ScriptLocale locale;
    m_lua.reset(lua_newstate(reallocate, &m_budget));
    if (!m_lua)
        return Error{"not enough memory"};
    lua_State *lua = m_lua.get();
    *static_cast<ScriptBudget **>(lua_getextraspace(lua)) = &m_budget;
    lua_pushcfunction(lua, openLibraries);
    lua_pushlightuserdata(lua, &m_functions);
    const QByteArray chunkName = '=' + name.toUtf8();
    if (lua_pcall(lua, 1, 0, 0) != LUA_OK ||
        luaL_loadbufferx(lua, source.constData(), static_cast<std::size_t>(source.size()),
                         chunkName.constData(), "t") != LUA_OK) {
        const Error error{message()};
        m_lua.reset();
        return error;
    }
    return {};
}

Result<QString> LuaEngine::execute()
{
    const ScriptLocale locale;
    lua_State *lua = m_lua.get();
    m_budget.renew();
    lua_sethook(lua, countSteps, LUA_MASKCOUNT, stepsBetweenChecks);
    lua_pushvalue(lua, chunkIndex);
    const int status = lua_pcall(lua, 0, 1, 0);
    auto outcome = [&]() -> Result<QString> {
        if (const QString why = m_budget.exhaustion(); !why.isNull())
            return Error{why}; // even where the script caught the error as its last act
        if (status != LUA_OK)
            return Error{message()};
        return ScriptValue::text(lua, -1);
    }();
    lua_settop(lua, chunkIndex);
    return outcome;
}

QString LuaEngine::message() const
{
    const QString text = ScriptValue::text(m_lua.get(), -1);
    return text.isNull() ? QString("The script raised an error without a text.") : text;
}

} // namespace dozely

extern "C" __attribute__((visibility("default"))) dozely::ScriptEngine *
dozelyMakeScriptEngine(const NSAppleScript::Limits &limits, const dozely::ScriptFunctions &functions)
{
    return new dozely::LuaEngine(limits, functions);
}
