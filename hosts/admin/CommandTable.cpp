// SPDX-License-Identifier: MIT
#include "hosts/admin/CommandTable.h"

#include "hosts/admin/AddCommand.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/ApplyCommand.h"
#include "hosts/admin/ChangeCommand.h"
#include "hosts/admin/ChannelCommands.h"
#include "hosts/admin/CleanCommand.h"
#include "hosts/admin/CompleteCommand.h"
#include "hosts/admin/DoctorCommand.h"
#include "hosts/admin/EventCommand.h"
#include "hosts/admin/ExportCommand.h"
#include "hosts/admin/HistoryCommand.h"
#include "hosts/admin/ListCommand.h"
#include "hosts/admin/LogCommand.h"
#include "hosts/admin/NextCommand.h"
#include "hosts/admin/OutputCommand.h"
#include "hosts/admin/PowerCommand.h"
#include "hosts/admin/StatusCommand.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/admin/UpdateCommand.h"

#include <algorithm>

namespace
{
const QStringList json{"json"};
const QStringList ofOccurrence{"json", "date", "time-zone"};

/// What is to be done, and when.
const QStringList describing{
    "json",  "bundle",     "program",   "argument", "date",         "time-zone", "in",    "parameter",
    "alert", "parameters", "in-daemon", "wake",     "in-session",   "power-on",  "stays", "disabled",
    "owner", "anyway",     "every",     "at",       "tell-failure", "on",        "rule",  "from",
    "until", "count",      "except",    "missed",   "overlap",      "after"};
const QStringList takingBack{"once",        "enabled",   "endless",        "in-default",
                             "no-alert",    "no-except", "no-parameter",   "no-stays",
                             "no-power-on", "no-wake",   "no-tell-failure"};
} // namespace

