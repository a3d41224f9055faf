// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/StringExtensions.h"

#include "OtherProcess.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <pwd.h>

using namespace zandorSoftwaresExtensions;

namespace
{
// A folder below which nothing is a link.
class StringExtensions : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_path + name; }
    void makeFolder(const QString &name) const { ASSERT_TRUE(QDir().mkpath(path(name))); }
    void makeLink(const QString &name, const QString &target) const
    {
        ASSERT_TRUE(QFile::link(target, path(name)));
    }
    void makeFile(const QString &name) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

private:
    QTemporaryDir m_folder;
    QString m_path = QDir(m_folder.path()).canonicalPath() + '/';
};

QString databaseHome()
{
    return QFile::decodeName(::getpwuid(::getuid())->pw_dir);
}
} // namespace

TEST(RealHomeDirectory, IsTheOneOfTheUserDatabaseWhateverTheEnvironmentSays)
{
    qputenv("HOME", "/somewhere/else");
    EXPECT_EQ(RealHomeDirectory(), databaseHome());
}

TEST(RealHomeDirectory, IsEmptyForAUserWhomTheDatabaseDoesNotKnow)
{
    const QByteArray console = consoleOfUnknownUser([] {
        const QString home = RealHomeDirectory();
        std::fputs(home.isNull() ? "null" : qPrintable('[' + home + ']'), stderr);
    });
    EXPECT_EQ(console, QByteArray("[]"));
}

TEST(RealHomeDirectory, IsTheOneOfTheRealUserWhoeverTheEffectiveOneIs)
{
    // Only root can have two identities; for anybody else the two are one.
    const QByteArray console = consoleOfChild([] {
        if (!Identity::becomeOrdinaryUserEffectively())
            ::_exit(1);
        std::fputs(qPrintable(RealHomeDirectory()), stderr);
    });
    EXPECT_EQ(console, QFile::encodeName(databaseHome()));
}

TEST(StringByExpandingTildeInPath, OfATildeIsTheHomeDirectoryAndOneSlash)
{
    EXPECT_EQ(stringByExpandingTildeInPath("~"), databaseHome() + "/");
}

TEST(StringByExpandingTildeInPath, KeepsTheTwoSlashesBetweenHomeAndRest)
{
    EXPECT_EQ(stringByExpandingTildeInPath("~/Documents"), databaseHome() + "//Documents");
}

TEST(StringByExpandingTildeInPath, DoesNotLookUpTheHomeOfAnotherUser)
{
    EXPECT_EQ(stringByExpandingTildeInPath("~daemon/x"), databaseHome() + "/daemon/x");
}

TEST(StringByExpandingTildeInPath, ReplacesTheFirstOfSeveralTildesOnly)
{
    EXPECT_EQ(stringByExpandingTildeInPath("~/a~"), databaseHome() + "//a~");
}

TEST(StringByExpandingTildeInPath, LeavesAPathThatContainsATildeLaterUnchanged)
{
    EXPECT_EQ(stringByExpandingTildeInPath("/tmp/~/x"), QString("/tmp/~/x"));
    EXPECT_EQ(stringByExpandingTildeInPath("a~"), QString("a~"));
    EXPECT_EQ(stringByExpandingTildeInPath(""), QString(""));
}

TEST(StringByExpandingTildeInPath, LeavesThePathOfAUserWithoutHomeUnchanged)
{
    const QByteArray console =
        consoleOfUnknownUser([] { std::fputs(qPrintable(stringByExpandingTildeInPath("~/x")), stderr); });
    EXPECT_EQ(console, QByteArray("~/x"));
}

TEST_F(StringExtensions, ResolveAliasGivesTheTargetOfALink)
{
    makeFile("file");
    makeLink("link", path("file"));
    EXPECT_EQ(resolveAlias(path("link")), path("file"));
}

TEST_F(StringExtensions, ResolveAliasFollowsAWholeChainAndRelativeTargets)
{
    makeFolder("deep/folder");
    makeLink("one", "deep/two");
    makeLink("deep/two", "../three");
    makeLink("three", path("deep/folder"));
    EXPECT_EQ(resolveAlias(path("one")), path("deep/folder"));
}

TEST_F(StringExtensions, ResolveAliasGivesAnAbsolutePathForARelativeLink)
{
    makeFile("file");
    makeLink("link", "file");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path("")));
    EXPECT_EQ(resolveAlias("link"), path("file"));
    EXPECT_EQ(resolveAlias("file"), QString("file"));
    QDir::setCurrent(before);
}

TEST_F(StringExtensions, ResolveAliasLeavesWhatIsNoLinkUnchanged)
{
    makeFolder("folder");
    makeFile("folder/file");
    makeLink("link", "folder");
    EXPECT_EQ(resolveAlias(path("folder")), path("folder"));
    EXPECT_EQ(resolveAlias(path("missing")), path("missing"));
    EXPECT_EQ(resolveAlias(path("link/file")), path("link/file"));
    EXPECT_EQ(resolveAlias(path("folder/../folder")), path("folder/../folder"));
    EXPECT_EQ(resolveAlias(""), QString(""));
}

