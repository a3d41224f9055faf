// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>
#include <QUrl>
#include <QVariant>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

/// The key of an error dictionary under which a sentence says what went wrong.
DOZELYKIT_EXPORT extern const QString NSAppleScriptErrorMessage;

/// A script. Its language on this platform is Lua 5.4, in a small world of its own: it reaches neither files
/// nor programs nor other code but by the functions of the table `dozely`, which this system and its hosts
/// register. docs/scripts.md describes them.
///
/// A script object keeps its global variables from one execution to the next.
///
/// THREADING: an object belongs to one thread at a time; objects of several threads do not disturb one
/// another, but a registered function runs on the thread of the script that calls it. BLOCKING: until the
/// script has ended, which the limits enforce.
class DOZELYKIT_EXPORT NSAppleScript
{
public:
    /// What one execution may use up. They name the attacks, or the mistakes: a loop without an end; a text
    /// that doubles until the machine has no memory; a call that waits.
    struct Limits {
        quint64 instructions = 100'000'000;     ///< Of the script, and steps of its pattern matching.
        qint64 memory = 32 << 20;               ///< Bytes.
        std::chrono::milliseconds time{60'000}; ///< On the steady clock, what functions wait for included.
    };

    /// What a script returned.
    class Result
    {
    public:
        explicit Result(QString text = {}) : m_text(std::move(text)) {}

        /// The value as a text; null when it has none: nothing, a table, a function.
        QString stringValue() const { return m_text; }

    private:
        QString m_text;
    };

    /// A function that scripts may call. Arguments and result are property-list values, and invalid for
    /// nothing; an exception derived from std::exception becomes an error of the script.
    using Function = std::function<QVariant(const QVariantList &arguments)>;

    /// The longest source, in bytes of UTF-8.
    static constexpr qint64 maximumSourceSize = 1 << 20;

    /// A script with this source, which is not looked at yet.
    explicit NSAppleScript(const QString &source);

    /// The script in a local file: a regular file with text in UTF-8, of at most maximumSourceSize bytes. A
    /// first line that begins with "#" is passed over. Null, with `errorInfo` filled in, when it cannot be
    /// read or is compiled code.
    static std::unique_ptr<NSAppleScript> initWithContentsOfURL(const QUrl &url, QVariantMap *errorInfo);

    ~NSAppleScript();
    NSAppleScript(const NSAppleScript &) = delete;
    NSAppleScript &operator=(const NSAppleScript &) = delete;

    /// For the executions to come, and from the next compilation on for the memory.
    void setLimits(const Limits &limits);

    /// Compiles the source, without running any of it. False, with `errorInfo` filled in, on failure.
    bool compileAndReturnError(QVariantMap *errorInfo);
    bool isCompiled() const;

    /// Runs the script, compiling it first where that was not done. Absent, with `errorInfo` filled in, on
    /// failure.
    std::optional<Result> executeAndReturnError(QVariantMap *errorInfo);

    /// Lets scripts that are compiled from now on call `function` as `dozely.NAME`; a name that is taken is
    /// replaced. Any thread.
    static void registerFunction(const QString &name, const Function &function);

private:
    struct Private;
    explicit NSAppleScript(std::unique_ptr<Private> state);
    std::unique_ptr<Private> d;
};
