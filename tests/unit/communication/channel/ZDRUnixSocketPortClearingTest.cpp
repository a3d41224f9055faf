// SPDX-License-Identifier: MIT
#include "unit/communication/channel/PortFixture.h"

#include <functional>

using ZDRUnixSocketPortClearing = PortFixture;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
QStringList contentOfSocketFolder()
{
    return QDir(ZDRUnixSocketPort::socketFolder())
        .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
}

struct Operation {
    const char *name;
    std::function<void()> call;
    int expectedClearings;

    friend void PrintTo(const Operation &operation, std::ostream *out) { *out << operation.name; }
};

class ZDRUnixSocketPortFirstUse : public PortFixture, public testing::WithParamInterface<Operation>
{
};
} // namespace

TEST_P(ZDRUnixSocketPortFirstUse, ByRootClearsTheFolderOnce)
{
    writeFile(path("stale"));
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        GetParam().call();
        EXPECT_FALSE(contentOfSocketFolder().contains("stale"));
        EXPECT_EQ(modeOf(ZDRUnixSocketPort::socketFolder()), 0777u);
        writeFile(path("later"));
        ZDRUnixSocketPort::initAsClientWithName("later");
        ZDRUnixSocketPort::initAsServerWithName("dozelyd");
        EXPECT_TRUE(contentOfSocketFolder().contains("later"));
        EXPECT_EQ(clearings(), GetParam().expectedClearings);
    }));
}

TEST_P(ZDRUnixSocketPortFirstUse, ByAnOrdinaryUserNeverCreatesTheFolder)
{
    // Asked to clear, it tries; where it may not write it creates nothing either.
    QDir().rmdir(ZDRUnixSocketPort::socketFolder());
    ::chmod(qPrintable(root.join("/private/var/tmp")), 0555);
    const int expected = GetParam().expectedClearings - 1;
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
        GetParam().call();
        EXPECT_FALSE(QFile::exists(ZDRUnixSocketPort::socketFolder()));
        EXPECT_EQ(clearings(), expected);
    }));
    ::chmod(qPrintable(root.join("/private/var/tmp")), 0755);
}

INSTANTIATE_TEST_SUITE_P(
    OfTheClass, ZDRUnixSocketPortFirstUse,
    testing::Values(Operation{"asServer", [] { ZDRUnixSocketPort::initAsServerWithName("x"); }, 1},
                    Operation{"asServerWithoutName", [] { ZDRUnixSocketPort::initAsServerWithName(""); }, 1},
                    Operation{"asClient", [] { ZDRUnixSocketPort::initAsClientWithName("x"); }, 1},
                    Operation{"asClientWithoutName", [] { ZDRUnixSocketPort::initAsClientWithName(""); }, 1},
                    Operation{"sharedPort", [] { ZDRUnixSocketPort::port(); }, 1},
                    Operation{"clearing", [] { ZDRUnixSocketPort::clearExistingSockets(); }, 2}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(ZDRUnixSocketPortClearing, IsNotDoneByWhoWorksForAnother)
{
    writeFile(path("of-the-daemon"));
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        ZDRUnixSocketPort::workForAnother();
        EXPECT_TRUE(ZDRUnixSocketPort::port());
        EXPECT_TRUE(contentOfSocketFolder().contains("of-the-daemon"));
        EXPECT_EQ(clearings(), 0);
    }));
}

TEST_F(ZDRUnixSocketPortClearing, IsLeftToNobodyByWhoWorksForAnother)
{
    EXPECT_EXIT(
        {
            ZDRUnixSocketPort::workForAnother();
            const auto port = ZDRUnixSocketPort::port();
            std::exit(port && contentOfSocketFolder().size() == 1 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_THAT(contentOfSocketFolder(), IsEmpty());
}

TEST_F(ZDRUnixSocketPortClearing, IsDoneByTheEffectiveRootWhoeverTheRealUserIs)
{
    // Only root can have two identities; for anybody else the two are one.
    writeFile(path("stale"));
    EXPECT_TRUE(Identity::holdsAs(Identity::becomeOrdinaryUserEffectively, [&] {
        ZDRUnixSocketPort::initAsClientWithName("x");
        EXPECT_THAT(contentOfSocketFolder(), ElementsAre("stale"));
        EXPECT_EQ(clearings(), 0);
    }));
    EXPECT_TRUE(Identity::holdsAs(Identity::becomeRootEffectively, [&] {
        ZDRUnixSocketPort::initAsClientWithName("x");
        EXPECT_THAT(contentOfSocketFolder(), IsEmpty());
        EXPECT_EQ(clearings(), 1);
    }));
}

TEST_F(ZDRUnixSocketPortClearing, LeavesTheFolderAloneWhenOnlyItsPathIsAsked)
{
    writeFile(path("stale"));
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        EXPECT_EQ(ZDRUnixSocketPort::socketFolder(), root.join("/private/var/tmp/com.dozely"));
        EXPECT_THAT(contentOfSocketFolder(), ElementsAre("stale"));
        EXPECT_EQ(clearings(), 0);
    }));
}

