// SPDX-License-Identifier: MIT
#include "unit/hosts/admin/AdminTool.h"

#include <QFile>

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

namespace
{
class CompletionTest : public testing::Test
{
protected:
    /// What the tool offers for the last of the words, without what it says of it.
    std::vector<std::string> offered(const QStringList &words)
    {
        const auto result = tool.run(QStringList{"complete", "--"} + words);
        EXPECT_EQ(result.status, 0) << result.errors.constData();
        std::vector<std::string> candidates;
        for (const QByteArray &line : result.output.split('\n')) {
            if (!line.isEmpty())
                candidates.push_back(line.left(line.indexOf('\t')).toStdString());
        }
        return candidates;
    }

    /// What a shell prints of a script, with the tool in its PATH.
    QByteArray printedBy(const QString &shell, const QStringList &arguments)
    {
        QProcess process;
        tool.prepare(process, {});
        QProcessEnvironment environment = process.processEnvironment();
        environment.insert("PATH", tool.root.join("/usr") + ":" + environment.value("PATH"));
        environment.insert("HOME", tool.root.path());
        environment.insert("ROOT", tool.root.path());
        environment.insert("COMPLETIONS", COMPLETIONS);
        process.setProcessEnvironment(environment);
        process.setProgram(shell);
        process.setArguments(arguments);
        process.start();
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.readAllStandardError(), QByteArray());
        return process.readAllStandardOutput();
    }

    AdminTool tool;
};
} // namespace

TEST_F(CompletionTest, CommandsAreOfferedFirst)
{
    EXPECT_THAT(offered({""}), IsSupersetOf({"list", "add", "status", "doctor"}));
    EXPECT_THAT(offered({""}), Not(Contains("complete")));
    EXPECT_THAT(offered({"po"}), ElementsAre("postpone", "power"));
    EXPECT_THAT(offered({"--json", "sta"}), ElementsAre("status"));
}

TEST_F(CompletionTest, OptionsAreThoseOfTheCommand)
{
    EXPECT_THAT(offered({"next", "-"}), IsSupersetOf({"--json", "-n", "--until", "--host", "--help"}));
    EXPECT_THAT(offered({"next", "-"}), Not(Contains("--every")));
    EXPECT_THAT(offered({"change", "A", "--no-w"}), ElementsAre("--no-wake"));
}

TEST_F(CompletionTest, SchedulesAreOfferedByTheirNamesUnlessSeveralShareOne)
{
    tool.add("Water the plants");
    const QString first = tool.add("Backup");
    const QString second = tool.add("Backup");
    EXPECT_THAT(offered({"run", ""}),
                testing::UnorderedElementsAre("Water the plants", first.toStdString(), second.toStdString()));
    EXPECT_THAT(offered({"run", "Wat"}), ElementsAre("Water the plants"));
    EXPECT_THAT(offered({"run", "Water the plants", ""}), IsEmpty());
    EXPECT_THAT(offered({"list", ""}), IsEmpty());
}

TEST_F(CompletionTest, ValuesOfOptionsAreOffered)
{
    EXPECT_THAT(offered({"add", "A", "--bundle", ""}), ElementsAre("Command"));
    EXPECT_THAT(offered({"add", "A", "--after", ""}), ElementsAre("nothing", "sleep", "power-off"));
    EXPECT_THAT(offered({"add", "A", "--time-zone", "Europe/Berl"}), ElementsAre("Europe/Berlin"));
    EXPECT_THAT(offered({"add", "A", "--parameters", ""}), IsEmpty()) << "the shell offers files";
}

TEST_F(CompletionTest, WordsOfACommandAreOffered)
{
    EXPECT_THAT(offered({"ping", ""}), ElementsAre("daemon", "agent", "application"));
    EXPECT_THAT(offered({"power", ""}), ElementsAre("test"));
    EXPECT_THAT(offered({"update", ""}), ElementsAre("check"));
    EXPECT_THAT(offered({"nonsense", ""}), IsEmpty());
}

TEST_F(CompletionTest, BashCompletesWhatIsQuotedAndWhatIsNot)
{
    tool.add("Water the plants");
    const char *const script = R"(source "$COMPLETIONS/dozely-admin.bash"
        try() { COMP_WORDS=(dozely-admin --root "$ROOT" "$@"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
                _dozely_admin; printf '%s|' "${COMPREPLY[@]}"; echo; }
        try po; try run Wat; try run '"Wat'; try run '"Water the plants"' --js)";
    EXPECT_EQ(printedBy("bash", {"--norc", "-c", script}),
              "postpone|power|\nWater\\ the\\ plants|\nWater the plants|\n--json|\n");
}

TEST_F(CompletionTest, ZshCompletes)
{
    tool.add("Water the plants");
    // _describe and _files are the completion system's; here they tell what they are given.
    const char *const script = R"zsh(_describe() { print -l -- "${(@P)2}" }; _files() { print files }
        functions[complete_it]="$(< $COMPLETIONS/_dozely-admin)"
        try() { local -a words=(dozely-admin --root $ROOT "$@"); local CURRENT=$#words PREFIX="${@[-1]}"; complete_it }
        try run Wat; try add A --parameters ''; try pos)zsh";
    const QByteArray printed = printedBy("zsh", {"-f", "-c", script});
    EXPECT_TRUE(printed.startsWith("Water the plants:")) << printed.constData();
    EXPECT_TRUE(printed.contains("\nfiles\npostpone:Perform it")) << printed.constData();
}

TEST_F(CompletionTest, FishCompletes)
{
    tool.add("Water the plants");
    const char *const script = R"(source $COMPLETIONS/dozely-admin.fish
        complete -C "dozely-admin --root $ROOT run Wat"
        complete -C "dozely-admin --root $ROOT pos")";
    const QByteArray printed = printedBy("fish", {"--no-config", "-c", script});
    EXPECT_TRUE(printed.contains("Water\\ the\\ plants\t") || printed.contains("Water the plants\t"))
        << printed.constData();
    EXPECT_TRUE(printed.contains("postpone\tPerform it")) << printed.constData();
}
