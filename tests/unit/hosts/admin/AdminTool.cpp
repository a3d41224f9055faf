// SPDX-License-Identifier: MIT
#include "unit/hosts/admin/AdminTool.h"

#include "support/WaitUntil.h"

#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <grp.h>
#include <unistd.h>

QJsonObject AdminTool::Result::json() const
{
    const bool isOneLine = output.count('\n') == 1 && output.endsWith('\n');
    return isOneLine ? QJsonDocument::fromJson(output).object() : QJsonObject();
}

AdminTool::AdminTool()
{
    const QString bundle = "/Library/Application Support/Dozely/PlugIns/Command.plugin/Contents";
    EXPECT_TRUE(QFile::copy(COMMAND_INFO, root.makeFolder(bundle) + "/Info.plist"));
    const QString programs = root.makeFolder("/usr");
    EXPECT_TRUE(QFile::copy(ADMIN_PROGRAM, programs + "/dozely-admin"));
    EXPECT_TRUE(QFile::copy(KIT_LIBRARY, programs + "/libDozelyKit.so.0"));
    for (const char *folder :
         {"/Library", "/Library/Application Support", "/Library/Application Support/Dozely",
          "/Library/Application Support/Dozely/PlugIns"})
        root.makeFolder(folder);
}

void AdminTool::prepare(QProcess &process, const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LD_LIBRARY_PATH", root.join("/usr"));
    environment.insert("LC_ALL", locale);
    environment.insert("LANGUAGE", languages);
    process.setProcessEnvironment(environment);
    process.setProgram(root.join("/usr/dozely-admin"));
    process.setArguments(QStringList{"--root", root.path()} + arguments);
}

AdminTool::Result AdminTool::run(const QStringList &arguments, bool asOtherUser)
{
    QProcess process;
    prepare(process, arguments);
    if (asOtherUser && ::geteuid() == 0) {
        process.setChildProcessModifier([] {
            if (::setgroups(0, nullptr) != 0 || ::setgid(otherUser) != 0 || ::setuid(otherUser) != 0)
                ::_exit(99);
        });
    }
    process.start();
    const bool ended = waitUntil([&] { return process.state() == QProcess::NotRunning; });
    EXPECT_TRUE(ended) << qPrintable(arguments.join(' '));
    const bool byItself = ended && process.exitStatus() == QProcess::NormalExit;
    return {byItself ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

QString AdminTool::add(const QString &name, const QStringList &more)
{
    const Result result =
        run(QStringList{"add", name, "--program", "/bin/true", "--in", "3600", "--json"} + more);
    EXPECT_EQ(result.status, 0) << result.errors.constData();
    return result.json()["schedule"].toObject()["identifier"].toString();
}

QByteArray AdminTool::store() const
{
    QFile file(storePath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void AdminTool::writeStore(const QByteArray &content) const
{
    root.makeFolder("/Library/Preferences");
    QFile file(storePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
}
