// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/TrustedPath.h"

#include "support/ScratchRoot.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

namespace
{
using testing::HasSubstr;

/// A bundle below a scratch root, everything in it owned by this user and written by nobody else.
class TrustedPathTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ::umask(022);
        bundle = root.makeFolder("/Library/PlugIns/Good.plugin");
        root.makeFolder("/Library/PlugIns/Good.plugin/Contents/Linux");
        module = bundle + "/Contents/Linux/good.so";
        write(module);
    }

    static void write(const QString &path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("code");
    }

    /// Why `path` is not trusted; empty when it is.
    std::string why(const QString &path) const { return whyFor(path, {::geteuid()}); }

    static std::string whyFor(const QString &path, const QList<quint32> &owners)
    {
        const auto trusted = isTrustedPath(path, owners);
        return trusted ? "" : trusted.error().text.toStdString();
    }

    ScratchRoot root;
    QString bundle;
    QString module;
};
} // namespace

TEST_F(TrustedPathTest, TrustsAFileAndAFolderOfTheRightOwner)
{
    EXPECT_EQ(why(module), "");
    EXPECT_EQ(why(bundle), "");
    EXPECT_EQ(why(bundle + "/"), "");
    EXPECT_EQ(why(root.path()), "");
}

TEST_F(TrustedPathTest, DistrustsAWorldWritableParent)
{
    ::chmod(qPrintable(root.join("/Library")), 0777);
    EXPECT_THAT(why(bundle), HasSubstr("/Library\" may be written by others"));
    EXPECT_NE(why(module), "");
}

TEST_F(TrustedPathTest, DistrustsAStickyWorldWritableParent)
{
    ::chmod(qPrintable(root.join("/Library")), 01777);
    EXPECT_THAT(why(bundle), HasSubstr("/Library\" may be written by others"));
}

TEST_F(TrustedPathTest, DistrustsAGroupWritableParent)
{
    ::chmod(qPrintable(root.join("/Library/PlugIns")), 0775);
    EXPECT_THAT(why(bundle), HasSubstr("/Library/PlugIns\" may be written by others"));
}

TEST_F(TrustedPathTest, DistrustsAWritableRootFolder)
{
    ::chmod(qPrintable(root.path()), 0777);
    EXPECT_NE(why(bundle), "");
}

TEST_F(TrustedPathTest, DistrustsALinkOnTheWay)
{
    ASSERT_TRUE(QFile::link("PlugIns", root.join("/Library/Linked")));
    EXPECT_THAT(why(root.join("/Library/Linked/Good.plugin")),
                HasSubstr("/Library/Linked\" is a symbolic link"));
}

TEST_F(TrustedPathTest, DistrustsALinkAtTheEnd)
{
    ASSERT_TRUE(QFile::link(bundle, root.join("/Library/PlugIns/Other.plugin")));
    EXPECT_THAT(why(root.join("/Library/PlugIns/Other.plugin")), HasSubstr("is a symbolic link"));
}

TEST_F(TrustedPathTest, DistrustsALinkInsideAFolder)
{
    ASSERT_TRUE(QFile::link("good.so", bundle + "/Contents/Linux/alias.so"));
    EXPECT_THAT(why(bundle), HasSubstr("alias.so\" is a symbolic link"));
    EXPECT_EQ(why(module), "");
}

TEST_F(TrustedPathTest, DistrustsAWritableFileDeepInsideAFolder)
{
    ::chmod(qPrintable(module), 0666);
    EXPECT_THAT(why(bundle), HasSubstr("good.so\" may be written by others"));
}

TEST_F(TrustedPathTest, DistrustsAnOwnerWhoIsNotOnTheList)
{
    EXPECT_THAT(whyFor(bundle, {::geteuid() + 1}),
                HasSubstr("belongs to user " + std::to_string(::geteuid())));
    EXPECT_NE(whyFor(bundle, {}), "");
    EXPECT_EQ(whyFor(bundle, {::geteuid() + 1, ::geteuid()}), "");
}

TEST_F(TrustedPathTest, DistrustsAForeignFileInAnOwnFolder)
{
    // Only root can give a file away; another user asks for the same by a list without the owner of the file.
    constexpr uid_t stranger = 60001;
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(qPrintable(module), stranger, stranger), 0);
        EXPECT_THAT(why(bundle), HasSubstr("good.so\" belongs to user 60001"));
        EXPECT_EQ(whyFor(bundle, {0, stranger}), "");
    } else {
        EXPECT_THAT(whyFor(bundle, {stranger}), HasSubstr("belongs to user " + std::to_string(::geteuid())));
    }
}

TEST_F(TrustedPathTest, DistrustsWhatIsNeitherAFileNorAFolder)
{
    ASSERT_EQ(::mkfifo(qPrintable(bundle + "/Contents/pipe"), 0600), 0);
    EXPECT_THAT(why(bundle), HasSubstr("pipe\" is neither a file nor a folder"));
}

TEST_F(TrustedPathTest, DistrustsWhatIsNotThere)
{
    EXPECT_THAT(why(bundle + "/Missing"), HasSubstr("No such file"));
    EXPECT_NE(why(module + "/below"), "");
}

TEST_F(TrustedPathTest, DistrustsAPathOutsideOfTheRootFolder)
{
    EXPECT_THAT(why("/"), HasSubstr("outside"));
    EXPECT_THAT(why(root.path() + "x/y"), HasSubstr("outside"));
    EXPECT_THAT(why("Library"), HasSubstr("outside"));
    EXPECT_THAT(why(""), HasSubstr("outside"));
}

TEST_F(TrustedPathTest, DistrustsAPathThatGoesUpAgain)
{
    EXPECT_THAT(why(root.join("/Library/../Library/PlugIns")), HasSubstr("not written out in full"));
    EXPECT_THAT(why(root.path() + "/../.."), HasSubstr("not written out in full"));
}

TEST_F(TrustedPathTest, GivesUpOnAFolderThatIsMadeToExhaustIt)
{
    QString deep = bundle;
    for (int level = 0; level < 40; ++level)
        deep += "/d";
    ASSERT_TRUE(QDir().mkpath(deep));
    EXPECT_THAT(why(bundle), HasSubstr("lies too deep"));
}

TEST_F(TrustedPathTest, GivesUpOnAFolderWithTooManyEntries)
{
    const QString crowd = bundle + "/Contents/Linux/";
    for (int i = 0; i <= 20'000; ++i)
        ASSERT_EQ(::link(qPrintable(module), qPrintable(crowd + QString::number(i))), 0) << i;
    EXPECT_THAT(why(bundle), HasSubstr("too many entries"));
}
