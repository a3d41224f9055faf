// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/system/scripting/NSAppleScript.h"

#include <QByteArray>
#include <QMap>

#include <memory>

namespace dozely
{

using ScriptFunctions = QMap<QString, NSAppleScript::Function>;

/// One interpreter with one script.
///
/// The interpreter lies in a module beside the library, which the first script opens: most processes never
/// run one (docs/decisions/libraries-when-needed.md).
///
/// The texts of failures are what people are shown: sentences of ours, and the interpreter's as they stand.
class DOZELYKIT_AUTOTEST_EXPORT ScriptEngine
{
public:
    /// An engine of the module. An error, and a line in the log, when the module cannot be opened.
    /// THREADING: any thread. BLOCKING: for the disk, until it has been opened once.
    static Result<std::unique_ptr<ScriptEngine>> make(const NSAppleScript::Limits &limits,
                                                      const ScriptFunctions &functions);

    ScriptEngine() = default;
    virtual ~ScriptEngine() = default;
    ScriptEngine(const ScriptEngine &) = delete;
    ScriptEngine &operator=(const ScriptEngine &) = delete;

    /// With what compiled code begins in place of a text.
    static constexpr char beginOfCompiledCode = '\x1b';

    /// The source in the bytes of a file: without byte order mark, and with a first line "#..." made empty.
    /// An error for compiled code and for what is no UTF-8.
    static Result<QByteArray> sourceInFile(const QByteArray &content);

    virtual void setLimits(const NSAppleScript::Limits &limits) = 0;

    /// Compiles UTF-8 text; `name` stands for it in messages. Once for each object.
    virtual Result<void> compile(const QByteArray &source, const QString &name) = 0;

    /// Runs what was compiled. The text of its result, null when it has none.
    virtual Result<QString> execute() = 0;
};

/// The one function of the module, by this name.
/// @{
using MakeScriptEngine = ScriptEngine *(const NSAppleScript::Limits &, const ScriptFunctions &);
constexpr char makeScriptEngine[] = "dozelyMakeScriptEngine";
/// @}

} // namespace dozely
