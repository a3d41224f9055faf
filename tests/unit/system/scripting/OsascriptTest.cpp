// SPDX-License-Identifier: MIT
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{
class OsascriptTest : public testing::Test
{
protected:
    struct Outcome {
        int status;
        std::string output;
        std::string error;
    };
    Outcome run(const QStringList &arguments, const QString &program = OSASCRIPT)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }
    QString write(const QByteArray &content)
    {
        QFile file(root.join("/script.lua"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    ScratchRoot root;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};
} // namespace

TEST_F(OsascriptTest, PrintsTheResultOfAScript)
{
    const Outcome outcome = run({"-e", "return 'Zoë'"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "Zoë\n");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(OsascriptTest, PrintsNothingForAResultWithoutText)
{
    const Outcome outcome = run({"-e", "return {}"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
}

TEST_F(OsascriptTest, TakesSeveralSourcesAsTheLinesOfOneScript)
{
    EXPECT_EQ(run({"-e", "local x = 20", "-e", "return x + 1"}).output, "21\n");
    EXPECT_EQ(run({"-e", "local x", "-e", "error('here')"}).error, "osascript: script:2: here\n");
}

TEST_F(OsascriptTest, TakesASourceThatLooksLikeAnOption)
{
    EXPECT_EQ(run({"-e", "--help"}).output, ""); // a comment of the language
    EXPECT_EQ(run({"-e", "-- x\nreturn 1"}).output, "1\n");
    EXPECT_EQ(run({"-e", ""}).status, 0);
}

TEST_F(OsascriptTest, RunsAFile)
{
    EXPECT_EQ(run({write("#!/usr/bin/osascript\nreturn 'file'")}).output, "file\n");
}

TEST_F(OsascriptTest, TellsAnErrorAndEndsWithStatusOne)
{
    for (const char *source : {"return return", "error('no')", "while true do end"}) {
        const Outcome outcome = run({"-e", source});
        EXPECT_EQ(outcome.status, 1) << source;
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.error.rfind("osascript: ", 0), 0U) << outcome.error;
    }
    EXPECT_EQ(run({"-e", "error('a\\nforged\\r\\27[2J', 0)"}).error, "osascript: a forged  [2J\n");
    EXPECT_THAT(run({root.join("/missing")}).error, HasSubstr("osascript: Cannot read"));
    EXPECT_EQ(run({root.join("/missing")}).status, 1);
}

TEST_F(OsascriptTest, EndsWithStatusTwoOnAWrongCommandLine)
{
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({"-e", "return 1", "file"}).status, 2);
    EXPECT_EQ(run({"one", "two"}).status, 2);
    EXPECT_EQ(run({"-x"}).status, 2);
    EXPECT_EQ(run({"--root", "relative", "-e", "return 1"}).status, 2);
}

TEST_F(OsascriptTest, KnowsHelpAndVersion)
{
    EXPECT_THAT(run({"--help"}).output, HasSubstr("-e <SOURCE>"));
    EXPECT_THAT(run({"--help"}).output, HasSubstr("[FILE]"));
    EXPECT_THAT(run({"--help"}).output, HasSubstr("The file that holds the script."));
    EXPECT_EQ(run({"--version"}).output.rfind("osascript ", 0), 0U);
}

TEST_F(OsascriptTest, LogsBelowTheGivenRoot)
{
    EXPECT_EQ(run({"--root", root.path(), "-e", "dozely.log('hello')"}).status, 0);
    EXPECT_EQ(root.logLines(), QStringList("osascript hello"));
}

TEST_F(OsascriptTest, WritesTheOutcomeToTheLogWhenAskedTo)
{
    const Outcome outcome = run({"--root", root.path(), "--log", "-e", "return 42"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
    run({"--root", root.path(), "--log", "-e", "return return"});
    run({"--root", root.path(), "--log", write("error('no')")});
    EXPECT_EQ(root.logLines(),
              QStringList({"osascript Resultat de l'execution du script AS: 42",
                           "osascript Impossible de compiler le script",
                           "osascript Erreur lors de l'execution du script AS: script.lua:1: no"}));
}

TEST_F(OsascriptTest, SaysSoWhereTheScriptEngineIsMissing)
{
    // The library alone, without the module that lies beside it where it was built.
    const QString folder = root.makeFolder("/usr/lib");
    ASSERT_TRUE(QFile::copy(KIT_LIBRARY, folder + "/" + QFileInfo(KIT_LIBRARY).fileName()));
    environment.insert("LD_LIBRARY_PATH", folder);
    const Outcome outcome = run({"--root", root.path(), "-e", "return 1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.error, StartsWith("osascript: The script engine cannot be opened: "));
    EXPECT_THAT(outcome.error, HasSubstr((folder + "/dozely/ScriptEngine-").toStdString()));
    EXPECT_THAT(outcome.error, HasSubstr("No such file"));
    ASSERT_EQ(root.logLines().size(), 1);
    EXPECT_THAT(root.logLines().first().toStdString(), HasSubstr("The script engine cannot be opened: "));
}

TEST_F(OsascriptTest, HasItsOwnNameWhateverTheLinkToItIsCalled)
{
    const QString link = root.join("/another");
    ASSERT_TRUE(QFile::link(OSASCRIPT, link));
    EXPECT_THAT(run({"--version"}, link).output, StartsWith("osascript "));
    run({"--root", root.path(), "-e", "dozely.log('hello')"}, link);
    EXPECT_EQ(root.logLines(), QStringList("osascript hello"));
}

TEST_F(OsascriptTest, BelongsToTheSystemBelowWhichItLies)
{
    root.makeFolder("/usr/bin");
    const QString copy = root.join("/usr/bin/osascript");
    ASSERT_TRUE(QFile::copy(OSASCRIPT, copy));
    run({"-e", "dozely.log('at home')"}, copy);
    EXPECT_EQ(root.logLines(), QStringList("osascript at home"));
}
