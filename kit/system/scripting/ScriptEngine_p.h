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

    /// What an error costs that is caught: raising one takes far longer than an instruction.
    static constexpr quint64 stepsPerError = 500;

    /// What a script may write to the log in one execution, in bytes.
    static constexpr qsizetype mostLogged = 1 << 20;

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

    /// Takes bytes from what may be logged; false when there are not so many left, and from then on.
    bool takeLogRoom(qsizetype bytes);

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
    qsizetype m_logged = 0;        // bytes
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

    /// Takes so many bytes from what the script that runs on this thread may still write to the log; false
    /// when it may not. True where none runs.
    static bool takeLogRoom(qsizetype bytes);

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
