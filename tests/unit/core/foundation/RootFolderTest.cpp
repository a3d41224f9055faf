// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/un.h>
#include <unistd.h>

using namespace dozely;

namespace
{
class RootFolderTest : public testing::Test
{
protected:
    void TearDown() override { RootFolder::set("/"); }

    // An existing folder whose path has exactly `length` bytes.
    QString folderOfLength(qsizetype length) const
    {
        QString path = m_folder.path() + '/';
        path += QString(length - path.size(), 'x');
        return QDir().mkpath(path) ? path : QString();
    }
    QTemporaryDir m_folder{"/tmp/dz-XXXXXX"};
};
} // namespace

TEST_F(RootFolderTest, IsTheSlashUnlessItIsSet)
{
    EXPECT_EQ(RootFolder::path(), QString(""));
    EXPECT_EQ(RootFolder::join("/var/log/dozely.log"), QString("/var/log/dozely.log"));
}

TEST_F(RootFolderTest, RelocatesEveryFixedPath)
{
    RootFolder::set("/tmp/demo");
    EXPECT_EQ(RootFolder::path(), QString("/tmp/demo"));
    EXPECT_EQ(RootFolder::join("/var/log/dozely.log"), QString("/tmp/demo/var/log/dozely.log"));
}

TEST_F(RootFolderTest, DropsTrailingAndDoubledSlashes)
{
    RootFolder::set("/tmp//demo///");
    EXPECT_EQ(RootFolder::path(), QString("/tmp/demo"));
}

TEST_F(RootFolderTest, GoesBackToTheNormalPlace)
{
    for (const QString normal : {"/", "", "//"}) {
        RootFolder::set("/tmp/demo");
        RootFolder::set(normal);
        EXPECT_EQ(RootFolder::path(), QString("")) << qPrintable(normal);
    }
}

TEST_F(RootFolderTest, BelongsToRootInTheNormalPlace)
{
    EXPECT_EQ(RootFolder::owner(), std::optional<quint32>(0));
}

TEST_F(RootFolderTest, BelongsToTheOwnerOfTheFolderWhenRelocated)
{
    RootFolder::set(m_folder.path());
    EXPECT_EQ(RootFolder::owner(), std::optional<quint32>(::geteuid()));
    const uid_t other = ::geteuid() == 0 ? 54321 : ::geteuid(); // only root can give a folder away
    ASSERT_EQ(::chown(qPrintable(m_folder.path()), other, static_cast<gid_t>(-1)), 0);
    EXPECT_EQ(RootFolder::owner(), std::optional<quint32>(other));
}

TEST_F(RootFolderTest, BelongsToNobodyWhenItCannotBeRead)
{
    RootFolder::set(m_folder.path() + "/missing");
    EXPECT_EQ(RootFolder::owner(), std::nullopt);
    QFile file(m_folder.path() + "/file");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    RootFolder::set(file.fileName());
    EXPECT_EQ(RootFolder::owner(), std::nullopt);
}

TEST_F(RootFolderTest, IsNotRefusedInTheNormalPlaceOrInAShortFolder)
{
    EXPECT_EQ(RootFolder::refusal("/"), QString());
    EXPECT_EQ(RootFolder::refusal(""), QString());
    EXPECT_EQ(RootFolder::refusal(m_folder.path()), QString());
    EXPECT_EQ(RootFolder::refusal(m_folder.path() + '/'), QString());
}

TEST_F(RootFolderTest, IsRefusedWhenItIsRelativeMissingOrNoFolder)
{
    EXPECT_TRUE(RootFolder::refusal("tmp").contains("absolute"));
    EXPECT_TRUE(RootFolder::refusal(m_folder.path() + "/missing").contains("does not exist"));
    QFile file(m_folder.path() + "/file");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(RootFolder::refusal(file.fileName()).contains("does not exist"));
}

TEST_F(RootFolderTest, IsRefusedFromTheFirstByteThatASocketPathHasNoRoomFor)
{
    constexpr int nameLength = 40;
    const qsizetype longest = 103 - QString("/private/var/tmp/com.dozely/").size() - nameLength;
    EXPECT_EQ(longest, 35);
    EXPECT_EQ(RootFolder::refusal(folderOfLength(longest)), QString());
    EXPECT_TRUE(RootFolder::refusal(folderOfLength(longest + 1)).contains("1 bytes too long"));
}

TEST_F(RootFolderTest, LeavesRoomForTheNameThatIsAskedFor)
{
    const QString folder = folderOfLength(60);
    EXPECT_EQ(RootFolder::refusal(folder, 15), QString());
    EXPECT_NE(RootFolder::refusal(folder, 16), QString());
}

TEST_F(RootFolderTest, CountsBytesNotCharacters)
{
    const QString folder = m_folder.path() + '/' + QString(9, QChar(u'é'));
    ASSERT_TRUE(QDir().mkpath(folder));
    const int room = 103 - 28 - int(folder.toUtf8().size());
    EXPECT_EQ(RootFolder::refusal(folder, room), QString());
    EXPECT_NE(RootFolder::refusal(folder, room + 1), QString());
}
