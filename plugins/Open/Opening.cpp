// SPDX-License-Identifier: MIT
#include "plugins/Open/Opening.h"

#include "DozelyKit/core/foundation/StringExtensions.h"
#include "plugins/Open/DesktopEntry.h"

#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QStandardPaths>

using namespace dozely;

namespace
{
/// All that the desktop has set, but for what the service manager gives each unit.
QByteArrayList environment()
{
    static const QRegularExpression ofUnits(
        "^(INVOCATION_ID|JOURNAL_STREAM|NOTIFY_SOCKET|SYSTEMD_EXEC_PID|LISTEN_\\w+|WATCHDOG_\\w+)=");
    QByteArrayList entries;
    for (const QString &entry : QProcessEnvironment::systemEnvironment().toStringList()) {
        if (!ofUnits.match(entry).hasMatch())
            entries += QFile::encodeName(entry);
    }
    return entries;
}

Result<ChildProgram> programOf(const QStringList &command, const QString &folder)
{
    // An absolute path is found as it stands.
    const QString path = QStandardPaths::findExecutable(command.first());
    if (path.isEmpty())
        return Error{QString("the program %1 is not there").arg(command.first())};
    const QString home = RealHomeDirectory();
    ChildProgram program{path, command.mid(1), environment(), home.startsWith('/') ? home : "/"};
    if (folder.startsWith('/'))
        program.workingFolder = folder;
    program.sharesOutput = true;
    return program;
}

Result<ChildProgram> programOfApplication(const QString &item)
{
    const QString path =
        item.startsWith('/') ? item : QStandardPaths::locate(QStandardPaths::ApplicationsLocation, item);
    if (path.isEmpty())
        return Error{QString("there is no application %1").arg(item)};
    auto entry = DesktopEntry::read(path);
    if (!entry)
        return entry.error();
    if (entry->needsTerminal)
        entry->command = QStringList{"x-terminal-emulator", "-e"} + entry->command;
    return programOf(entry->command, entry->folder);
}
} // namespace

Result<ChildProgram> Opening::programFor(const QString &item)
{
    static const QRegularExpression address("^[A-Za-z][A-Za-z0-9+.-]+:[^\\s\\x00]+$");
    if (item.contains(QChar(0)))
        return Error{"an item holds a NUL character"};
    if (item.startsWith('/') ? !QFileInfo::exists(item) : false)
        return Error{QString("%1 is not there").arg(item)};
    const bool isName = !item.contains('/') && !item.contains(':');
    if (item.endsWith(".desktop") && (item.startsWith('/') || isName))
        return programOfApplication(item);
    if (!item.startsWith('/') && !address.match(item).hasMatch())
        return Error{QString("\"%1\" is neither an absolute path nor an address").arg(item)};
    return programOf({"xdg-open", item}, {});
}

ChildProgram Opening::outliving(ChildProgram program)
{
    const QString runner = QStandardPaths::findExecutable("systemd-run");
    if (!qEnvironmentVariableIsSet("INVOCATION_ID") || runner.isEmpty())
        return program;
    program.arguments =
        QStringList{"--user", "--scope", "--quiet", "--collect", "--slice=app.slice", "--", program.path} +
        program.arguments;
    program.path = runner;
    return program;
}
