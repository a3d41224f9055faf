// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/LinuxProcessTable_p.h"

#include "support/PrintTo.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace dozely;

namespace
{
/// A folder that looks like the kernel's.
class LinuxProcessTableTest : public testing::Test
{
protected:
    void add(const QString &entry, const QByteArray &name, const QByteArray &status)
    {
        QDir(folder.path()).mkpath(entry);
        write(entry + "/comm", name);
        write(entry + "/status", status);
    }
    void write(const QString &path, const QByteArray &content)
    {
        QFile file(folder.filePath(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QList<qint32> identifiers()
    {
        QList<qint32> found;
        for (const auto &process : LinuxProcessTable(folder.path().toUtf8()).processes())
            found += process.identifier;
        return found;
    }
    QTemporaryDir folder;
};

constexpr char alices[] = "Name:\tx\nUid:\t1001\t0\t0\t0\nGid:\t5\t5\t5\t5\n";
} // namespace

TEST_F(LinuxProcessTableTest, ListsByAscendingIdWithNameAndRealUser)
{
    add("100", "hundred\n", alices);
    add("9", "nine\n", "Name:\tnine\nUid:\t4000000000\t1\t1\t1\n");
    const auto table = LinuxProcessTable(folder.path().toUtf8()).processes();
    ASSERT_EQ(table.size(), 2);
    EXPECT_EQ(table[0].identifier, 9);
    EXPECT_EQ(table[0].name, "nine");
    EXPECT_EQ(table[0].realUserId, 4'000'000'000U);
    EXPECT_EQ(table[1].identifier, 100);
    EXPECT_EQ(table[1].realUserId, 1001U);
}

TEST_F(LinuxProcessTableTest, PassesOverWhatVanishedWhileItWasRead)
{
    add("5", "five\n", alices);
    QDir(folder.path()).mkpath("6"); // gone before its name was read
    QDir(folder.path()).mkpath("7"); // gone between name and user
    write("7/comm", "seven\n");
    QDir(folder.path()).mkpath("8"); // its files lead nowhere
    ASSERT_TRUE(QFile::link("/nonexistent/comm", folder.filePath("8/comm")));
    add("9", "nine\n", alices);
    EXPECT_EQ(identifiers(), QList<qint32>({5, 9}));
}

TEST_F(LinuxProcessTableTest, NeverTakesAnUnreadableUserForTheSuperuser)
{
    add("5", "five\n", "Name:\tfive\n");
    add("6", "six\n", "Name:\tsix\nUid:\t\t0\t0\t0\n");
    add("7", "seven\n", "Name:\tseven\nUid:\t99999999999\t0\t0\t0\n");
    EXPECT_TRUE(identifiers().isEmpty());
}

TEST_F(LinuxProcessTableTest, IsNotMisledByANameThatLooksLikeAUser)
{
    add("5", "Uid:\t0\n", "Name:\tUid:\\t0\nUid:\t1001\t0\t0\t0\n");
    const auto table = LinuxProcessTable(folder.path().toUtf8()).processes();
    ASSERT_EQ(table.size(), 1);
    EXPECT_EQ(table[0].realUserId, 1001U);
    EXPECT_EQ(table[0].name, "Uid:\t0");
}

TEST_F(LinuxProcessTableTest, KnowsFoldersOfProcessesFromOthers)
{
    add("self", "x\n", alices);
    add("12a", "x\n", alices);
    add("+3", "x\n", alices);
    add("007", "x\n", alices);
    add("99999999999", "x\n", alices);
    EXPECT_TRUE(identifiers().isEmpty());
}

TEST_F(LinuxProcessTableTest, IsEmptyWhenItCannotBeRead)
{
    EXPECT_TRUE(LinuxProcessTable("/nonexistent").processes().isEmpty());
}

TEST_F(LinuxProcessTableTest, FindsThisProcessEveryTimeWhileOthersComeAndGo)
{
    std::atomic<bool> stop{false};
    std::thread churn([&stop] {
        while (!stop) {
            const pid_t child = ::fork();
            if (child == 0)
                ::_exit(0);
            if (child > 0)
                ::waitpid(child, nullptr, 0);
        }
    });
    LinuxProcessTable table;
    int found = 0;
    constexpr int rounds = 100;
    for (int i = 0; i < rounds; ++i) {
        const auto processes = table.processes();
        found += std::any_of(processes.begin(), processes.end(),
                             [](const auto &process) {
                                 return process.identifier == ::getpid() && process.realUserId == ::getuid();
                             })
                     ? 1
                     : 0;
    }
    stop = true;
    churn.join();
    EXPECT_EQ(found, rounds);
}
