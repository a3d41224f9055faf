// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/AutostartEntry_p.h"

#include "DozelyKit/system/machine/LoginItems_p.h"
#include "HomeFixture.h"

#include <QDir>

#include <sys/stat.h>

using namespace dozely;

namespace
{
constexpr char preferences[] = "/Library/Preferences/loginwindow.plist";
constexpr char entryPath[] = "/.config/autostart/dozely-login-Foo.desktop";
const LoginItems::Application foo{"/Applications/Foo.app", "/Applications/Foo.app/Contents/Linux/Foo"};

class AutostartEntryTest : public HomeFixture
{
protected:
    AutostartEntryTest() { write(preferences, "<plist version=\"1.0\"><dict/></plist>"); }
    QStringList entries()
    {
        return QDir(inHome("/.config/autostart"))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    /// The program that a desktop starts for the entry, as the library reads it that most of them use.
    QByteArray startedProgram()
    {
        return python("import re, sys\n"
                      "from gi.repository import GLib\n"
                      "file = GLib.KeyFile()\n"
                      "file.load_from_file(sys.argv[1], GLib.KeyFileFlags.NONE)\n"
                      "_, (argument,) = GLib.shell_parse_argv(file.get_string('Desktop Entry', 'Exec'))\n"
                      "assert re.fullmatch('([^%]|%%)*', argument), 'a field code'\n"
                      "sys.stdout.buffer.write(argument.replace('%%', '%').encode())",
                      entryPath);
    }
};
} // namespace

TEST_F(AutostartEntryTest, ComesAndGoesWithTheLoginItem)
{
    LoginItems::set(foo, true, false);
    EXPECT_EQ(content(entryPath), "[Desktop Entry]\nType=Application\nName=Foo\n"
                                  "Exec=\"/Applications/Foo.app/Contents/Linux/Foo\"\n"
                                  "X-Dozely-LoginItem=true\nX-Dozely-Hide=false\n");
    EXPECT_EQ(entries().size(), 1); // nothing temporary stays
    LoginItems::set(foo, false, false);
    EXPECT_TRUE(entries().isEmpty());
}

TEST_F(AutostartEntryTest, IsReplacedWhenTheSettingChanges)
{
    LoginItems::set(foo, true, false);
    const LoginItems::Application moved{"/Users/x/Foo.app", "/Users/x/Foo.app/Contents/Linux/Foo"};
    LoginItems::set(moved, true, true);
    EXPECT_EQ(startedProgram(), "/Users/x/Foo.app/Contents/Linux/Foo");
    EXPECT_TRUE(content(entryPath).contains("X-Dozely-Hide=true\n"));
    EXPECT_FALSE(content(entryPath).contains("\nHidden=")); // which would mean: do not start
}

TEST_F(AutostartEntryTest, NeverTouchesAnEntryThatItDidNotMake)
{
    const QByteArray others = "[Desktop Entry]\nType=Application\nName=Foo\nExec=/usr/bin/foo\n";
    write(entryPath, others);
    const QDateTime before = QFileInfo(inHome(entryPath)).lastModified();
    LoginItems::set(foo, true, false);
    EXPECT_EQ(content(entryPath), others);
    LoginItems::set(foo, false, false);
    EXPECT_EQ(content(entryPath), others);
    EXPECT_EQ(QFileInfo(inHome(entryPath)).lastModified(), before);
    EXPECT_TRUE(LoginItems::preferencesPath().startsWith(root.path()));
}

TEST_F(AutostartEntryTest, IsNotTakenInByAMarkThatIsNoLineOfItsOwn)
{
    const QByteArray others = "[Desktop Entry]\nComment=X-Dozely-LoginItem=true\nX-Dozely-LoginItem=false\n";
    write(entryPath, others);
    LoginItems::set(foo, true, false);
    LoginItems::set(foo, false, false);
    EXPECT_EQ(content(entryPath), others);
}

TEST_F(AutostartEntryTest, LeavesLinksFoldersAndPipesInItsPlaceAlone)
{
    write("/target", "X-Dozely-LoginItem=true\n");
    root.makeFolder(RealHomeDirectory() + "/.config/autostart");
    ASSERT_TRUE(QFile::link(inHome("/target"), inHome(entryPath)));
    const auto turnOnAndOff = [] {
        LoginItems::set(foo, true, false);
        LoginItems::set(foo, false, false);
    };
    turnOnAndOff();
    EXPECT_TRUE(QFileInfo(inHome(entryPath)).isSymbolicLink());
    EXPECT_EQ(content("/target"), "X-Dozely-LoginItem=true\n");
    ASSERT_TRUE(QFile::remove(inHome(entryPath)));
    ASSERT_TRUE(QFile::link(inHome("/nowhere"), inHome(entryPath)));
    turnOnAndOff();
    EXPECT_TRUE(QFileInfo(inHome(entryPath)).isSymbolicLink());
    ASSERT_TRUE(QFile::remove(inHome(entryPath)));
    ASSERT_TRUE(QDir().mkdir(inHome(entryPath)));
    turnOnAndOff();
    EXPECT_TRUE(QFileInfo(inHome(entryPath)).isDir());
    ASSERT_TRUE(QDir().rmdir(inHome(entryPath)));
    ASSERT_EQ(::mkfifo(qPrintable(inHome(entryPath)), 0600), 0);
    turnOnAndOff();
    EXPECT_EQ(entries().size(), 0); // a pipe is none of the entries listed
    EXPECT_TRUE(QFileInfo::exists(inHome(entryPath)));
}

TEST_F(AutostartEntryTest, IsNotMadeWhenThePreferencesCannotBeRead)
{
    write(preferences, "no property list");
    LoginItems::set(foo, true, false);
    EXPECT_FALSE(QFileInfo::exists(inHome("/.config")));
}

TEST_F(AutostartEntryTest, StartsAProgramWhosePathNeedsQuotes)
{
    for (const QString name : {"My App", "100% \"real\"", "back\\slash", "`$HOME`", "a%fb", "Été", "'x'"}) {
        const QString program = "/opt/" + name + "/Foo";
        AutostartEntry("Foo.app").put(program, false);
        EXPECT_EQ(QString::fromUtf8(startedProgram()), program);
    }
}

TEST_F(AutostartEntryTest, IsNotMadeForAPathThatWouldForgeLines)
{
    AutostartEntry("Foo.app").put("/opt/x\nHidden=true/Foo", false);
    AutostartEntry("Fo\no.app").put("/opt/x/Foo", false);
    EXPECT_TRUE(entries().isEmpty());
}

TEST_F(AutostartEntryTest, LiesWhereTheSessionLooksForIt)
{
    EXPECT_EQ(AutostartEntry("Foo.app").path(), inHome(entryPath));
    qputenv("XDG_CONFIG_HOME", "/conf");
    EXPECT_EQ(AutostartEntry("Foo.app").path(), root.join("/conf/autostart/dozely-login-Foo.desktop"));
    qputenv("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(AutostartEntry("Foo.app").path(), inHome(entryPath));
}
