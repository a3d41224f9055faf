// SPDX-License-Identifier: MIT
#include "hosts/admin/AdminHelp.h"

#include "hosts/admin/AdminText.h"
#include "hosts/admin/DisplayWidth.h"
#include "hosts/admin/OptionTable.h"

#include <QStringList>

#include <utility>

namespace
{
/// Two columns: what there is, and what it does.
struct Layout {
    qsizetype column; ///< Where the second one begins.
    qsizetype width;
};
constexpr Layout ofCommands{33, 98};
constexpr Layout ofOptions{27, 80};
constexpr Layout ofExits{5, 98};
constexpr qsizetype widest = 110; // of what has no columns

QString wrapped(const QString &text, const Layout &layout)
{
    return DisplayWidth::lines(text, layout.width - layout.column).join('\n' + QString(layout.column, ' '));
}

QString row(const QString &title, const QString &text, const Layout &layout)
{
    const QString begin = "  " + title;
    const bool isOneLine = begin.size() + 1 < layout.column;
    return (isOneLine ? DisplayWidth::padded(begin, layout.column)
                      : begin + '\n' + QString(layout.column, ' ')) +
           wrapped(text, layout) + '\n';
}

QString form(const CommandTable::Command &command, const QString &arguments)
{
    const bool hasOptions = command.options.contains("bundle");
    return QString("%1 %2%3").arg(command.name, arguments, hasOptions ? " ..." : "").trimmed();
}

/// What every command takes: names, and what they mean.
QList<std::pair<QString, QString>> commonOptions()
{
    return {{"--host USER@MACHINE", OptionTable::meaningFor(*OptionTable::find("host"), {})},
            {"--root DIR", AdminText::tr("Work on the system below that folder instead of /.")},
            {"-h, --help", AdminText::tr("Show this help and end.")}};
}

/// How a command ends: the status, and what it says.
QList<std::pair<int, QString>> exitsOf(const CommandTable::Command &command)
{
    QString done = AdminText::tr("done");
    QString failed = AdminText::tr("it could not be done (not found, not reachable, damaged)");
    if (command.name == "ping" || command.name == "status") {
        done = AdminText::tr("it is alive");
        failed = AdminText::tr("it is not");
    } else if (command.name == "doctor") {
        done = AdminText::tr("nothing is wrong");
        failed = AdminText::tr("something is wrong");
    } else if (command.name == "apply") {
        done = AdminText::tr("nothing differed");
    } else if (command.name == "update") {
        done = AdminText::tr("up to date");
    }
    QList<std::pair<int, QString>> exits{
        {0, done}, {1, failed}, {2, AdminText::tr("the command line is wrong")}};
    if (command.name != "ping" && command.name != "status" && command.name != "doctor")
        exits += {3, AdminText::tr("not permitted")};
    if (command.name == "apply")
        exits += {4, AdminText::tr("schedules were changed, or would be")};
    if (command.name == "update") {
        exits += {4, AdminText::tr("there is a newer version")};
        exits += {5, AdminText::tr("no answer")};
    }
    return exits;
}

QString commands()
{
    QString text;
    for (const CommandTable::Command &command : CommandTable::all()) {
        if (!command.isShown)
            continue;
        for (const QString &arguments : command.arguments.mid(0, command.arguments.size() - 1))
            text += "  " + form(command, arguments) + '\n';
        text += row(form(command, command.arguments.constLast()), AdminText::tr(command.summary), ofCommands);
    }
    return text;
}

QString options()
{
    QString text =
        row("--root <DIR>", AdminText::tr("Run the system below the folder <DIR> instead of /."), ofOptions) +
        row("-h, --help", AdminText::tr("Show this help and end."), ofOptions) +
        row("--version", AdminText::tr("Show the version and end."), ofOptions);
    for (const OptionTable::Option &option : OptionTable::all()) {
        const QString value = option.valueName.isEmpty() ? QString() : QString(" <%1>").arg(option.valueName);
        text += row(option.dashed() + value, OptionTable::meaningForAll(option), ofOptions);
    }
    return text;
}

/// Paragraphs, each line of which is wrapped alone.
QString paragraphs(const QString &text)
{
    QString result;
    for (const QString &line : text.split('\n'))
        result += wrapped(line, {0, widest}) + '\n';
    return result;
}
} // namespace

QString AdminHelp::ofTool()
{
    const QString program = QCoreApplication::arguments().value(0);
    return AdminText::tr("Usage: %1 [options] COMMAND [ARGUMENTS]").arg(program) + '\n' +
           paragraphs(AdminText::tr("Shows and changes the schedules, asks whether the system's processes "
                                    "are alive, shows the log.")) +
           '\n' + AdminText::tr("Commands:") + '\n' + commands() +
           paragraphs(AdminText::tr(
               "SCHEDULE is an identifier, or a name that only one schedule has. USER is a name or a "
               "number.\n"
               "DATE is what people write: \"06:55\", \"tomorrow 7:00\", \"fri 22:00\", \"22.12. 6:30\", "
               "\"2026-03-14 06:55\", +5m.\n"
               "\"COMMAND --help\" shows the options of a command alone.\n"
               "\n"
               "Exit status: 0 done (ping, status: it is alive; doctor: nothing is wrong; apply: nothing "
               "differed);\n"
               "1 it could not be done (not found, not reachable, damaged; doctor: something is wrong);\n"
               "2 the command line is wrong; 3 not permitted.\n"
               "apply: 4 schedules were changed, or would be.\n"
               "update check: 0 up to date; 4 there is a newer version; 5 no answer.")) +
           '\n' + AdminText::tr("Options:") + '\n' + options() + '\n' + AdminText::tr("Arguments:") + '\n' +
           row("command", AdminText::tr("What to do, see above."), ofOptions);
}

QString AdminHelp::of(const CommandTable::Command &command)
{
    const QString usage = AdminText::tr("Usage:");
    QString text;
    for (const QString &arguments : command.arguments)
        text += QString("%1 dozely-admin %2\n")
                    .arg(text.isEmpty() ? usage : QString(DisplayWidth::of(usage), ' '),
                         form(command, arguments));
    text += '\n' + wrapped(AdminText::tr(command.summary), {0, ofCommands.width}) + "\n\n" +
            AdminText::tr("Options:") + '\n';
    for (const OptionTable::Option &option : OptionTable::all()) {
        const QString value = option.valueName.isEmpty() ? QString() : " " + option.valueName;
        if (command.options.contains(option.name))
            text += row(option.dashed() + value, OptionTable::meaningFor(option, command.name), ofCommands);
    }
    for (const auto &[title, meaning] : commonOptions())
        text += row(title, meaning, ofCommands);
    if (!command.example.isEmpty())
        text += '\n' + AdminText::tr("Example:") + "\n  dozely-admin " + command.example + '\n';
    text += '\n' + AdminText::tr("Exit status:") + '\n';
    for (const auto &[status, meaning] : exitsOf(command))
        text += row(QString::number(status), meaning, ofExits);
    return text;
}
