// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/AppleScriptExtensions.h"

#include "DozelyKit/system/scripting/NSAppleScript.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>

using namespace zandorSoftwaresExtensions;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
class AppleScriptExtensionsTest : public testing::Test
{
protected:
    QString write(const QByteArray &content, const QString &name = "/script.lua")
    {
        QFile file(root.join(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    std::vector<std::string> lines() const
    {
        std::vector<std::string> texts;
        for (const QString &line : root.logLines())
            texts.push_back(line.toStdString());
        return texts;
    }
    ScratchRoot root;
};
} // namespace

TEST_F(AppleScriptExtensionsTest, LogTheResultOfAScript)
{
    executeScript("return 'Zoë'");
    EXPECT_THAT(lines(), ElementsAre(EndsWith("Resultat de l'execution du script AS: Zoë")));
}

TEST_F(AppleScriptExtensionsTest, LogOneLineWhateverTheResultOrTheErrorHolds)
{
    executeScript("return 'a\\nMar 04 09:15:02 (1 - 1 - 0 - Daemon): forged\\r\\27[2J'");
    executeScript("error('a\\nforged\\r\\27[2J', 0)");
    EXPECT_THAT(lines(), ElementsAre(EndsWith("AS: a Mar 04 09:15:02 (1 - 1 - 0 - Daemon): forged  [2J"),
                                     EndsWith("AS: a forged  [2J")));
}

TEST_F(AppleScriptExtensionsTest, LogNoMoreOfAResultThanAMebibyte)
{
    executeScript("return ('x'):rep(3 << 20)");
    executeScript("error(('x'):rep(3 << 20), 0)");
    ASSERT_THAT(lines(), SizeIs(2));
    for (const std::string &line : lines()) {
        EXPECT_LT(line.size(), (1U << 20) + 200);
        EXPECT_THAT(line, EndsWith("xxx..."));
    }
}

TEST_F(AppleScriptExtensionsTest, LogAnEmptyTextAsAResult)
{
    executeScript("return ''");
    EXPECT_THAT(lines(), ElementsAre(EndsWith("Resultat de l'execution du script AS: ")));
}

TEST_F(AppleScriptExtensionsTest, LogNothingForAResultWithoutAStringValue)
{
    executeScript("return {1, 2}");
    executeScript("local x = 1");
    executeScriptFile(write("return {1, 2}"));
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(AppleScriptExtensionsTest, LogAScriptThatDoesNotCompileWithTheCompileMessage)
{
    executeScript("return return");
    EXPECT_THAT(lines(), ElementsAre(EndsWith("Impossible de compiler le script")));
}

TEST_F(AppleScriptExtensionsTest, LogAScriptThatFailsAtRunTimeWithTheErrorsText)
{
    executeScript("local x\nreturn x.y");
    EXPECT_THAT(lines(), ElementsAre(EndsWith("Erreur lors de l'execution du script AS: "
                                              "script:2: attempt to index a nil value (local 'x')")));
}

TEST_F(AppleScriptExtensionsTest, EndARunawayScriptWithTheExecutionMessage)
{
    executeScript("while true do end");
    EXPECT_THAT(lines(), ElementsAre(EndsWith("Erreur lors de l'execution du script AS: "
                                              "the script takes too many steps.")));
}

TEST_F(AppleScriptExtensionsTest, LogTheResultOfAScriptFile)
{
    executeScriptFile(write("#!/usr/bin/osascript\nreturn 6 * 7"));
    EXPECT_THAT(lines(), ElementsAre(EndsWith("Resultat de l'execution du script AS: 42")));
}

TEST_F(AppleScriptExtensionsTest, LogAFileThatCannotBeLoadedWithTheExecutionMessage)
{
    executeScriptFile(root.join("/missing.lua"));
    executeScriptFile(write("\x1bLua"));
    executeScriptFile(write("return return")); // what does not compile is not reported otherwise
    executeScriptFile(write("error('at run time')"));
    EXPECT_THAT(lines(),
                ElementsAre(HasSubstr("Erreur lors de l'execution du script AS: Cannot read"),
                            HasSubstr("Erreur lors de l'execution du script AS: "),
                            HasSubstr("Erreur lors de l'execution du script AS: script.lua:1: unexpected"),
                            EndsWith("Erreur lors de l'execution du script AS: script.lua:1: at run time")));
}

namespace
{
/// The tool at its place below the root.
class ScriptInTaskTest : public AppleScriptExtensionsTest
{
protected:
    void install(const QString &program)
    {
        root.makeFolder("/usr/bin");
        ASSERT_TRUE(QFile::copy(program, root.join("/usr/bin/osascript")));
    }
    void installRecorder()
    {
        // Writes its arguments, each in its own line, and its environment beside itself.
        write("#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.new\"; env > \"$0.env\"; mv \"$0.new\" "
              "\"$0.arguments\"\n",
              "/recorder");
        QFile::setPermissions(root.join("/recorder"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        install(root.join("/recorder"));
    }
    QByteArray recorded(const QString &what)
    {
        const QString path = root.join("/usr/bin/osascript." + what);
        EXPECT_TRUE(waitUntil([&] { return QFileInfo::exists(path); }));
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};
} // namespace

TEST_F(ScriptInTaskTest, GetsTheSourceAsOneArgumentBehindTheOption)
{
    installRecorder();
    executeScriptInNSTask("return \"a b\" -- $HOME 'x'; %@ %d");
    EXPECT_EQ(recorded("arguments"), "-e\nreturn \"a b\" -- $HOME 'x'; %@ %d\n");
}

TEST_F(ScriptInTaskTest, TakesTheDescriptionOfAnyValue)
{
    installRecorder();
    executeScriptInNSTask(42);
    EXPECT_EQ(recorded("arguments"), "-e\n42\n");
}

TEST_F(ScriptInTaskTest, GetsACleanEnvironment)
{
    qputenv("DOZELY_SECRET", "x");
    qputenv("DISPLAY", ":77");
    installRecorder();
    executeScriptInNSTask("");
    recorded("arguments");
    const QByteArray environment = recorded("env");
    EXPECT_FALSE(environment.contains("SECRET"));
    EXPECT_TRUE(environment.contains("DISPLAY=:77\n"));
    EXPECT_TRUE(environment.contains("PATH=/usr/local/bin:/usr/bin:/bin\n"));
}

TEST_F(ScriptInTaskTest, IsSilentWhenTheToolIsMissing)
{
    executeScriptInNSTask("return 1");
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(ScriptInTaskTest, RunsInTheRealToolBelowTheSameRoot)
{
    install(OSASCRIPT);
    executeScriptInNSTask("dozely.log('from the task')");
    ASSERT_TRUE(waitUntil([&] { return !lines().empty(); }));
    EXPECT_THAT(lines(), ElementsAre("osascript from the task"));
}
