// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/AppleScriptExtensions.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringFormat.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/machine/ChildProgram.h"
#include "DozelyKit/system/machine/ProgramEnvironment.h"
#include "DozelyKit/system/scripting/NSAppleScript.h"

#include <optional>

using namespace dozely;

namespace
{
/// Writes what became of an execution: `errorInfo` is empty when nothing went wrong.
void logOutcome(const std::optional<NSAppleScript::Result> &result, const QVariantMap &errorInfo)
{
    constexpr qsizetype longest = 1 << 20; // characters: a script may hold far more than a log should
    if (!errorInfo.isEmpty())
        ZDRLog("Erreur lors de l'execution du script AS: %@",
               logLabel(errorInfo.value(NSAppleScriptErrorMessage).toString(), longest));
    else if (result && !result->stringValue().isNull())
        ZDRLog("Resultat de l'execution du script AS: %@", logLabel(result->stringValue(), longest));
}
} // namespace

void zandorSoftwaresExtensions::executeScriptInNSTask(const QVariant &source)
{
    const auto environment = ProgramEnvironment::ofSession();
    const ChildProgram tool{RootFolder::join("/usr/bin/osascript"),
                            {"-e", stringWithFormat("%@", {source})},
                            environment.variables,
                            environment.workingFolder};
    tool.launch();
}

void zandorSoftwaresExtensions::executeScript(const QString &source)
{
    registerScriptFunctions();
    NSAppleScript script(source);
    QVariantMap errorInfo;
    if (!script.compileAndReturnError(&errorInfo)) {
        ZDRLog("Impossible de compiler le script");
        return;
    }
    const auto result = script.executeAndReturnError(&errorInfo);
    logOutcome(result, errorInfo);
}

void zandorSoftwaresExtensions::executeScriptFile(const QString &path)
{
    registerScriptFunctions();
    QVariantMap errorInfo;
    const auto script = NSAppleScript::initWithContentsOfURL(QUrl::fromLocalFile(path), &errorInfo);
    const auto result = script ? script->executeAndReturnError(&errorInfo) : std::nullopt;
    logOutcome(result, errorInfo);
}
