// SPDX-License-Identifier: MIT
#include "hosts/admin/AdminHelp.h"

namespace
{
const char *const text =
    R"(Shows and changes the schedules, asks whether the system's processes are alive, shows the log.

Commands:
  list                           Show all schedules, and what became of those that are over.
  add NAME ...                   Add a schedule: what is to be done (--bundle or --program)
                                 and when (--date or --in; --every or --rule, with --at).
  change SCHEDULE ...            Change what the options name, as for "add"; the rest stays.
  remove SCHEDULE                Remove a schedule.
  clean                          Remove the schedules that are over, but for those that stay.
  enable SCHEDULE                Let a schedule come due.
  disable SCHEDULE               Keep a schedule, but never let it come due.
  next [SCHEDULE]                Show what comes, and what wakes the machine.
  history [SCHEDULE]             Show what became of it, newest first.
  skip SCHEDULE                  Leave out the next time, or that at --date.
  postpone SCHEDULE SECONDS      Perform it so much later (90, 10m, 1h): the next time, or that at
                                 --date.
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
} // namespace

QString AdminHelp::description()
{
    return text;
}

QList<QCommandLineOption> AdminHelp::options()
{
    return {
        {"json", "Answer in JSON, one object on a line."},
        {"bundle", "add: the plug-in bundle, a path or the name of an installed one.", "BUNDLE"},
        {"program", "add: run this program (an absolute path), with the bundle \"Command\".", "PROGRAM"},
        {"argument", "add: an argument of the program; repeat it for more.", "TEXT"},
        {"date",
         "add, change: when it takes place once, as \"2026-03-14 06:55\", or with seconds. output, skip, "
         "postpone: of which time, the latest, or the next, without it.",
         "DATE"},
        {"time-zone",
         "The time zone of what is told, as \"Europe/Berlin\". add, change: the machine's without it, and "
         "what "
         "repeats goes with it wherever that goes; \"machine\" is that again. output, skip, postpone: the "
         "schedule's without it.",
         "ZONE"},
        {"in", "add: when, so many seconds from now.", "SECONDS"},
        {"every",
         "add: how often: day, weekday, week, month, year, days such as monday,thursday, or a distance such "
         "as 15m or 2h.",
         "TERM"},
        {"at", "add: at what time of those days, as 22:00; repeat it for more.", "TIME"},
        {"on", "add: on which days of every month, as 1,15,last.", "DAYS"},
        {"rule", "add: how often, as a rule of RFC 5545: FREQ=WEEKLY;BYDAY=MO.", "RRULE"},
        {"from", "add: repeat it from then on, now without it.", "DATE"},
        {"until", "add: repeat it up to then, that day included.", "DATE"},
        {"count", "add: repeat it so many times.", "N"},
        {"except", "add: not on that day, or at that date; repeat it for more.", "DATE"},
        {"no-except", "change: no exception on that day, or at that date; repeat it for more.", "DATE"},
        {"endless", "change: repeat it without an end."},
        {"once", "change: repeat it no more: the next time is the last one, or --date is."},
        {"missed",
         "add: what becomes of it when its time passed while the machine was off or asleep: skip, run-once "
         "(of "
         "all that were missed the latest), run-once=LIMIT (no older than 90, 10m, 6h, 2d), or plug-in. "
         "bundle: "
         "what the bundle says, as without it.",
         "POLICY"},
        {"overlap", "add: whether it is performed while the time before still goes on: skip or run.",
         "POLICY"},
        {"after",
         "add: what the machine does afterwards when it was woken or switched on for it and nobody uses it: "
         "nothing, sleep or power-off.",
         "ACTION"},
        {"name", "change: another name.", "NAME"},
        {"parameter",
         "add: a parameter of the action (event: of the event, KEY is four characters); repeat it for more. "
         "\"true\", \"false\" and numbers are taken as "
         "such; "
         "KEY:string=VALUE, :integer=, :real= and :boolean= name the type.",
         "KEY=VALUE"},
        {"parameters", "add, event: parameters from a property list.", "FILE"},
        {"no-parameter", "change: without that parameter; repeat it for more.", "KEY"},
        {"alert", "add: alert the user so many seconds before, with a button to cancel.", "SECONDS"},
        {"no-alert", "change: without the alert."},
        {"in-daemon", "add: act in the daemon."},
        {"in-session", "add: act in the user's session."},
        {"in-default", "change: act where the bundle says."},
        {"wake", "add: wake the machine for it, a minute ahead."},
        {"no-wake", "change: do not wake the machine for it."},
        {"power-on", "add: switch the machine on for it, three minutes ahead."},
        {"no-power-on", "change: do not switch the machine on for it."},
        {"tell-failure", "add: tell the user at the console when it fails or is not performed."},
        {"no-tell-failure", "change: do not tell the user of failures."},
        {"disabled", "add: the schedule is not to come due before it is enabled."},
        {"enabled", "change: let it come due."},
        {"anyway", "add: also what nothing could come of."},
        {"stays", "add: the schedule is not removed when it is over, but by \"remove\"."},
        {"no-stays", "change: the schedule is removed some time after it is over."},
        {"owner", "add: whose schedule it is; yours without it.", "USER"},
        {"n", "next, history: how many to show.", "N"},
        {"lines", "log: how many lines to show first, 20 without it.", "N"},
        {"follow", "log: go on showing lines as they come."},
        {"user", "event: whose process is to have it; yours without it.", "USER"},
        {"timeout", "event: how long to wait for the reply, 60 without it.", "SECONDS"},
        {"no-reply", "event: do not wait for a reply."},
    };
}
