// SPDX-License-Identifier: MIT
#include "hosts/admin/LogCommand.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Output.h"
#include "hosts/common/log/LogReader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QRegularExpression>

#include <optional>

using namespace dozely;

namespace
{
constexpr int usualLines = 20;
constexpr int mostLines = 1'000'000;

int lineCount(const AdminOptions &options)
{
    if (!options.isSet("lines"))
        return usualLines;
    bool isNumber = false;
    const int count = options.value("lines").toInt(&isNumber);
    if (!isNumber || count < 0 || count > mostLines) {
        throw AdminError(ExitStatus::BadUsage,
                         AdminText::tr("\"%1\" is not a number of lines.").arg(options.value("lines")));
    }
    return count;
}

void show(const QList<QByteArray> &lines, bool inJson)
{
    for (const QByteArray &line : lines) {
        if (inJson)
            Output::json(LogCommand::parts(line));
        else
            Output::line(Output::escaped(QString::fromUtf8(line)));
    }
}

/// Shows new lines as the file and its folder change. Returns only by raising.
void follow(LogReader &reader, const QString &path, bool inJson)
{
    QFileSystemWatcher watcher({QFileInfo(path).path()});
    std::optional<AdminError> failure; // an exception must not pass through the event loop
    const auto look = [&] {
        // A file that was exchanged is no longer watched, whatever the watcher's list says.
        watcher.removePath(path);
        watcher.addPath(path);
        try {
            show(reader.newLines(), inJson);
        } catch (const AdminError &error) {
            failure = error;
            QCoreApplication::quit();
        }
    };
    QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &watcher, look);
    QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, &watcher, look);
    QMetaObject::invokeMethod(&watcher, look, Qt::QueuedConnection); // what came before the watch began
    QCoreApplication::exec();
    throw failure.value_or(AdminError(ExitStatus::Failed, AdminText::tr("The log is no longer followed.")));
}
} // namespace

QVariantMap LogCommand::parts(const QByteArray &line)
{
    const QString text = QString::fromUtf8(line);
    static const QRegularExpression stamped(R"(^(\w{3} \d\d \d\d:\d\d:\d\d) (.*)$)");
    const auto whole = stamped.match(text);
    if (!whole.hasMatch())
        return {{"message", text}};
    static const QRegularExpression ofARole(
        R"(^\((-?\d+) - (-?\d+) - (-?\d+) - (Daemon|User Agent|App|Admin)\): (.*)$)");
    const auto body = ofARole.match(whole.captured(2));
    if (!body.hasMatch())
        return {{"stamp", whole.captured(1)}, {"message", whole.captured(2)}};
    return {{"stamp", whole.captured(1)},
            {"process", body.captured(1).toLongLong()},
            {"parent", body.captured(2).toLongLong()},
            {"user", body.captured(3).toLongLong()},
            {"role", body.captured(4)},
            {"message", body.captured(5)}};
}

void LogCommand::run(const AdminOptions &options)
{
    const int count = lineCount(options);
    const bool inJson = options.isSet("json");
    const QString path = RootFolder::join("/var/log/dozely.log");
    LogReader reader(path);
    const auto isThere = reader.open();
    if (!isThere && QFileInfo::exists(path)) {
        const auto status = QFileInfo(path).isReadable() ? ExitStatus::Failed : ExitStatus::NotPermitted;
        throw AdminError(
            status, AdminText::tr("%1 cannot be read: %2.").arg(path, AdminText::reason(isThere.error())));
    }
    if (!isThere && !(options.isSet("follow") && QFileInfo(QFileInfo(path).path()).isDir()))
        throw AdminError(ExitStatus::Failed, AdminText::tr("There is no log at %1.").arg(path));
    show(reader.lastLines(count), inJson);
    if (options.isSet("follow"))
        follow(reader, path, inJson);
}