TEST_F(StringExtensions, ResolveAliasLeavesADanglingOrLoopingLinkUnchanged)
{
    makeLink("dangling", "nowhere");
    makeLink("a", "b");
    makeLink("b", "a");
    EXPECT_EQ(resolveAlias(path("dangling")), path("dangling"));
    EXPECT_EQ(resolveAlias(path("a")), path("a"));
}

TEST_F(StringExtensions, ResolveContainedAliasesResolvesLinksAmongTheLeadingParts)
{
    makeFolder("real/sub");
    makeFile("real/sub/file");
    makeLink("first", "real");
    makeLink("real/second", "sub");
    EXPECT_EQ(resolveContainedAliases(path("first/second/file")), path("real/sub/file"));
}

TEST_F(StringExtensions, ResolveContainedAliasesFollowsTargetsThatLieDeeperOrHigher)
{
    makeFolder("a/b/c/d");
    makeLink("down", "a/b/c/d");
    makeLink("a/b/c/d/up", path("a"));
    EXPECT_EQ(resolveContainedAliases(path("down/new/file")), path("a/b/c/d/new/file"));
    EXPECT_EQ(resolveContainedAliases(path("down/up/b")), path("a/b"));
}

TEST_F(StringExtensions, ResolveContainedAliasesResolvesTheLastPartToo)
{
    makeFile("file");
    makeLink("link", "file");
    EXPECT_EQ(resolveContainedAliases(path("link")), path("file"));
}

TEST_F(StringExtensions, ResolveContainedAliasesKeepsPartsThatDoNotExist)
{
    EXPECT_EQ(resolveContainedAliases(path("no/such/file")), path("no/such/file"));
    EXPECT_EQ(resolveContainedAliases("no/such/file"), QString("no/such/file"));
}

TEST(ResolveContainedAliases, OfAnEmptyPathIsEmptyAndOfTheRootTheRoot)
{
    EXPECT_EQ(resolveContainedAliases(""), QString(""));
    EXPECT_FALSE(resolveContainedAliases("").isNull()) << "an empty text is not none";
    EXPECT_EQ(resolveContainedAliases("/"), QString("/"));
}

TEST(Contains, TellsWhetherTheArgumentOccurs)
{
    EXPECT_TRUE(contains("dozelyd", "zely"));
    EXPECT_TRUE(contains("dozelyd", "dozelyd"));
    EXPECT_FALSE(contains("dozelyd", "dozelyd "));
    EXPECT_FALSE(contains("", "d"));
}

TEST(Contains, RespectsCase)
{
    EXPECT_FALSE(contains("dozelyd", "Dozely"));
}

TEST(Contains, AnswersNoForAnEmptyArgument)
{
    EXPECT_FALSE(contains("dozelyd", ""));
    EXPECT_FALSE(contains("", ""));
}

TEST(Contains, AnswersNoForNoArgument)
{
    EXPECT_FALSE(contains("dozelyd", QString()));
}

TEST(ContainsInsensitive, IgnoresCase)
{
    EXPECT_TRUE(containsInsensitive("dozelyd", "DOZELY"));
    EXPECT_TRUE(containsInsensitive(u8"Éteindre", u8"éTEINDRE"));
    EXPECT_FALSE(containsInsensitive("dozelyd", "agent"));
}

TEST(ContainsInsensitive, AnswersNoForAnEmptyOrNoArgument)
{
    EXPECT_FALSE(containsInsensitive("dozelyd", ""));
    EXPECT_FALSE(containsInsensitive("dozelyd", QString()));
}

TEST(RandomStringWithLength, YieldsOnlyLettersFromAToY)
{
    const QString text = randomStringWithLength(1000);
    EXPECT_EQ(text.size(), 1000);
    EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'a' && c <= u'y'; }));
}

TEST(RandomStringWithLength, DrawsEveryLetterAboutEquallyOftenAndNeverZ)
{
    constexpr int draws = 250'000;
    const QString text = randomStringWithLength(draws);
    EXPECT_EQ(text.count('z'), 0);
    for (char letter = 'a'; letter <= 'y'; ++letter) // ten standard deviations: chance does not get there
        EXPECT_NEAR(double(text.count(QLatin1Char(letter))), draws / 25.0, 980) << letter;
}

TEST(RandomStringWithLength, IsAnotherTextEachTime)
{
    QSet<QString> texts;
    for (int i = 0; i < 1000; ++i)
        texts += randomStringWithLength(20);
    EXPECT_EQ(texts.size(), 1000);
}

TEST(RandomStringWithLength, IsEmptyForZeroOrLess)
{
    for (const qint32 length : {0, -1, std::numeric_limits<qint32>::min()}) {
        const QString text = randomStringWithLength(length);
        EXPECT_TRUE(text.isEmpty()) << length;
        EXPECT_FALSE(text.isNull()) << "an empty text is not none";
    }
}
