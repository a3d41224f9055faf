// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ProcessInfoExtensions.h"

#include "DozelyKit/system/machine/ProcessTable.h"
#include "support/SignalProcess.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace dozely;

using testing::ElementsAre;
using testing::IsEmpty;
using namespace zandorSoftwaresExtensions;

namespace
{
/// A real process of a given name, which waits until the object goes.
class NamedProcess
{
public:
    explicit NamedProcess(const QByteArray &name, uid_t realUser = ::getuid())
    {
        int ready[2];
        if (::pipe2(ready, O_CLOEXEC) != 0)
            return;
        m_id = ::fork();
        if (m_id == 0) {
            // What the kernel is given here it cuts as it cuts the name of a program.
            const bool done = ::prctl(PR_SET_NAME, name.constData()) == 0 &&
                              ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 &&
                              ::setresuid(realUser, static_cast<uid_t>(-1), static_cast<uid_t>(-1)) == 0;
            const char answer = done ? 'y' : 'n';
            if (::write(ready[1], &answer, 1) == 1) {
                while (true)
                    ::pause();
            }
            ::_exit(1);
        }
        ::close(ready[1]);
        char answer = 'n';
        m_ready = ::read(ready[0], &answer, 1) == 1 && answer == 'y';
        ::close(ready[0]);
    }
    ~NamedProcess()
    {
        if (m_id <= 0)
            return;
        signalProcess(m_id, SIGKILL);
        ::waitpid(m_id, nullptr, 0);
    }
    NamedProcess(const NamedProcess &) = delete;
    NamedProcess &operator=(const NamedProcess &) = delete;
    bool isReady() const { return m_ready; }
    qint32 id() const { return m_id; }

private:
    pid_t m_id = -1;
    bool m_ready = false;
};

class FakeProcessTable : public ProcessTable
{
public:
    QList<Process> table;
    QList<Process> processes() override { return table; }
};

/// Names that no other process has: the id of this one is a part of them, each as long as wanted.
QByteArray uniqueName(int length)
{
    return ("dz" + QByteArray::number(::getpid()) + "-abcdefghijklmnopqrst").left(length);
}
} // namespace

TEST(ProcessInfoExtensions, AreEmptyForANameThatNoProcessHas)
{
    EXPECT_THAT(pidsOfProcessesWithName("no such process"), IsEmpty());
    EXPECT_THAT(uidsOfProcessesWithName("no such process"), IsEmpty());
}

TEST(ProcessInfoExtensions, FindTwoProcessesOfANameInTableOrder)
{
    const QByteArray name = uniqueName(12);
    const NamedProcess first(name);
    const NamedProcess second(name);
    const NamedProcess other(name.left(11));
    ASSERT_TRUE(first.isReady() && second.isReady() && other.isReady());
    EXPECT_THAT(pidsOfProcessesWithName(name),
                ElementsAre(std::min(first.id(), second.id()), std::max(first.id(), second.id())));
}

TEST(ProcessInfoExtensions, HoldTheSameUserIdTwiceForTwoProcessesOfOneUser)
{
    const QByteArray name = uniqueName(12);
    const NamedProcess first(name);
    const NamedProcess second(name);
    ASSERT_TRUE(first.isReady() && second.isReady());
    EXPECT_THAT(uidsOfProcessesWithName(name), ElementsAre(::getuid(), ::getuid()));
}

TEST(ProcessInfoExtensions, FindANameOf15BytesWhole)
{
    const QByteArray name = uniqueName(15);
    const NamedProcess process(name);
    ASSERT_TRUE(process.isReady());
    EXPECT_THAT(pidsOfProcessesWithName(name), ElementsAre(process.id()));
}

TEST(ProcessInfoExtensions, FindANameOf16BytesOnlyUnderItsFirst15)
{
    const QByteArray name = uniqueName(16);
    const NamedProcess process(name);
    ASSERT_TRUE(process.isReady());
    EXPECT_THAT(pidsOfProcessesWithName(name), IsEmpty());
    EXPECT_THAT(pidsOfProcessesWithName(name.left(15)), ElementsAre(process.id()));
}

TEST(ProcessInfoExtensions, FindANameOf20BytesOnlyUnderItsFirst15)
{
    const QByteArray name = uniqueName(20);
    const NamedProcess process(name);
    ASSERT_TRUE(process.isReady());
    EXPECT_THAT(pidsOfProcessesWithName(name), IsEmpty());
    EXPECT_THAT(pidsOfProcessesWithName(name.left(16)), IsEmpty());
    EXPECT_THAT(pidsOfProcessesWithName(name.left(15)), ElementsAre(process.id()));
    EXPECT_THAT(pidsOfProcessesWithName(name.left(14)), IsEmpty());
}

TEST(ProcessInfoExtensions, CompareWithCase)
{
    const QByteArray name = uniqueName(12);
    const NamedProcess process(name);
    ASSERT_TRUE(process.isReady());
    EXPECT_THAT(pidsOfProcessesWithName(QString(name).toUpper()), IsEmpty());
}

TEST(ProcessInfoExtensions, FindANameWithBlanksAndParentheses)
{
    const QByteArray name = uniqueName(9) + ") S 1\n(";
    const NamedProcess process(name);
    ASSERT_TRUE(process.isReady());
    EXPECT_THAT(pidsOfProcessesWithName(name.left(15)), ElementsAre(process.id()));
}

TEST(ProcessInfoExtensions, TellTheRealUserIdAndNotTheEffectiveOne)
{
    // Only a privileged process may have two; for anybody else the ids are the same and the test is the
    // plainer one.
    const uid_t real = ::geteuid() == 0 ? 4711 : ::getuid();
    const QByteArray name = uniqueName(12);
    const NamedProcess process(name, real);
    ASSERT_TRUE(process.isReady());
    EXPECT_THAT(uidsOfProcessesWithName(name), ElementsAre(real));
}

TEST(ProcessInfoExtensions, GiveBothFieldsOfTheSameProcesses)
{
    const auto fake = std::make_shared<FakeProcessTable>();
    fake->table = {{30, 1000, "tool"}, {7, 4'000'000'000U, "tool"}, {8, 0, "tool2"}, {9, 0, "tool"}};
    Port<ProcessTable>::current() = fake;
    EXPECT_THAT(pidsOfProcessesWithName("tool"), ElementsAre(30, 7, 9));
    EXPECT_THAT(uidsOfProcessesWithName("tool"), ElementsAre(1000U, 4'000'000'000U, 0U));
}
