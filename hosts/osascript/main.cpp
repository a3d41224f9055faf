// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/system/scripting/AppleScriptExtensions.h"
#include "DozelyKit/system/scripting/NSAppleScript.h"
#include "hosts/common/events/EventScriptFunction.h"
#include "hosts/common/program/HostOptions.h"
#include "hosts/common/program/RelocatedTool.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{
constexpr int success = 0;
constexpr int failure = 1;

void print(std::FILE *stream, const QString &text)
{
    std::fputs((text + '\n').toUtf8().constData(), stream);
}

int complain(const QString &sentence, int status)
{
    print(stderr, QString("%1: %2").arg(NSProcessInfo::processName(), sentence));
    return status;
}

/// Runs the script and prints its result, or what went wrong.
int printOutcome(NSAppleScript *script, QVariantMap errorInfo)
{
    const auto result = script ? script->executeAndReturnError(&errorInfo) : std::nullopt;
    if (!result)
        return complain(
            dozely::logLabel(errorInfo.value(NSAppleScriptErrorMessage).toString(), dozely::wholeText),
            failure);
    if (!result->stringValue().isNull())
        print(stdout, result->stringValue());
    return success;
}
} // namespace

int main(int argc, char **argv)
{
    using namespace zandorSoftwaresExtensions;
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName("osascript");
    NSProcessInfo::setProcessName("osascript");
    takeRootFromOwnPlace("/usr/bin/osascript");
    HostOptions options("Runs a script.");
    const QCommandLineOption source("e", "Run the script <SOURCE>; several are its lines.", "SOURCE");
    const QCommandLineOption log("log", "Write the result, or what went wrong, to the log.");
    options.parser().addOptions({source, log});
    options.parser().addPositionalArgument("FILE", "The file that holds the script.", "[FILE]");
    if (const auto status = options.parse(QCoreApplication::arguments()))
        return *status;

    const QStringList files = options.parser().positionalArguments();
    const bool hasSource = options.parser().isSet(source);
    if (files.size() != (hasSource ? 0 : 1))
        return complain("give either -e SOURCE or one FILE", HostOptions::badUsage);
    EventScriptFunction::registerFunction();
    const QString text = options.parser().values(source).join('\n');
    if (options.parser().isSet(log)) {
        if (hasSource)
            executeScript(text);
        else
            executeScriptFile(files.first());
        return success;
    }
    if (hasSource) {
        NSAppleScript script(text);
        return printOutcome(&script, {});
    }
    QVariantMap errorInfo;
    const auto script = NSAppleScript::initWithContentsOfURL(QUrl::fromLocalFile(files.first()), &errorInfo);
    return printOutcome(script.get(), errorInfo);
}