const QList<CommandTable::Command> &CommandTable::all()
{
    static const QList<Command> commands{
        {"status",
         {""},
         QT_TRANSLATE_NOOP(
             "AdminText",
             "Show on one screen how the system is: daemon, agents, clock, what comes, what failed."),
         "status",
         0,
         0,
         json,
         StatusCommand::run},
        {"doctor",
         {""},
         QT_TRANSLATE_NOOP("AdminText",
                           "Look at all that can be wrong with the installation, and say what helps."),
         "doctor",
         0,
         0,
         json,
         DoctorCommand::run},
        {"list",
         {""},
         QT_TRANSLATE_NOOP("AdminText", "Show all schedules, and what became of those that are over."),
         "list --json",
         0,
         0,
         json,
         ListCommand::run},
        {"add",
         {"NAME"},
         QT_TRANSLATE_NOOP("AdminText", "Add a schedule: what is to be done (--bundle or --program) and when "
                                        "(--date or --in; --every or --rule, with --at)."),
         "add Backup --program /usr/local/bin/backup --every day --at 22:00 --wake",
         1,
         1,
         describing + QStringList{"spread"},
         AddCommand::run},
        {"change",
         {"SCHEDULE"},
         QT_TRANSLATE_NOOP("AdminText", "Change what the options name, as for \"add\"; the rest stays."),
         "change Backup --at 23:00 --no-wake",
         1,
         1,
         describing + takingBack + QStringList{"name"},
         ChangeCommand::run},
        {"remove",
         {"SCHEDULE"},
         QT_TRANSLATE_NOOP("AdminText", "Remove a schedule."),
         "remove Backup",
         1,
         1,
         json,
         StoreCommands::remove},
        {"clean",
         {""},
         QT_TRANSLATE_NOOP("AdminText", "Remove the schedules that are over, but for those that stay."),
         "clean",
         0,
         0,
         json,
         CleanCommand::run},
        {"enable",
         {"SCHEDULE"},
         QT_TRANSLATE_NOOP("AdminText", "Let a schedule come due."),
         "enable Backup",
         1,
         1,
         json,
         StoreCommands::enable},
        {"disable",
         {"SCHEDULE"},
         QT_TRANSLATE_NOOP("AdminText", "Keep a schedule, but never let it come due."),
         "disable Backup",
         1,
         1,
         json,
         StoreCommands::disable},
        {"next",
         {"[SCHEDULE]"},
         QT_TRANSLATE_NOOP("AdminText", "Show what comes, and what wakes the machine."),
         "next Backup -n 3",
         0,
         1,
         {"json", "n", "until"},
         NextCommand::run},
        {"history",
         {"[SCHEDULE]"},
         QT_TRANSLATE_NOOP("AdminText", "Show what became of it, newest first."),
         "history Backup",
         0,
         1,
         {"json", "n"},
         HistoryCommand::run},
        {"skip",
         {"SCHEDULE"},
         QT_TRANSLATE_NOOP("AdminText", "Leave out the next time, or that at --date."),
         "skip Backup --date tomorrow",
         1,
         1,
         ofOccurrence,
         ChannelCommands::skip},
        {"postpone",
         {"SCHEDULE SECONDS"},
         QT_TRANSLATE_NOOP("AdminText",
                           "Perform it so much later (90, 10m, 1h): the next time, or that at --date."),
         "postpone Backup 10m",
         2,
         2,
         ofOccurrence,
         ChannelCommands::postpone},
        {"run",
         {"SCHEDULE"},
         QT_TRANSLATE_NOOP("AdminText", "Have the daemon perform a schedule's action now."),
         "run Backup",
         1,
         1,
         json,
         ChannelCommands::run},
        {"ping",
         {"daemon", "agent [USER]", "application [USER]"},
         QT_TRANSLATE_NOOP("AdminText", "Ask whether the daemon, a user's agent or his configuration "
                                        "application is alive; yours without USER."),
         "ping agent",
         1,
         2,
         json,
         ChannelCommands::ping},
        {"log",
         {""},
         QT_TRANSLATE_NOOP("AdminText", "Show the last lines of the log."),
         "log --follow",
         0,
         0,
         {"json", "lines", "follow"},
         LogCommand::run},
        {"output",
         {"SCHEDULE"},
         QT_TRANSLATE_NOOP("AdminText", "Show what the schedule's action wrote last, when it was performed "
                                        "the last time, or at --date."),
         "output Backup",
         1,
         1,
         ofOccurrence,
         OutputCommand::run},
        {"power",
         {"", "test"},
         QT_TRANSLATE_NOOP("AdminText",
                           "Show the clock that can wake the machine, its alarm, and the scheduled events; "
                           "or arm the alarm, read it back, set it as it was."),
         "power test",
         0,
         1,
         json,
         PowerCommand::run},
        {"sleep",
         {""},
         QT_TRANSLATE_NOOP("AdminText", "Put the machine to sleep now."),
         "sleep",
         0,
         0,
         json,
         PowerCommand::sleep},
        {"export",
         {"[SCHEDULE]"},
         QT_TRANSLATE_NOOP("AdminText", "Write all schedules, or one, to the standard output: a property "
                                        "list, which \"apply\" reads, or with --ics a calendar."),
         "export --ics > schedules.ics",
         0,
         1,
         {"ics"},
         ExportCommand::run},
        {"apply",
         {"FILE"},
         QT_TRANSLATE_NOOP("AdminText", "Have exactly those schedules that a property list, JSON or YAML "
                                        "file says; \"-\" is the standard input."),
         "apply schedules.yaml --dry-run",
         1,
         1,
         {"json", "dry-run", "spread", "anyway"},
         ApplyCommand::run},
        {"update",
         {"check"},
         QT_TRANSLATE_NOOP("AdminText", "Ask the update server whether there is a newer version."),
         "update check",
         1,
         1,
         json,
         UpdateCommand::run},
        {"event",
         {"SIGNATURE CLASS ID"},
         QT_TRANSLATE_NOOP("AdminText", "Send an Apple event to the process with that signature, and show "
                                        "the reply; each of the three is four characters."),
         "event DzAg aevt quit",
         3,
         3,
         {"json", "parameter", "parameters", "user", "timeout", "no-reply"},
         EventCommand::run},
        {"complete",
         {"WORD..."},
         QT_TRANSLATE_NOOP("AdminText", "Print how the last word may go on, for shells."),
         "",
         0,
         1000,
         {},
         CompleteCommand::run,
         false},
    };
    return commands;
}

const CommandTable::Command *CommandTable::find(const QString &name)
{
    const auto found = std::find_if(all().cbegin(), all().cend(),
                                    [&](const Command &command) { return command.name == name; });
    return found == all().cend() ? nullptr : &*found;
}
