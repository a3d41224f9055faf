// SPDX-License-Identifier: MIT
#include "hosts/admin/CommandTable.h"
#include "hosts/admin/OptionTable.h"
#include "unit/hosts/admin/AdminTool.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

TEST(AdminUsage, HelpNamesEveryCommandAndExitStatus)
{
    AdminTool tool;
    const auto help = tool.run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char *word : {"list", "add NAME", "change SCHEDULE", "next [SCHEDULE]", "history [SCHEDULE]",
                             "skip SCHEDULE", "postpone SCHEDULE SECONDS", "remove SCHEDULE", "clean",
                             "enable SCHEDULE", "disable SCHEDULE", "run SCHEDULE", "output SCHEDULE",
                             "ping agent [USER]", "log", "--follow", "--json", "3 not permitted"})
        EXPECT_THAT(help.output.toStdString(), HasSubstr(word));
}

TEST(AdminUsage, VersionNamesTheTool)
{
    AdminTool tool;
    const auto version = tool.run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.output.toStdString(), testing::StartsWith("Dozely Admin "));
}

TEST(AdminUsage, AWrongCommandLineEndsWithTwoAndSaysWhy)
{
    AdminTool tool;
    const QList<std::pair<QStringList, const char *>> cases{
        {{}, "A command is missing"},
        {{"dance"}, "There is no command \"dance\""},
        {{"remove"}, "\"remove\" needs an argument"},
        {{"list", "x"}, "\"list\" takes no argument \"x\""},
        {{"list", "--follow"}, "\"list\" takes no option --follow"},
        {{"list", "--nonsense"}, "nonsense"},
        {{"ping", "moon"}, "\"moon\" is not daemon, agent or application"},
        {{"ping", "daemon", "root"}, "one daemon for all users"},
        {{"log", "--lines", "many"}, "\"many\" is not a number of lines"},
        {{"log", "--lines=-5"}, "\"-5\" is not a number of lines"},
        {{"log", "--lines", "1000001"}, "\"1000001\" is not a number of lines"},
        {{"next", "-n", "many"}, "-n needs a whole number, 1 or more, not \"many\"."},
        {{"list", "-n", "5"}, "\"list\" takes no option -n"},
        {{"postpone", "A"}, "\"postpone\" needs an argument"},
        {{"postpone", "A", "soon"}, "\"soon\" is no time to postpone it by, such as 90, 10m or 1h."},
        {{"postpone", "A", "0"}, "\"0\" is no time to postpone it by"},
        {{"add", "A", "--in", "5"}, "Say what is to be done"},
        {{"add", "A", "--program", "/bin/true"}, "Say when"},
        {{"add", "A", "--program", "true", "--in", "5"}, "\"true\" is not an absolute path"},
        {{"add", " ", "--program", "/bin/true", "--in", "5"}, "needs a name"},
        {{"add", "a\nb", "--program", "/bin/true", "--in", "5"}, "control characters"},
        {{"add", "A", "--bundle", "a/b.plugin", "--in", "5"},
         "neither the name of a bundle nor an absolute path"},
        {{"add", "A", "--bundle", "Command", "--argument", "x", "--in", "5"}, "--argument needs --program"},
    };
    for (const auto &[arguments, complaint] : cases) {
        const auto result = tool.run(arguments);
        EXPECT_EQ(result.status, 2) << qPrintable(arguments.join(' '));
        EXPECT_THAT(result.errors.toStdString(), HasSubstr(complaint));
        EXPECT_EQ(result.output, QByteArray());
    }
    EXPECT_TRUE(tool.store().isEmpty());
}

TEST(AdminUsage, ARootFolderThatDoesNotExistIsBadUsage)
{
    AdminTool tool;
    QProcess process;
    tool.prepare(process, {"list"});
    process.setArguments({"--root", tool.root.join("/gone"), "list"});
    process.start();
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_THAT(process.readAllStandardError().toStdString(), HasSubstr("does not exist"));
}

