// SPDX-License-Identifier: MIT
#include "hosts/admin/AdminOptions.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/Output.h"

#include <QHash>

namespace
{
const char *const description =
    R"(Shows and changes the schedules, asks whether the system's processes are alive, shows the log.

Commands:
  list                           Show all schedules, and what became of those that are over.
  add NAME ...                   Add a schedule: what is to be done (--bundle or --program)
                                 and when (--date or --in).
  remove SCHEDULE                Remove a schedule.
  clean                          Remove the schedules that are over, but for those that stay.
  enable SCHEDULE                Let a schedule come due.
  disable SCHEDULE               Keep a schedule, but never let it come due.
  run SCHEDULE                   Have the daemon perform a schedule's action now.
  ping daemon                    Ask whether the daemon is alive.
  ping agent [USER]              Ask whether a user's agent is alive; yours without USER.
  ping application [USER]        The same for the user's configuration application.
  log                            Show the last lines of the log.
  output SCHEDULE                Show what the schedule's action wrote last, when it was performed
                                 the last time, or at --date.
  power                          Show the clock that can wake the machine, its alarm, and the
                                 scheduled events.
  power test                     Arm the alarm, read it back, set it as it was.
  sleep                          Put the machine to sleep now.
  update check                   Ask the update server whether there is a newer version.
  event SIGNATURE CLASS ID       Send an Apple event to the process with that signature, and show
                                 the reply. Each is four characters, as in: event DzAg aevt quit.
SCHEDULE is an identifier, or a name that only one schedule has. USER is a name or a number.

Exit status: 0 done (ping: it is alive); 1 it could not be done (not found, not reachable, damaged);
2 the command line is wrong; 3 not permitted. update check: 0 up to date; 4 there is a newer version;
5 no answer.)";

struct Rule {
    qsizetype fewest; // arguments after the command
    qsizetype most;
    QStringList options;
};

const QHash<QString, Rule> &rules()
{
    static const QHash<QString, Rule> table{
        {"list", {0, 0, {"json"}}},
        {"add",
         {1,
          1,
          {"json", "bundle", "program", "argument", "date", "time-zone", "in", "parameter", "parameters",
           "alert", "in-daemon", "in-session", "wake", "power-on", "tell-failure", "disabled", "owner",
           "stays", "anyway"}}},
        {"remove", {1, 1, {"json"}}},
        {"clean", {0, 0, {"json"}}},
        {"enable", {1, 1, {"json"}}},
        {"disable", {1, 1, {"json"}}},
        {"run", {1, 1, {"json"}}},
        {"ping", {1, 2, {"json"}}},
        {"log", {0, 0, {"json", "lines", "follow"}}},
        {"output", {1, 1, {"json", "date", "time-zone"}}},
        {"power", {0, 1, {"json"}}},
        {"sleep", {0, 0, {"json"}}},
        {"update", {1, 1, {"json"}}},
        {"event", {3, 3, {"json", "parameter", "parameters", "user", "timeout", "no-reply"}}},
    };
    return table;
}

QList<QCommandLineOption> ownOptions()
{
    return {
        {"json", "Answer in JSON, one object on a line."},
        {"bundle", "add: the plug-in bundle, a path or the name of an installed one.", "BUNDLE"},
        {"program", "add: run this program (an absolute path), with the bundle \"Command\".", "PROGRAM"},
        {"argument", "add: an argument of the program; repeat it for more.", "TEXT"},
        {"date",
         "add: when, as \"2026-03-14 06:55\" or with seconds. output: of which occurrence, the latest "
         "without "
         "it.",
         "DATE"},
        {"time-zone",
         "add: the date's time zone, as \"Europe/Berlin\"; the machine's without it (output: the "
         "schedule's).",
         "ZONE"},
        {"in", "add: when, so many seconds from now.", "SECONDS"},
        {"parameter",
         "add: a parameter of the action (event: of the event, KEY is four characters); repeat it for more. "
         "\"true\", \"false\" and numbers are taken as "
         "such; "
         "KEY:string=VALUE, :integer=, :real= and :boolean= name the type.",
         "KEY=VALUE"},
        {"parameters", "add, event: parameters from a property list.", "FILE"},
        {"alert", "add: alert the user so many seconds before, with a button to cancel.", "SECONDS"},
        {"in-daemon", "add: act in the daemon."},
        {"in-session", "add: act in the user's session."},
        {"wake", "add: wake the machine for it, a minute ahead."},
        {"power-on", "add: switch the machine on for it, three minutes ahead."},
        {"tell-failure", "add: tell the user at the console when it fails or is not performed."},
        {"disabled", "add: the schedule is not to come due before it is enabled."},
        {"anyway", "add: also what nothing could come of."},
        {"stays", "add: the schedule is not removed when it is over, but by \"remove\"."},
        {"owner", "add: whose schedule it is; yours without it.", "USER"},
        {"lines", "log: how many lines to show first, 20 without it.", "N"},
        {"follow", "log: go on showing lines as they come."},
        {"user", "event: whose process is to have it; yours without it.", "USER"},
        {"timeout", "event: how long to wait for the reply, 60 without it.", "SECONDS"},
        {"no-reply", "event: do not wait for a reply."},
    };
}
} // namespace

AdminOptions::AdminOptions() : m_options(description)
{
    m_options.parser().addOptions(ownOptions());
    m_options.parser().addPositionalArgument("command", "What to do, see above.", "COMMAND [ARGUMENTS]");
}

std::optional<int> AdminOptions::parse(const QStringList &arguments)
{
    if (const auto status = m_options.parse(arguments))
        return status;
    const QString wrong = complaint();
    if (wrong.isEmpty())
        return {};
    Output::remark(wrong);
    return static_cast<int>(ExitStatus::BadUsage);
}

QString AdminOptions::complaint() const
{
    if (command().isEmpty())
        return "A command is missing; --help shows them.";
    const auto rule = rules().constFind(command());
    if (rule == rules().cend())
        return QString("There is no command \"%1\"; --help shows those that there are.").arg(command());
    const qsizetype count = m_options.parser().positionalArguments().size() - 1;
    if (count < rule->fewest)
        return QString("\"%1\" needs an argument; --help shows which.").arg(command());
    if (count > rule->most)
        return QString("\"%1\" takes no argument \"%2\".").arg(command(), argument(rule->most));
    for (const QCommandLineOption &option : ownOptions()) {
        const QString name = option.names().constFirst();
        if (isSet(name) && !rule->options.contains(name))
            return QString("\"%1\" takes no option --%2.").arg(command(), name);
    }
    return {};
}

QString AdminOptions::command() const
{
    return m_options.parser().positionalArguments().value(0);
}

QString AdminOptions::argument(qsizetype index) const
{
    return m_options.parser().positionalArguments().value(index + 1);
}
