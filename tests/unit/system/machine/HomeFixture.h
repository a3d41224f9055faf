// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/StringExtensions.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gmock/gmock.h>

/// A home folder of the test's own: that of the current user, below a scratch root.
class HomeFixture : public testing::Test
{
protected:
    HomeFixture() : home(root.makeFolder(RealHomeDirectory())) { qunsetenv("XDG_CONFIG_HOME"); }

    QString inHome(const QString &path) const { return home + path; }

    void write(const QString &path, const QByteArray &content) const
    {
        root.makeFolder((RealHomeDirectory() + path).section('/', 0, -2));
        QFile file(inHome(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray content(const QString &path) const
    {
        QFile file(inHome(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// What Python, whose property lists are another implementation's, prints for a script whose first
    /// argument is `path`.
    QByteArray python(const QString &script, const QString &path, const QStringList &arguments = {}) const
    {
        QProcess process;
        process.start("/usr/bin/python3", QStringList{"-c", script, inHome(path)} + arguments);
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        return process.readAllStandardOutput();
    }
    /// Writes the Python expression `value` as a property list; `format` is "FMT_XML" or "FMT_BINARY".
    void writeList(const QString &path, const QString &value, const QString &format) const
    {
        root.makeFolder((RealHomeDirectory() + path).section('/', 0, -2));
        python(
            "import sys, plistlib, datetime\n"
            "plistlib.dump(eval(sys.argv[2]), open(sys.argv[1], 'wb'), fmt=getattr(plistlib, sys.argv[3]))",
            path, {value, format});
    }
    /// Whether the list at `path` equals the Python expression.
    bool listEquals(const QString &path, const QString &value) const
    {
        const QByteArray answer = python("import sys, plistlib, datetime\n"
                                         "found = plistlib.load(open(sys.argv[1], 'rb'))\n"
                                         "print(found == eval(sys.argv[2])); print(found)",
                                         path, {value});
        EXPECT_TRUE(answer.startsWith("True\n")) << answer.constData();
        return answer.startsWith("True\n");
    }

    ScratchRoot root;
    const QString home;
};
