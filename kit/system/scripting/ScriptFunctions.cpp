// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/StringFormat.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/machine/ChildProgram.h"
#include "DozelyKit/system/machine/ProgramEnvironment.h"
#include "DozelyKit/system/scripting/AppleScriptExtensions.h"
#include "DozelyKit/system/scripting/NSAppleScript.h"
#include "DozelyKit/system/scripting/ScriptLogRoom_p.h"

#include <mutex>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds longestRun{30};
constexpr qsizetype longestOutput = 1 << 20; // bytes

[[noreturn]] void refuse(const QString &sentence)
{
    throw NSException(NSInvalidArgumentException, sentence);
}

QString textArgument(const QVariantList &arguments, int index, const QString &what)
{
    const QVariant value = arguments.value(index);
    if (value.typeId() != QMetaType::QString)
        refuse(what + " has to be a text");
    // It would be cut there on its way to where it is used.
    if (value.toString().contains(QChar(0)))
        refuse(what + " holds a NUL character");
    return value.toString();
}

/// log(value): one line, whatever the value holds: a script is not to write lines in another's name.
QVariant logValue(const QVariantList &arguments)
{
    constexpr qsizetype restOfLine = 100; // bytes, about: the stamp and who writes
    const QString line = logLabel(descriptionOf(arguments.value(0)), wholeText);
    if (!ScriptLogRoom::take(line.toUtf8().size() + restOfLine))
        refuse("the script writes too much to the log");
    ZDRLog("%@", line);
    return {};
}

/// post(name [, sender [, information]]): to the observers in this process.
QVariant postNotification(const QVariantList &arguments)
{
    const QString name = textArgument(arguments, 0, "the notification's name");
    const QVariant sender = arguments.value(1);
    if (sender.isValid())
        textArgument(arguments, 1, "the notification's sender");
    const QVariant information = arguments.value(2);
    const bool isEmptyTable =
        information.typeId() == QMetaType::QVariantList && information.toList().isEmpty();
    if (information.isValid() && !isEmptyTable && information.typeId() != QMetaType::QVariantMap)
        refuse("the notification's information has to be a table with texts as keys");
    NSNotificationCenter::defaultCenter().postNotificationName(name, sender, information.toMap());
    return {};
}

/// run(program [, arguments]): waits for it; a table with status, signal and output.
QVariant runProgram(const QVariantList &arguments)
{
    ChildProgram program;
    program.path = textArgument(arguments, 0, "the program");
    if (!program.path.startsWith('/'))
        refuse("the program has to be an absolute path");
    const QVariant list = arguments.value(1);
    if (list.isValid() && list.typeId() != QMetaType::QVariantList)
        refuse("the program's arguments have to be a list");
    const QVariantList texts = list.toList();
    for (int i = 0; i < texts.size(); ++i)
        program.arguments += textArgument(texts, i, QString("the program's argument %1").arg(i + 1));
    const auto environment = ProgramEnvironment::ofSession();
    program.environment = environment.variables;
    program.workingFolder = environment.workingFolder;
    const auto ending = program.run(longestRun, longestOutput);
    if (!ending)
        refuse(ending.error().text + '.');
    QVariantMap result{{"output", ending->output}};
    if (ending->signal != 0)
        result.insert("signal", ending->signal);
    else
        result.insert("status", ending->status);
    return result;
}
} // namespace

void zandorSoftwaresExtensions::registerScriptFunctions()
{
    static std::once_flag once;
    std::call_once(once, [] {
        NSAppleScript::registerFunction("log", logValue);
        NSAppleScript::registerFunction("post", postNotification);
        NSAppleScript::registerFunction("run", runProgram);
    });
}
