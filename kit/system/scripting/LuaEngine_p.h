// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/scripting/ScriptEngine_p.h"

struct lua_State;

namespace dozely
{

/// What an execution may still use up. It lies beside the interpreter, which knows where.
class ScriptBudget
{
public:
    explicit ScriptBudget(const NSAppleScript::Limits &limits) : limits(limits) {}

    /// The budget of a running script.
    static ScriptBudget &of(lua_State *lua);

    /// Begins an execution.
    void renew();

    /// What an error costs that is caught: raising one takes far longer than an instruction.
    static constexpr quint64 stepsPerError = 500;

    /// Counts steps; raises an error of the script when they, or the time, are used up, and then at each
    /// instruction to come, so that no script can catch it and go on.
    void spend(lua_State *lua, quint64 steps);

    /// Raises an error of the script when it may never hold so many bytes.
    void needMemory(lua_State *lua, quint64 bytes);

    /// To be told of bytes that were refused, and of those that were given. The interpreter asks once more
    /// after it has collected its garbage; when that was in vain, the execution ends: to catch that error is
    /// of no use.
    /// @{
    void noteRefusal(const void *block, std::size_t size);
    void noteGrowth() { m_refusedSize = 0; }
    /// @}
    void exhaustMemory();

    /// Why the execution has to end, in a sentence; null as long as it may go on.
    QString exhaustion() const;

    NSAppleScript::Limits limits;
    qint64 memory = 0; ///< Bytes that the interpreter holds.

private:
    quint64 m_steps = 0;
    std::chrono::milliseconds m_deadline{0}; // on the steady clock
    const char *m_exhaustion = nullptr;
    const void *m_refusedBlock = nullptr;
    std::size_t m_refusedSize = 0; // 0: what was asked for last was given
};

/// The engine on Lua 5.4. The interpreter is built to raise its errors as C++ exceptions: destructors run on
/// the way, and nothing else may catch everything.
class LuaEngine : public ScriptEngine
{
public:
    LuaEngine(const NSAppleScript::Limits &limits, ScriptFunctions functions);
    ~LuaEngine() override;

    void setLimits(const NSAppleScript::Limits &limits) override { m_budget.limits = limits; }
    Result<void> compile(const QByteArray &source, const QString &name) override;
    Result<QString> execute() override;

private:
    struct Close {
        void operator()(lua_State *lua) const;
    };
    QString message() const;

    ScriptBudget m_budget;
    ScriptFunctions m_functions;
    std::unique_ptr<lua_State, Close> m_lua;
};

} // namespace dozely