TEST_F(ZDRUnixSocketPortClearing, RemovesFilesSocketsLinksAndFoldersOfAnyMode)
{
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        ZDRUnixSocketPort::initAsServerWithName("socket");
        writeFile(path(".hidden"));
        QDir().mkpath(path("folder/inner"));
        writeFile(path("folder/inner/file"));
        ::chmod(qPrintable(path("folder/inner")), 0);
        ::chmod(qPrintable(path("folder")), 0);
        QFile::link(root.join("/var"), path("link"));
        ZDRUnixSocketPort::clearExistingSockets();
        EXPECT_THAT(contentOfSocketFolder(), IsEmpty());
        EXPECT_TRUE(QFile::exists(root.join("/var/log"))) << "a link is removed, not what it leads to";
        EXPECT_EQ(modeOf(ZDRUnixSocketPort::socketFolder()), 0777u);
    }));
}

TEST_F(ZDRUnixSocketPortClearing, ReplacesASymbolicLinkInTheFoldersPlace)
{
    QDir().rmdir(ZDRUnixSocketPort::socketFolder());
    const QString elsewhere = root.makeFolder("/elsewhere");
    writeFile(elsewhere + "/precious");
    ASSERT_TRUE(QFile::link(elsewhere, ZDRUnixSocketPort::socketFolder()));
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        ZDRUnixSocketPort::initAsClientWithName("x");
        EXPECT_TRUE(S_ISDIR(statusOf(ZDRUnixSocketPort::socketFolder()).st_mode));
        EXPECT_TRUE(QFile::exists(elsewhere + "/precious"));
        EXPECT_EQ(modeOf(elsewhere), 0755u);
    }));
}

TEST_F(ZDRUnixSocketPortClearing, FollowsNoLinkOnTheWayToTheFolder)
{
    QDir(root.join("/private")).removeRecursively();
    const QString elsewhere = root.makeFolder("/elsewhere/var/tmp/com.dozely");
    writeFile(elsewhere + "/precious");
    ASSERT_TRUE(QFile::link(root.join("/elsewhere"), root.join("/private")));
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        ZDRUnixSocketPort::initAsClientWithName("x");
        EXPECT_TRUE(QFile::exists(elsewhere + "/precious"));
        EXPECT_EQ(clearings(), 1) << "a failure is logged like a success";
    }));
}

TEST_F(ZDRUnixSocketPortClearing, MakesMissingParentsAndTheFolderForEverybodyWhateverTheUmask)
{
    QDir(root.join("/private")).removeRecursively();
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        ::umask(0777);
        ZDRUnixSocketPort::initAsClientWithName("x");
        EXPECT_EQ(modeOf(ZDRUnixSocketPort::socketFolder()), 0777u);
        EXPECT_EQ(modeOf(root.join("/private/var/tmp")), 0755u);
        EXPECT_EQ(modeOf(root.join("/private")), 0755u);
        EXPECT_EQ(clearings(), 1);
    }));
}

TEST_F(ZDRUnixSocketPortClearing, ThatCannotRemoveTheFolderIsLoggedAllTheSame)
{
    root.makeFolder("/private/var/tmp", 0555);
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
        ZDRUnixSocketPort::clearExistingSockets();
        EXPECT_TRUE(QFile::exists(ZDRUnixSocketPort::socketFolder()));
        EXPECT_EQ(clearings(), 1);
    }));
    root.makeFolder("/private/var/tmp", 0755);
}
