// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandLine.h"

#include "DozelyKit/plugin/Names.h"

#include <QVariantList>

using namespace dozely;

namespace
{
QString programFault(const QVariant &program)
{
    if (!program.isValid())
        return "the parameter \"Program\" is missing";
    if (program.typeId() != QMetaType::QString)
        return "the parameter \"Program\" is not a string";
    const QString path = program.toString();
    if (!path.startsWith('/'))
        return "the parameter \"Program\" is not an absolute path";
    return path.contains(QChar(0)) ? "the parameter \"Program\" holds a NUL character" : QString();
}

QString argumentsFault(const QVariant &arguments)
{
    if (!arguments.isValid())
        return {};
    if (arguments.typeId() != QMetaType::QVariantList && arguments.typeId() != QMetaType::QStringList)
        return "the parameter \"Arguments\" is not a list";
    const QVariantList list = arguments.toList();
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (list.at(i).typeId() != QMetaType::QString)
            return QString("entry %1 of the parameter \"Arguments\" is not a string").arg(i + 1);
        // The program would see the argument cut there.
        if (list.at(i).toString().contains(QChar(0)))
            return QString("entry %1 of the parameter \"Arguments\" holds a NUL character").arg(i + 1);
    }
    return {};
}
} // namespace

Result<CommandLine> CommandLine::fromParameters(const QVariantMap &parameters)
{
    const QVariant program = parameters.value(CommandKey::program);
    const QVariant arguments = parameters.value(CommandKey::arguments);
    QString fault = programFault(program);
    if (fault.isEmpty())
        fault = argumentsFault(arguments);
    if (!fault.isEmpty())
        return Error{fault};
    return CommandLine{program.toString(), arguments.toStringList()};
}
