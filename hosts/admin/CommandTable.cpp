// SPDX-License-Identifier: MIT
#include "hosts/admin/CommandTable.h"

#include "hosts/admin/AddCommand.h"
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
         "Show on one screen how the system is: daemon, agents, clock, what comes, what failed.",
         0,
         0,
         json,
         StatusCommand::run},
        {"doctor",
         {""},
         "Look at all that can be wrong with the installation, and say what helps.",
         0,
         0,
         json,
         DoctorCommand::run},
        {"list",
         {""},
         "Show all schedules, and what became of those that are over.",
         0,
         0,
         json,
         ListCommand::run},
        {"add",
         {"NAME"},
         "Add a schedule: what is to be done (--bundle or --program) and when (--date or --in; --every or "
         "--rule, with --at).",
         1,
         1,
         describing + QStringList{"spread"},
         AddCommand::run},
        {"change",
         {"SCHEDULE"},
         "Change what the options name, as for \"add\"; the rest stays.",
         1,
         1,
         describing + takingBack + QStringList{"name"},
         ChangeCommand::run},
        {"remove", {"SCHEDULE"}, "Remove a schedule.", 1, 1, json, StoreCommands::remove},
        {"clean",
         {""},
         "Remove the schedules that are over, but for those that stay.",
         0,
         0,
         json,
         CleanCommand::run},
        {"enable", {"SCHEDULE"}, "Let a schedule come due.", 1, 1, json, StoreCommands::enable},
        {"disable",
         {"SCHEDULE"},
         "Keep a schedule, but never let it come due.",
         1,
         1,
         json,
         StoreCommands::disable},
        {"next",
         {"[SCHEDULE]"},
         "Show what comes, and what wakes the machine.",
         0,
         1,
         {"json", "n", "until"},
         NextCommand::run},
        {"history",
         {"[SCHEDULE]"},
         "Show what became of it, newest first.",
         0,
         1,
         {"json", "n"},
         HistoryCommand::run},
        {"skip",
         {"SCHEDULE"},
         "Leave out the next time, or that at --date.",
         1,
         1,
         ofOccurrence,
         ChannelCommands::skip},
        {"postpone",
         {"SCHEDULE SECONDS"},
         "Perform it so much later (90, 10m, 1h): the next time, or that at --date.",
         2,
         2,
         ofOccurrence,
         ChannelCommands::postpone},
        {"run",
         {"SCHEDULE"},
         "Have the daemon perform a schedule's action now.",
         1,
         1,
         json,
         ChannelCommands::run},
        {"ping",
         {"daemon", "agent [USER]", "application [USER]"},
         "Ask whether the daemon, a user's agent or his configuration application is alive; yours without "
         "USER.",
         1,
         2,
         json,
         ChannelCommands::ping},
        {"log", {""}, "Show the last lines of the log.", 0, 0, {"json", "lines", "follow"}, LogCommand::run},
        {"output",
         {"SCHEDULE"},
         "Show what the schedule's action wrote last, when it was performed the last time, or at --date.",
         1,
         1,
         ofOccurrence,
         OutputCommand::run},
        {"power",
         {"", "test"},
         "Show the clock that can wake the machine, its alarm, and the scheduled events; or arm the alarm, "
         "read it back, set it as it was.",
         0,
         1,
         json,
         PowerCommand::run},
        {"sleep", {""}, "Put the machine to sleep now.", 0, 0, json, PowerCommand::sleep},
        {"export",
         {"[SCHEDULE]"},
         "Write all schedules, or one, to the standard output: a property list, which \"apply\" reads, or "
         "with "
         "--ics a calendar.",
         0,
         1,
         {"ics"},
         ExportCommand::run},
        {"apply",
         {"FILE"},
         "Have exactly those schedules that a property list, JSON or YAML file says; \"-\" is the standard "
         "input.",
         1,
         1,
         {"json", "dry-run", "spread", "anyway"},
         ApplyCommand::run},
        {"update",
         {"check"},
         "Ask the update server whether there is a newer version.",
         1,
         1,
         json,
         UpdateCommand::run},
        {"event",
         {"SIGNATURE CLASS ID"},
         "Send an Apple event to the process with that signature, and show the reply. Each is four "
         "characters, as in: event DzAg aevt quit.",
         3,
         3,
         {"json", "parameter", "parameters", "user", "timeout", "no-reply"},
         EventCommand::run},
        {"complete",
         {"WORD..."},
         "Print how the last word may go on, for shells.",
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
