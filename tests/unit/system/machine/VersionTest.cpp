// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"

#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace zandorSoftwaresExtensions;

namespace
{
constexpr char versionFile[] = "/System/Library/CoreServices/SystemVersion.plist";

class VersionTest : public testing::Test
{
protected:
    void write(const QString &fixedPath, const QByteArray &content)
    {
        root.makeFolder(fixedPath.section('/', 0, -2));
        QFile file(root.join(fixedPath));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void writeVersion(const QByteArray &version)
    {
        write(versionFile, "<plist version=\"1.0\"><dict><key>ProductName</key><string>System</string>"
                           "<key>ProductVersion</key>" +
                               version + "</dict></plist>");
    }

    ScratchRoot root;
};
} // namespace

TEST_F(VersionTest, IsTheProductVersionOfTheSystemVersionFile)
{
    write("/etc/os-release", "VERSION_ID=\"12\"\n");
    writeVersion("<string>10.15.7</string>");
    EXPECT_EQ(systemVersion(), "10.15.7");
    EXPECT_EQ(systemType(), 10);
    EXPECT_EQ(systemSubtype(), 15);
}

TEST_F(VersionTest, IsReadFromTheSystemsReleaseAsAShellWould)
{
    for (const auto &[line, version] : {std::pair<QByteArray, const char *>{"VERSION_ID=12.5", "12.5"},
                                        {"VERSION_ID=\"12'5\"", "12'5"},
                                        {"VERSION_ID='12\"5'", "12\"5"},
                                        {"VERSION_ID=\"1\"'2'3", "123"},
                                        {"VERSION_ID=\"1\\\"2\"", "1\"2"},
                                        {"VERSION_ID='1\\2'", "1\\2"}}) {
        write("/etc/os-release", line + '\n');
        EXPECT_EQ(systemVersion(), version) << line.constData();
    }
}

TEST_F(VersionTest, GivesTypeTenAndSubtypeFourForVersion10_4_11)
{
    writeVersion("<string>10.4.11</string>");
    EXPECT_EQ(systemType(), 10);
    EXPECT_EQ(systemSubtype(), 4);
}

TEST_F(VersionTest, HasAMajorNumberAlonePlusZeroWithoutAPoint)
{
    write("/etc/os-release", "PRETTY_NAME=\"A System\"\nVERSION_ID=\"12\"\n");
    EXPECT_EQ(systemVersion(), "12");
    EXPECT_EQ(systemType(), 12);
    EXPECT_EQ(systemSubtype(), 0);
}

TEST_F(VersionTest, TakesTheMinorNumberOfTwoComponents)
{
    write("/etc/os-release", "VERSION_ID=22.04\n");
    EXPECT_EQ(systemType(), 22);
    EXPECT_EQ(systemSubtype(), 4);
}

TEST_F(VersionTest, CountsAnEmptyPieceAsZero)
{
    writeVersion("<string>..3</string>");
    EXPECT_EQ(systemType(), 0);
    EXPECT_EQ(systemSubtype(), 0);
}

TEST_F(VersionTest, WidensANegativeNumberWithItsSign)
{
    writeVersion("<string>-2.-7</string>");
    EXPECT_EQ(systemType(), qint64{-2});
    EXPECT_EQ(systemSubtype(), qint64{-7});
}

TEST_F(VersionTest, ComputesEachNumberOnlyOnceButReadsTheTextAfresh)
{
    writeVersion("<string>10.15.7</string>");
    EXPECT_EQ(systemType(), 10);
    writeVersion("<string>11.6</string>");
    EXPECT_EQ(systemVersion(), "11.6");
    EXPECT_EQ(systemType(), 10);
    EXPECT_EQ(systemSubtype(), 6); // first asked for now
    writeVersion("<string>12.9</string>");
    EXPECT_EQ(systemType(), 10);
    EXPECT_EQ(systemSubtype(), 6);
}

TEST_F(VersionTest, IsNullWithoutAnyFile)
{
    EXPECT_TRUE(systemVersion().isNull());
    EXPECT_EQ(systemType(), 0);
    EXPECT_EQ(systemSubtype(), 0);
}

TEST_F(VersionTest, IsNullWhenTheSystemVersionFileIsThereButTellsNoText)
{
    write("/etc/os-release", "VERSION_ID=12\n");
    writeVersion("<integer>10</integer>");
    EXPECT_TRUE(systemVersion().isNull());
    write(versionFile, "<plist version=\"1.0\"><dict/></plist>");
    EXPECT_TRUE(systemVersion().isNull());
    write(versionFile, "no property list");
    EXPECT_TRUE(systemVersion().isNull());
    write(versionFile, "<plist version=\"1.0\"><array/></plist>");
    EXPECT_TRUE(systemVersion().isNull());
}

TEST_F(VersionTest, ReadsOsReleaseAsAShellWould)
{
    const QList<std::pair<QByteArray, QString>> cases{
        {"VERSION_ID='9.1'\n", "9.1"},
        {"VERSION_ID=\"9\\\"1\"\n", "9\"1"},
        {"# VERSION_ID=1\nXVERSION_ID=2\nVERSION_ID=3", "3"},
        {"VERSION_ID=1\r\nVERSION_ID=2\r\n", "2"},
    };
    for (const auto &[content, version] : cases) {
        write("/etc/os-release", content);
        EXPECT_EQ(systemVersion(), version) << content.constData();
    }
}

TEST_F(VersionTest, IsNullWhenOsReleaseHasNoVersionId)
{
    write("/etc/os-release", "NAME=Rolling\nVERSION_ID=\n");
    EXPECT_TRUE(systemVersion().isNull());
    write("/etc/os-release", "NAME=Rolling\n");
    EXPECT_TRUE(systemVersion().isNull());
}

TEST_F(VersionTest, FindsOsReleaseAtItsSecondPlace)
{
    write("/usr/lib/os-release", "VERSION_ID=8\n");
    EXPECT_EQ(systemVersion(), "8");
    write("/etc/os-release", "VERSION_ID=9\n");
    EXPECT_EQ(systemVersion(), "9");
}
