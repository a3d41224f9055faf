// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/communication/events/linux/EventProcesses_p.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/core/bundles/NSBundle.h"
#include "support/Identity.h"
#include "support/ScratchRoot.h"
#include "support/SignalProcess.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace dozely;

namespace
{
constexpr OSType signature = fourCharCode("Tst1");

/// Another process that has announced itself, until it is ended.
class Announcer
{
public:
    explicit Announcer(OSType itsSignature = signature, bool announces = true)
    {
        int ready[2];
        if (::pipe(ready) != 0)
            return;
        m_process = ::fork();
        if (m_process == 0) {
            const auto port = announces ? EventProcesses().announce(itsSignature) : nullptr;
            const char done = port || !announces ? 'y' : 'n';
            if (::write(ready[1], &done, 1) == 1)
                ::pause();
            ::_exit(1);
        }
        ::close(ready[1]);
        EXPECT_EQ(::read(ready[0], &m_done, 1), 1);
        ::close(ready[0]);
        EXPECT_EQ(m_done, 'y');
    }
    ~Announcer() { killHard(); }
    Announcer(const Announcer &) = delete;
    Announcer &operator=(const Announcer &) = delete;

    qint32 identifier() const { return m_process; }

    void killHard()
    {
        if (m_process <= 0)
            return;
        signalProcess(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process = 0;
    char m_done = 'n';
};

class EventProcessesTest : public testing::Test
{
protected:
    QStringList files() const
    {
        return QDir(EventProcesses::folder()).entryList(QDir::Files | QDir::System | QDir::Hidden);
    }
    QList<qint32> identifiers()
    {
        QList<qint32> found;
        for (const auto &process : processes.processes())
            found += process.identifier;
        return found;
    }
    bool writeRecord(const QString &name, const QByteArray &content) const
    {
        QFile file(EventProcesses::folder() + '/' + name);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    ScratchRoot root;
    EventProcesses processes;
};
} // namespace

TEST_F(EventProcessesTest, AreNoneWithoutTheFolder)
{
    EXPECT_TRUE(processes.processes().isEmpty());
    AEProcesses::Process found;
    EXPECT_EQ(processes.portOf(::getpid(), &found), nullptr);
}

TEST_F(EventProcessesTest, HoldThisProcessAsLongAsItsPortLives)
{
    auto port = processes.announce(signature);
    ASSERT_TRUE(port);
    EXPECT_TRUE(port->isServer());
    ASSERT_EQ(processes.processes().size(), 1);
    const auto self = processes.processes().constFirst();
    EXPECT_EQ(self.identifier, ::getpid());
    EXPECT_EQ(self.userId, ::geteuid());
    EXPECT_EQ(self.signature, signature);
    EXPECT_EQ(files().size(), 2);
    EXPECT_EQ(EventProcesses().announce(signature), nullptr) << "one a process";
    port.reset();
    EXPECT_TRUE(processes.processes().isEmpty());
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(processes.announce(signature));
}

TEST_F(EventProcessesTest, AreToldApartByAFolderThatNobodyRemovesFrom)
{
    ::umask(077);
    const auto port = processes.announce(signature);
    struct stat status {
    };
    ASSERT_EQ(::stat(qPrintable(EventProcesses::folder()), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 01777u);
    ASSERT_EQ(::stat(qPrintable(root.join("/private/var")), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0755u);
    for (const QString &file : files()) {
        ASSERT_EQ(::stat(qPrintable(EventProcesses::folder() + '/' + file), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, S_ISSOCK(status.st_mode) ? 0666u : 0644u) << qPrintable(file);
    }
}

TEST_F(EventProcessesTest, AreMetInOrderOfNumberAndNotWhenTheyAreDead)
{
    const auto port = processes.announce(signature);
    Announcer one(fourCharCode("one "));
    Announcer two(fourCharCode("two "));
    Announcer three(fourCharCode("thre"));
    QList<qint32> all{::getpid(), one.identifier(), two.identifier(), three.identifier()};
    std::sort(all.begin(), all.end());
    EXPECT_EQ(identifiers(), all);
    two.killHard();
    EXPECT_EQ(files().size(), 8) << "what it left behind";
    EXPECT_EQ(identifiers().size(), 3);
    AEProcesses::Process found;
    EXPECT_EQ(processes.portOf(two.identifier(), &found), nullptr);
    ASSERT_TRUE(processes.portOf(three.identifier(), &found));
    EXPECT_EQ(found.signature, fourCharCode("thre"));
}

TEST_F(EventProcessesTest, StayLockedWhileThisProcessLooksAround)
{
    const auto port = processes.announce(signature);
    for (int i = 0; i < 3; ++i)
        processes.processes();
    EXPECT_TRUE(Identity::holdsAs([] { return true; },
                                  [] {
                                      EventProcesses fresh;
                                      ASSERT_EQ(fresh.processes().size(), 1);
                                      EXPECT_EQ(fresh.processes().constFirst().identifier, ::getppid());
                                  }));
}

TEST_F(EventProcessesTest, AreSweptByTheNextOneOfTheirUser)
{
    {
        Announcer dead;
        dead.killHard();
    }
    EXPECT_EQ(files().size(), 2);
    const auto port = processes.announce(signature);
    ASSERT_TRUE(port);
    EXPECT_EQ(files().size(), 2) << "its own";
    for (const QString &file : files())
        EXPECT_TRUE(file.startsWith(QString::number(::getpid()) + '-')) << qPrintable(file);
}

TEST_F(EventProcessesTest, AreNotSweptWhileTheyLive)
{
    const Announcer other;
    const auto port = processes.announce(signature);
    EXPECT_EQ(files().size(), 4);
    EXPECT_EQ(identifiers().size(), 2);
}

TEST_F(EventProcessesTest, AreNobodyWhoOnlyWroteARecord)
{
    const auto port = processes.announce(signature);
    const Announcer silent(signature, false);
    const QByteArray content("DZE\1Fake", 8);
    const QString number = QString::number(silent.identifier());
    ASSERT_TRUE(writeRecord(number + "-0123456789abcdef", content));
    ASSERT_TRUE(writeRecord(QString::number(::getppid()) + "-0123456789abcdef", content));
    ASSERT_TRUE(writeRecord(number, content));
    ASSERT_TRUE(writeRecord('0' + number + "-0123456789abcdef", content));
    ASSERT_TRUE(writeRecord("x-0123456789abcdef", content));
    EXPECT_EQ(identifiers(), QList<qint32>{::getpid()});
}

TEST_F(EventProcessesTest, AreNobodyInWhoseNameAnotherHoldsALock)
{
    const auto port = processes.announce(signature);
    const Announcer victim(signature, false);
    const QString name =
        EventProcesses::folder() + '/' + QString::number(victim.identifier()) + "-0123456789abcdef";
    ASSERT_TRUE(writeRecord(QFileInfo(name).fileName(), QByteArray("DZE\1Fake", 8)));
    const int record = ::open(qPrintable(name), O_RDWR | O_CLOEXEC);
    struct flock lock {
    };
    lock.l_type = F_WRLCK;
    ASSERT_EQ(::fcntl(record, F_SETLK, &lock), 0);
    EXPECT_TRUE(Identity::holdsAs([] { return true; },
                                  [] {
                                      for (const auto &process : EventProcesses().processes())
                                          EXPECT_EQ(process.identifier, ::getppid());
                                  }));
    ::close(record);
}

TEST_F(EventProcessesTest, AreNobodyWithADamagedRecord)
{
    const Announcer other;
    const QString record = files().filter(QRegularExpression("^[0-9]+-[0-9a-f]{16}$")).value(0);
    ASSERT_FALSE(record.isEmpty());
    ASSERT_EQ(identifiers().size(), 1);
    ASSERT_TRUE(writeRecord(record, QByteArray("DZE\2Tst1", 8)));
    EXPECT_TRUE(identifiers().isEmpty()) << "another version";
    ASSERT_TRUE(writeRecord(record, "DZE"));
    EXPECT_TRUE(identifiers().isEmpty());
}

TEST_F(EventProcessesTest, PassOverLinksPipesAndFolders)
{
    const auto port = processes.announce(signature);
    const Announcer other(signature, false);
    const QString prefix = EventProcesses::folder() + '/' + QString::number(other.identifier());
    ASSERT_EQ(::mkfifo(qPrintable(prefix + "-0123456789abcde0"), 0666), 0);
    ASSERT_EQ(::symlink("/dev/zero", qPrintable(prefix + "-0123456789abcde1")), 0);
    ASSERT_EQ(::mkdir(qPrintable(prefix + "-0123456789abcde2"), 0777), 0);
    EXPECT_EQ(identifiers(), QList<qint32>{::getpid()}) << "and no pipe is waited for";
}

TEST_F(EventProcessesTest, AreNoneInAFolderBehindALink)
{
    root.makeFolder("/private/var/tmp");
    const QString elsewhere = root.makeFolder("/elsewhere", 01777);
    ASSERT_EQ(::symlink(qPrintable(elsewhere), qPrintable(EventProcesses::folder())), 0);
    EXPECT_EQ(processes.announce(signature), nullptr);
    EXPECT_TRUE(QDir(elsewhere).isEmpty());
}

TEST_F(EventProcessesTest, OfOtherUsersAreMetToo)
{
    root.makeFolder("/private/var/tmp/com.dozely.events", 01777);
    const auto port = processes.announce(signature);
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([] {
        EventProcesses own;
        const auto second = own.announce(fourCharCode("othr"));
        ASSERT_TRUE(second);
        ASSERT_EQ(own.processes().size(), 2);
        EXPECT_EQ(own.processes().constFirst().identifier, ::getppid());
        EXPECT_EQ(own.processes().constLast().userId, ::geteuid());
    }));
}

// ---- the process manager above them

TEST_F(EventProcessesTest, AreWalkedFromNoneToNone)
{
    Port<AEProcesses>::current() = std::make_shared<EventProcesses>();
    ProcessSerialNumber number;
    EXPECT_EQ(GetNextProcess(&number), procNotFound);
    const Announcer one;
    const Announcer two(fourCharCode("two "));
    const auto low = static_cast<quint32>(std::min(one.identifier(), two.identifier()));
    const auto high = static_cast<quint32>(std::max(one.identifier(), two.identifier()));
    EXPECT_EQ(GetNextProcess(&number), noErr);
    EXPECT_EQ(number, (ProcessSerialNumber{0, low}));
    EXPECT_EQ(GetNextProcess(&number), noErr);
    EXPECT_EQ(number, (ProcessSerialNumber{0, high}));
    EXPECT_EQ(GetNextProcess(&number), procNotFound);
    EXPECT_EQ(number, ProcessSerialNumber());
    number = {1, 0};
    EXPECT_EQ(GetNextProcess(&number), procNotFound) << "behind all process ids";
}

TEST_F(EventProcessesTest, AreDescribed)
{
    const Announcer other(fourCharCode("othr"));
    ProcessInfoRec information;
    const ProcessSerialNumber number{0, static_cast<quint32>(other.identifier())};
    ASSERT_EQ(GetProcessInformation(number, &information), noErr);
    EXPECT_EQ(information.processSignature, fourCharCode("othr"));
    EXPECT_EQ(information.processNumber, number);
    EXPECT_EQ(information.userId, ::geteuid());
    EXPECT_EQ(GetProcessInformation({0, 0}, &information), procNotFound);
    EXPECT_EQ(GetProcessInformation({1, number.lowLongOfPSN}, &information), procNotFound);
    char name[32];
    information.processName = name;
    EXPECT_EQ(GetProcessInformation(number, &information), paramErr);
    information = {};
    information.processInfoLength = 60;
    EXPECT_EQ(GetProcessInformation(number, &information), paramErr);
}

TEST(ProcessSignature, IsWhatWasSetElseUnknownWithoutABundle)
{
    EXPECT_EQ(ProcessSignature::current(), fourCharCode("????"));
    ProcessSignature::set(signature);
    EXPECT_EQ(ProcessSignature::current(), signature);
    ProcessSignature::set(0);
    EXPECT_EQ(ProcessSignature::current(), ProcessSignature::unknown);
}
