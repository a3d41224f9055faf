// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/SocketFolderWatch_p.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter_p.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "support/WaitUntil.h"
#include "unit/communication/channel/PortFixture.h"

using namespace dozely;
using testing::IsEmpty;

namespace
{
constexpr uid_t stranger = 4712;

class SocketFolderWatchTest : public PortFixture
{
protected:
    /// Runs the body in a root process that keeps the folder.
    template<class Body>
    testing::AssertionResult holdsInTheDaemon(Body body, const QString &processName = "dozelyd")
    {
        return Identity::holdsAsRoot([&] {
            NSProcessInfo::setProcessName(processName);
            ZDRUnixSocketPort::initAsClientWithName("first use of the class");
            const auto watch = SocketFolderWatch::make([this] { ++changes; });
            body();
        });
    }

    /// Makes a folder with something in it, by another user where that can be.
    void makeFolderOfAStranger(const QString &name) const
    {
        EXPECT_TRUE(Identity::holdsAs([this] { return !hasOtherUsers || Identity::becomeUser(stranger); },
                                      [&] { ASSERT_TRUE(QDir().mkpath(path(name + "/inner/innermost"))); }));
    }

    QStringList entries() const
    {
        return QDir(ZDRUnixSocketPort::socketFolder())
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    bool isGone(const QString &name)
    {
        return waitUntil([&] { return !entries().contains(name); });
    }

    /// Root of a user namespace has none.
    const bool hasOtherUsers = ::geteuid() == 0;
    int changes = 0;
};
} // namespace

TEST(ProcessNames, OfListenersAreThoseOfTheDaemonAndOfUsers)
{
    EXPECT_TRUE(ProcessName::isListeners("dozelyd"));
    EXPECT_TRUE(ProcessName::isListeners("Dozely Agent.501"));
    EXPECT_TRUE(ProcessName::isListeners("Dozely.0"));
    EXPECT_TRUE(ProcessName::isListeners("Dozely.-2")) << "4294967294, printed signed";
    for (const char *name :
         {"", ".", "Dozely", "Dozely.", "Dozely Agent.", "Dozely.05", "Dozely.+5", "Dozely. 5", "dozelyd.0",
          "Dozely Agent.501.mbx", "Dozely.4294967294", "Dozely Admin.501"})
        EXPECT_FALSE(ProcessName::isListeners(name)) << name;
}

TEST_F(SocketFolderWatchTest, ClearsAwayWhatIsNoSocketUnderAListenersName)
{
    EXPECT_TRUE(holdsInTheDaemon([&] {
        makeFolderOfAStranger("Dozely Agent.501");
        EXPECT_TRUE(isGone("Dozely Agent.501"));
        writeFile(path("Dozely.501"));
        EXPECT_TRUE(isGone("Dozely.501"));
        ASSERT_TRUE(QFile::link("/", path("Dozely Agent.502")));
        EXPECT_TRUE(isGone("Dozely Agent.502"));
        EXPECT_TRUE(
            waitUntil([&] { return !QFile::exists(root.join("/private/var/tmp/com.dozely.removed")); }));
    }));
}

TEST_F(SocketFolderWatchTest, ClearsAwayWhatWasMovedAsideInTheFolder)
{
    EXPECT_TRUE(holdsInTheDaemon([&] {
        makeFolderOfAStranger("moved-aside-0123456789abcdef");
        EXPECT_TRUE(isGone("moved-aside-0123456789abcdef"));
    }));
}

TEST_F(SocketFolderWatchTest, LeavesSocketsAndOtherNamesAlone)
{
    EXPECT_TRUE(holdsInTheDaemon([&] {
        const auto agent = ZDRUnixSocketPort::initAsServerWithName("Dozely Agent.501");
        const auto reply = ZDRUnixSocketPort::initAsServerWithName("Dozely Agent.501.mbx");
        writeFile(path("somebody's"));
        writeFile(path("Dozely.1"));
        EXPECT_TRUE(isGone("Dozely.1"));
        EXPECT_EQ(entries(), QStringList({"Dozely Agent.501", "Dozely Agent.501.mbx", "somebody's"}));
        EXPECT_THAT(messages(), IsEmpty());
    }));
}

TEST_F(SocketFolderWatchTest, FindsItAmongMoreEntriesThanAreNamed)
{
    EXPECT_TRUE(holdsInTheDaemon([&] {
        for (int i = 0; i < 2000; ++i)
            writeFile(path(QString("file %1").arg(i)));
        for (int i = 0; i < 300; ++i)
            writeFile(path(QString("Dozely.%1").arg(i)));
        EXPECT_TRUE(waitUntil([&] { return entries().size() == 2000; }));
    }));
}

TEST_F(SocketFolderWatchTest, MakesTheFolderAgainWhenItIsRemoved)
{
    EXPECT_TRUE(holdsInTheDaemon([&] {
        ASSERT_TRUE(QDir().rmdir(ZDRUnixSocketPort::socketFolder()));
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(ZDRUnixSocketPort::socketFolder()); }));
        EXPECT_TRUE(waitUntil([&] { return modeOf(ZDRUnixSocketPort::socketFolder()) == 0777; }));
        EXPECT_TRUE(waitUntil([&] { return changes > 0; }));
        writeFile(path("Dozely.501"));
        EXPECT_TRUE(isGone("Dozely.501")) << "and watches it";
    }));
}

TEST_F(SocketFolderWatchTest, InAnotherProcessChangesNothing)
{
    EXPECT_TRUE(holdsInTheDaemon(
        [&] {
            writeFile(path("Dozely.501"));
            EXPECT_TRUE(waitUntil([&] { return changes > 0; }));
            EXPECT_TRUE(entries().contains("Dozely.501"));
            ASSERT_TRUE(QDir(ZDRUnixSocketPort::socketFolder()).removeRecursively());
            const int before = changes;
            EXPECT_TRUE(waitUntil([&] { return changes > before; }));
            EXPECT_FALSE(QFile::exists(ZDRUnixSocketPort::socketFolder()));
        },
        "Dozely Agent"));
}

TEST_F(SocketFolderWatchTest, TellsWhoseDoingItWas)
{
    // Where there is one user alone, nobody is a stranger.
    EXPECT_TRUE(holdsInTheDaemon([&] {
        for (int i = 0; i < 3; ++i) {
            makeFolderOfAStranger("Dozely Agent.501");
            EXPECT_TRUE(isGone("Dozely Agent.501"));
        }
        const QByteArray told = "User 4712: entry in a socket's place cleared away\n";
        EXPECT_EQ(root.logContent().count(told), hasOtherUsers ? 1 : 0) << root.logContent().constData();
        EXPECT_EQ(root.logContent().count("User "), hasOtherUsers ? 1 : 0);
    }));
}
