// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/LoginItems_p.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "HomeFixture.h"

#include <QDir>

#include <sys/stat.h>

using namespace dozely;

namespace
{
constexpr char preferences[] = "/Library/Preferences/loginwindow.plist";
const LoginItems::Application foo{"/Applications/Foo.app", "/Applications/Foo.app/Contents/Linux/Foo"};

/// Which file it is: a file that takes the place of another one has another number while both exist.
ino_t inodeOf(const QString &path)
{
    struct stat status {
    };
    EXPECT_EQ(::stat(qPrintable(path), &status), 0);
    return status.st_ino;
}

class LoginItemsTest : public HomeFixture
{
protected:
    void expectNothingHappens()
    {
        const QFileInfo before(inHome(preferences));
        const QByteArray bytes = before.isFile() ? content(preferences) : QByteArray();
        LoginItems::set(foo, true, false);
        LoginItems::set(foo, false, false);
        EXPECT_FALSE(LoginItems::contains(foo.bundlePath));
        EXPECT_FALSE(QFileInfo::exists(inHome("/.config")));
        EXPECT_TRUE(root.logContent().isEmpty());
        const QFileInfo after(inHome(preferences));
        EXPECT_EQ(after.isSymbolicLink(), before.isSymbolicLink());
        EXPECT_EQ(after.exists(), before.exists());
        EXPECT_EQ(after.isDir(), before.isDir());
        EXPECT_EQ(after.lastModified(), before.lastModified());
        if (before.isFile()) {
            EXPECT_EQ(content(preferences), bytes);
        }
    }
};

class LoginItemsFormatTest : public LoginItemsTest, public testing::WithParamInterface<const char *>
{
protected:
    void writePreferences(const QString &value) { writeList(preferences, value, GetParam()); }
    bool preferencesEqual(const QString &value) { return listEquals(preferences, value); }
    bool formIsKept()
    {
        return content(preferences).startsWith("bplist00") == (QByteArray(GetParam()) == "FMT_BINARY");
    }
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Formats, LoginItemsFormatTest, testing::Values("FMT_XML", "FMT_BINARY"));

TEST_P(LoginItemsFormatTest, LeaveExactlyOneEntryAtTheFrontOfTwoLikeNamedOnesWhenTurnedOn)
{
    writePreferences("{'AutoLaunchedApplicationDictionary': ["
                     "{'Path': '/Applications/Other.app', 'Hide': True},"
                     "{'Path': '/Applications/Foo.app', 'Hide': False},"
                     "{'Path': '/Users/x/Foo.app', 'Hide': False}]}");
    LoginItems::set(foo, true, true);
    EXPECT_TRUE(preferencesEqual("{'AutoLaunchedApplicationDictionary': ["
                                 "{'Path': '/Applications/Foo.app', 'Hide': True},"
                                 "{'Path': '/Applications/Other.app', 'Hide': True}]}"));
    EXPECT_TRUE(formIsKept());
    EXPECT_TRUE(LoginItems::contains(foo.bundlePath));
}

TEST_P(LoginItemsFormatTest, RewriteTheFileUnchangedInContentWhenTurnedOffWithoutAMatch)
{
    const char before[] =
        "{'AutoLaunchedApplicationDictionary': [{'Path': '/Applications/Other.app', 'Hide': True}],"
        "'Unknown': [1, 2]}";
    writePreferences(before);
    const ino_t former = inodeOf(inHome(preferences));
    LoginItems::set(foo, false, false);
    EXPECT_TRUE(preferencesEqual(before));
    EXPECT_TRUE(formIsKept());
    EXPECT_NE(inodeOf(inHome(preferences)), former) << "it was not replaced";
}

TEST_P(LoginItemsFormatTest, AreNotContainedWhenOnlyALikeNamedApplicationElsewhereIs)
{
    writePreferences("{'AutoLaunchedApplicationDictionary': [{'Path': '/Users/x/Foo.app', 'Hide': False}]}");
    EXPECT_FALSE(LoginItems::contains(foo.bundlePath));
    EXPECT_TRUE(LoginItems::contains("/Users/x/Foo.app"));
}

TEST_P(LoginItemsFormatTest, RemoveLikeNamedEntriesThatFollowOneAnother)
{
    writePreferences(
        "{'AutoLaunchedApplicationDictionary': ["
        "{'Path': '/a/Foo.app'}, {'Path': '/b/Foo.app'}, {'Path': '/c/Foo.app/'}, {'Path': 'Foo.app'},"
        "{'Path': '/d/Foo.app.old'}, {'Path': '/e/XFoo.app'}, {'Path': '/f/foo.app'}]}");
    LoginItems::set(foo, false, false);
    EXPECT_TRUE(
        preferencesEqual("{'AutoLaunchedApplicationDictionary': ["
                         "{'Path': '/d/Foo.app.old'}, {'Path': '/e/XFoo.app'}, {'Path': '/f/foo.app'}]}"));
}

TEST_P(LoginItemsFormatTest, MakeTheArrayWhenTheKeyIsMissing)
{
    writePreferences("{'Other': 'x'}");
    EXPECT_FALSE(LoginItems::contains(foo.bundlePath));
    LoginItems::set(foo, true, false);
    EXPECT_TRUE(preferencesEqual("{'Other': 'x', 'AutoLaunchedApplicationDictionary': "
                                 "[{'Path': '/Applications/Foo.app', 'Hide': False}]}"));
}

TEST_P(LoginItemsFormatTest, KeepWhatTheyDoNotKnow)
{
    const QString unknown =
        "'Text': 'Zoë ≠ <&>', 'Real': 0.1, 'Large': 3.14159265358979e200, 'Small': -5e-324, 'Whole': 2.0,"
        "'Int': -9223372036854775808, 'Max': 9223372036854775807, 'Yes': True, 'No': False, 'Data': "
        "bytes(range(256)),"
        "'Date': datetime.datetime(2026, 3, 14, 7, 30, 15), 'Empty': {}, 'None': [], '': 'no key',"
        "'Deep': [[[{'a': [1, 'b']}]]]";
    const QString odd =
        "'no dictionary', 7, {'Hide': True}, {'Path': 7}, {'Path': '/x/Other.app', 'Extra': [1]}";
    writePreferences("{" + unknown + ", 'AutoLaunchedApplicationDictionary': [" + odd + "]}");
    LoginItems::set(foo, true, false);
    EXPECT_TRUE(preferencesEqual("{" + unknown +
                                 ", 'AutoLaunchedApplicationDictionary': "
                                 "[{'Path': '/Applications/Foo.app', 'Hide': False}, " +
                                 odd + "]}"));
    EXPECT_TRUE(formIsKept());
}

TEST_F(LoginItemsTest, LeaveAloneAFileThatHoldsWhatEqualsNothing)
{
    writeList(preferences, "{'Odd': float('nan')}", "FMT_XML");
    expectNothingHappens();
}

TEST_F(LoginItemsTest, MoveTheApplicationToTheFrontAndBackOut)
{
    writeList(
        preferences,
        "{'AutoLaunchedApplicationDictionary': [{'Path': '/a.app'}, {'Path': '/Applications/Foo.app'}]}",
        "FMT_XML");
    EXPECT_TRUE(LoginItems::contains(foo.bundlePath));
    LoginItems::set(foo, true, false);
    EXPECT_TRUE(listEquals(preferences,
                           "{'AutoLaunchedApplicationDictionary': "
                           "[{'Path': '/Applications/Foo.app', 'Hide': False}, {'Path': '/a.app'}]}"));
    LoginItems::set(foo, false, false);
    EXPECT_TRUE(listEquals(preferences, "{'AutoLaunchedApplicationDictionary': [{'Path': '/a.app'}]}"));
    EXPECT_FALSE(LoginItems::contains(foo.bundlePath));
}

TEST_F(LoginItemsTest, KeepTheModeOfTheFileAndLeaveNothingElseBehind)
{
    writeList(preferences, "{}", "FMT_XML");
    ASSERT_EQ(::chmod(qPrintable(inHome(preferences)), 0640), 0);
    LoginItems::set(foo, true, false);
    struct stat status {
    };
    ASSERT_EQ(::stat(qPrintable(inHome(preferences)), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
    EXPECT_EQ(QDir(inHome("/Library/Preferences"))
                  .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList("loginwindow.plist"));
}

TEST_F(LoginItemsTest, FollowALinkToTheFileAndLeaveItALink)
{
    writeList("/elsewhere.plist", "{}", "FMT_XML");
    root.makeFolder(RealHomeDirectory() + "/Library/Preferences");
    ASSERT_TRUE(QFile::link(inHome("/elsewhere.plist"), inHome(preferences)));
    LoginItems::set(foo, true, false);
    EXPECT_TRUE(QFileInfo(inHome(preferences)).isSymbolicLink());
    EXPECT_TRUE(LoginItems::contains(foo.bundlePath));
    EXPECT_FALSE(QFileInfo(inHome("/elsewhere.plist")).isSymbolicLink());
}

TEST_F(LoginItemsTest, NeverMakeAFileThatIsMissing)
{
    expectNothingHappens();
}

TEST_F(LoginItemsTest, LeaveATruncatedFileAloneToTheByte)
{
    for (const char *format : {"FMT_XML", "FMT_BINARY"}) {
        writeList(preferences, "{'AutoLaunchedApplicationDictionary': [{'Path': '/Applications/Foo.app'}]}",
                  format);
        QFile file(inHome(preferences));
        ASSERT_TRUE(file.resize(file.size() / 2));
        expectNothingHappens();
    }
}

TEST_F(LoginItemsTest, LeaveAnEmptyFileAloneToTheByte)
{
    write(preferences, "");
    expectNothingHappens();
}

TEST_F(LoginItemsTest, LeaveAFolderInThePlaceOfTheFileAlone)
{
    root.makeFolder(RealHomeDirectory() + preferences);
    expectNothingHappens();
}

TEST_F(LoginItemsTest, LeaveADanglingLinkAlone)
{
    root.makeFolder(RealHomeDirectory() + "/Library/Preferences");
    ASSERT_TRUE(QFile::link(inHome("/nowhere"), inHome(preferences)));
    expectNothingHappens();
    EXPECT_FALSE(QFileInfo::exists(inHome("/nowhere")));
}

TEST_F(LoginItemsTest, LeaveAFileOf100MegabytesAloneToTheByte)
{
    writeList(preferences, "{'AutoLaunchedApplicationDictionary': [{'Path': '/Applications/Foo.app'}]}",
              "FMT_XML");
    QFile file(inHome(preferences));
    const QByteArray head = content(preferences);
    // The rest is a hole: it reads as zeros and takes no room.
    ASSERT_TRUE(file.resize(100LL << 20));
    const QDateTime before = QFileInfo(file).lastModified();
    LoginItems::set(foo, true, false);
    EXPECT_FALSE(LoginItems::contains(foo.bundlePath));
    EXPECT_EQ(QFileInfo(file).size(), 100LL << 20);
    EXPECT_EQ(QFileInfo(file).lastModified(), before);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.read(head.size()), head);
}

TEST_F(LoginItemsTest, LeaveAPipeAlone)
{
    root.makeFolder(RealHomeDirectory() + "/Library/Preferences");
    ASSERT_EQ(::mkfifo(qPrintable(inHome(preferences)), 0600), 0);
    expectNothingHappens();
}

TEST_F(LoginItemsTest, LeaveAListOfAnotherShapeAlone)
{
    for (const char *value : {"[]", "'text'", "{'AutoLaunchedApplicationDictionary': 'text'}",
                              "{'AutoLaunchedApplicationDictionary': {'Path': '/Applications/Foo.app'}}"}) {
        writeList(preferences, value, "FMT_BINARY");
        expectNothingHappens();
    }
}

namespace
{
/// The probe in a bundle of its own; what it prints, without the line end.
class LoginItemProbeTest : public LoginItemsTest
{
protected:
    QByteArray run(const QString &program, const QStringList &arguments = {})
    {
        QProcess process;
        process.start(program, QStringList{root.path()} + arguments);
        EXPECT_TRUE(process.waitForFinished());
        return process.readAllStandardOutput().trimmed();
    }
    QString bundled(const QString &bundle)
    {
        const QString folder = root.makeFolder(bundle + "/Contents/Linux");
        EXPECT_TRUE(QFile::copy(LOGIN_ITEM_PROBE, folder + "/Foo"));
        return folder + "/Foo";
    }
};
} // namespace

TEST_F(LoginItemProbeTest, ConcernTheBundleOfTheRunningProgram)
{
    writeList(preferences,
              "{'AutoLaunchedApplicationDictionary': [{'Path': '/Users/x/Foo.app', 'Hide': False}]}",
              "FMT_XML");
    const QString program = bundled("/Applications/Foo.app");
    EXPECT_EQ(run(program), "no");
    EXPECT_EQ(run(program, {"hidden"}), "yes");
    EXPECT_TRUE(listEquals(preferences,
                           QString("{'AutoLaunchedApplicationDictionary': [{'Path': '%1', 'Hide': True}]}")
                               .arg(root.join("/Applications/Foo.app"))));
    EXPECT_THAT(content("/.config/autostart/dozely-login-Foo.desktop").toStdString(),
                testing::HasSubstr("Exec=\"" + program.toStdString() + "\"\n"));
    EXPECT_EQ(run(program, {"off"}), "no");
    EXPECT_FALSE(QFileInfo::exists(inHome("/.config/autostart/dozely-login-Foo.desktop")));
}

TEST_F(LoginItemProbeTest, DoNothingForAProgramWithoutABundle)
{
    const char before[] =
        "{'AutoLaunchedApplicationDictionary': [{'Path': '/Users/x/Foo.app', 'Hide': False}]}";
    writeList(preferences, before, "FMT_XML");
    const QByteArray bytes = content(preferences);
    EXPECT_EQ(run(LOGIN_ITEM_PROBE, {"on"}), "no");
    EXPECT_EQ(run(LOGIN_ITEM_PROBE, {"off"}), "no");
    EXPECT_EQ(content(preferences), bytes);
}
