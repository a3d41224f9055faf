// SPDX-License-Identifier: MIT
#include "hosts/admin/RemoteHost.h"

#include "hosts/admin/AdminError.h"
#include "support/PrintTo.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QFile>

#include <gmock/gmock.h>

#include <sys/stat.h>

using testing::HasSubstr;

namespace
{
/// The tool with a stand-in for ssh, which runs the command by a shell, as a machine on the other side does.
class RemoteHostTest : public testing::Test
{
protected:
    RemoteHostTest()
    {
        // What ssh was asked for, a line each; then the command, where the tool and its library are found.
        write("/bin/ssh",
              QString("#!/bin/sh\nprintf '%s\\n' \"$@\" > '%1/asked'\n"
                      "[ \"$4\" = nobody@gone ] && exit 255\n"
                      "cd /; export LD_LIBRARY_PATH='%1/usr'; PATH='%1/usr':$PATH; exec /bin/sh -c \"$5\"\n")
                  .arg(tool.root.path())
                  .toUtf8());
        ::chmod(QFile::encodeName(tool.root.join("/bin/ssh")).constData(), 0755);
    }

    void write(const QString &path, const QByteArray &content)
    {
        tool.root.makeFolder(path.left(path.lastIndexOf('/')));
        QFile file(tool.root.join(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    AdminTool::Result run(const QStringList &arguments)
    {
        QProcess process;
        tool.prepare(process, arguments);
        QProcessEnvironment environment = process.processEnvironment();
        environment.insert("PATH", tool.root.join("/bin") + ":" + environment.value("PATH"));
        process.setProcessEnvironment(environment);
        process.start();
        EXPECT_TRUE(process.waitForFinished());
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    QString asked() const
    {
        QFile file(tool.root.join("/asked"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    AdminTool tool;
};
} // namespace

TEST_F(RemoteHostTest, ACommandIsRunOnTheOtherMachine)
{
    tool.add("It's \"5 o'clock\" $HOME; `id`");
    const auto list = run({"--host", "root@example.org", "list"});
    EXPECT_EQ(list.status, 0) << list.errors.constData();
    EXPECT_THAT(list.output.toStdString(), HasSubstr("It's \"5 o'clock\" $HOME; `id`"));
    EXPECT_TRUE(asked().startsWith("-x\n-T\n--\nroot@example.org\ndozely-admin --root "))
        << qPrintable(asked());
    EXPECT_FALSE(asked().contains("--host"));
}

TEST_F(RemoteHostTest, AFileThatCannotBeReadIsNamedAndNobodyIsAsked)
{
    const auto applied = run({"--host", "root@example.org", "apply", "/nowhere/wanted.yaml"});
    EXPECT_EQ(applied.status, 1);
    EXPECT_THAT(applied.errors.toStdString(), HasSubstr("/nowhere/wanted.yaml cannot be read: No such file"));
    EXPECT_EQ(asked(), QString());
}

TEST_F(RemoteHostTest, EveryWordArrivesAsItIs)
{
    const QString name = "It's \"5 o'clock\" $HOME; `id` *\\";
    const auto added =
        run({"add", name, "--program", "/bin/true", "--in", "3600", "--host=root@example.org", "--json"});
    EXPECT_EQ(added.status, 0) << added.errors.constData();
    EXPECT_EQ(added.json()["schedule"].toObject()["name"].toString(), name);
}

TEST_F(RemoteHostTest, TheExitStatusIsThatOfTheOtherMachine)
{
    EXPECT_EQ(run({"remove", "Nothing", "--host", "root@example.org"}).status, 1);
    const auto gone = run({"list", "--host", "nobody@gone"});
    EXPECT_EQ(gone.status, 1);
    EXPECT_THAT(gone.errors.toStdString(), HasSubstr("nobody@gone cannot be reached by ssh."));
}

TEST_F(RemoteHostTest, AWrongCommandLineIsRefusedHere)
{
    EXPECT_EQ(run({"dance", "--host", "root@example.org"}).status, 2);
    EXPECT_EQ(asked(), QString());
    for (const char *host : {"-oProxyCommand=id", "", "a b", "a\nb"})
        EXPECT_THROW((void)RemoteHost::commandFor(host, {}), AdminError) << host;
}