TEST(AdminUsage, EveryCommandHasHelpOfItsOwn)
{
    AdminTool tool;
    for (const char *command : {"list",   "add",     "change", "remove",   "clean", "enable", "disable",
                                "next",   "history", "skip",   "postpone", "run",   "ping",   "log",
                                "output", "power",   "sleep",  "update",   "event", "status", "doctor"}) {
        const auto help = tool.run({command, "--help"});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_TRUE(help.output.startsWith(QByteArray("Usage: dozely-admin ") + command))
            << help.output.constData();
        EXPECT_THAT(help.output.toStdString(), HasSubstr("--json"));
    }
    const std::string add = tool.run({"add", "--help"}).output.toStdString();
    EXPECT_THAT(add, HasSubstr("add NAME"));
    EXPECT_THAT(add, HasSubstr("--every TERM"));
    EXPECT_THAT(add, testing::Not(HasSubstr("--no-wake")));
}

TEST(AdminUsage, HelpOfACommandHasAnExampleAndItsExitStatuses)
{
    AdminTool tool;
    for (const CommandTable::Command &command : CommandTable::all()) {
        if (!command.isShown)
            continue;
        const std::string help = tool.run({command.name, "--help"}).output.toStdString();
        EXPECT_THAT(help, HasSubstr("\n\nExample:\n  dozely-admin " + command.name.toStdString()));
        EXPECT_THAT(help, HasSubstr("\n\nExit status:\n  0  "));
        EXPECT_THAT(help, HasSubstr("\n  2  the command line is wrong\n"));
    }
    const auto exits = [&tool](const char *command) {
        const QString help = tool.run({command, "--help"}).output;
        return help.mid(help.indexOf("Exit status:")).toStdString();
    };
    const char alive[] = "Exit status:\n  0  it is alive\n  1  it is not\n  2  the command line is wrong\n";
    EXPECT_EQ(exits("ping"), alive);
    EXPECT_EQ(exits("status"), alive);
    EXPECT_EQ(exits("doctor"), "Exit status:\n  0  nothing is wrong\n  1  something is wrong\n"
                               "  2  the command line is wrong\n");
    const std::string failed = "  1  it could not be done (not found, not reachable, damaged)\n"
                               "  2  the command line is wrong\n  3  not permitted\n";
    EXPECT_EQ(exits("list"), "Exit status:\n  0  done\n" + failed);
    EXPECT_EQ(exits("apply"), "Exit status:\n  0  nothing differed\n" + failed +
                                  "  4  schedules were changed, or would be\n");
    EXPECT_EQ(exits("update"),
              "Exit status:\n  0  up to date\n" + failed + "  4  there is a newer version\n  5  no answer\n");
}

TEST(AdminUsage, HelpOfACommandSaysWhatAnOptionMeansToIt)
{
    AdminTool tool;
    const auto help = [&](const char *command) {
        return tool.run({command, "--help"}).output.simplified().toStdString();
    };
    EXPECT_THAT(help("add"), HasSubstr("--date DATE When it takes place once, as"));
    EXPECT_THAT(help("change"), HasSubstr("--date DATE When it takes place once, as"));
    EXPECT_THAT(help("output"), HasSubstr("--date DATE Of which time; the latest without it."));
    EXPECT_THAT(help("skip"), HasSubstr("--date DATE Of which time; the next without it."));
    EXPECT_THAT(help("next"), HasSubstr("--until DATE Show what comes up to then"));
    EXPECT_THAT(help("event"), HasSubstr("--parameter KEY=VALUE A parameter of the event, whose KEY"));
    for (const OptionTable::Option &option : OptionTable::all()) {
        for (const OptionTable::Meaning &meaning : option.meanings) {
            for (const QString &command : meaning.commands)
                EXPECT_TRUE(CommandTable::find(command)->options.contains(option.name))
                    << command.toStdString() << ' ' << option.name.toStdString();
        }
    }
}

TEST(AdminUsage, TheToolsHelpNamesEveryCommandAndOption)
{
    AdminTool tool;
    const std::string help = tool.run({"--help"}).output.toStdString();
    for (const CommandTable::Command &command : CommandTable::all()) {
        if (command.isShown) {
            EXPECT_THAT(help, HasSubstr("\n  " + command.name.toStdString()));
        }
    }
    for (const OptionTable::Option &option : OptionTable::all())
        EXPECT_THAT(help, HasSubstr("\n  " + option.dashed().toStdString()));
}
