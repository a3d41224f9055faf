// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/system/scripting/NSAppleScript.h"

#include <QByteArray>
#include <QMap>

#include <memory>

struct lua_State;

namespace dozely
{

using ScriptFunctions = QMap<QString, NSAppleScript::Function>;

/// What an execution may still use up. It lies beside the interpreter, which knows where.
class ScriptBudget
{
public:
    explicit ScriptBudget(const NSAppleScript::Limits &limits) : limits(limits) {}

    /// The budget of a running script.
    static ScriptBudget &of(lua_State *lua);

    /// Begins an execution.
    void renew();

    /// Counts steps; raises an error of the script when they, or the time, are used up, and then at each
    /// instruction to come, so that no script can catch it and go on.
    void spend(lua_State *lua, quint64 steps);

    /// Why the execution has to end; null as long as it may go on.
    const char *exhaustion() const { return m_exhaustion; }

    NSAppleScript::Limits limits;
    qint64 memory = 0; ///< Bytes that the interpreter holds.

private:
    quint64 m_steps = 0;
    std::chrono::milliseconds m_deadline{0}; // on the steady clock
    const char *m_exhaustion = nullptr;
};

/// One interpreter with one script. The interpreter is built to raise its errors as C++ exceptions:
/// destructors run on the way, and nothing else may catch everything.
///
/// The texts of failures are what people are shown: sentences of ours, and the interpreter's as they stand.
class DOZELYKIT_AUTOTEST_EXPORT ScriptEngine
{
public:
    ScriptEngine(const NSAppleScript::Limits &limits, ScriptFunctions functions);
    ~ScriptEngine();
    ScriptEngine(const ScriptEngine &) = delete;
    ScriptEngine &operator=(const ScriptEngine &) = delete;

    /// The source in the bytes of a file: without byte order mark, and with a first line "#..." made empty.
    /// An error for compiled code and for what is no UTF-8.
    static Result<QByteArray> sourceInFile(const QByteArray &content);

    void setLimits(const NSAppleScript::Limits &limits) { m_budget.limits = limits; }

    /// Compiles UTF-8 text; `name` stands for it in messages. Once for each object.
    Result<void> compile(const QByteArray &source, const QString &name);

    /// Runs what was compiled. The text of its result, null when it has none.
    Result<QString> execute();

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
