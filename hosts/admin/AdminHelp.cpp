// SPDX-License-Identifier: MIT
#include "hosts/admin/AdminHelp.h"

#include <QRegularExpression>
#include <QStringList>

namespace
{
constexpr qsizetype width = 98;  // columns
constexpr qsizetype column = 33; // where what a command does begins

const char *const ending =
    R"(SCHEDULE is an identifier, or a name that only one schedule has. USER is a name or a number.
DATE is what people write: "06:55", "tomorrow 7:00", "fri 22:00", "22.12. 6:30", "2026-03-14 06:55", +5m.
"COMMAND --help" shows the options of a command alone.

Exit status: 0 done (ping, status: it is alive; doctor: nothing is wrong; apply: nothing differed);
1 it could not be done (not found, not reachable, damaged; doctor: something is wrong);
2 the command line is wrong; 3 not permitted.
apply: 4 schedules were changed, or would be.
update check: 0 up to date; 4 there is a newer version; 5 no answer.)";

/// `text` in lines of at most `width` columns, each from `indent` on.
QString wrapped(const QString &text, qsizetype indent)
{
    QStringList lines{QString()};
    for (const QString &word : text.split(' ')) {
        if (!lines.last().isEmpty() && indent + lines.last().size() + 1 + word.size() > width)
            lines += QString();
        lines.last() += lines.last().isEmpty() ? word : " " + word;
    }
    return lines.join('\n' + QString(indent, ' '));
}

QString row(const QString &title, const QString &text)
{
    const QString begin = "  " + title;
    const QString gap =
        begin.size() + 1 < column ? QString(column - begin.size(), ' ') : '\n' + QString(column, ' ');
    return begin + gap + wrapped(text, column) + '\n';
}

QString form(const CommandTable::Command &command, const QString &arguments)
{
    const bool hasOptions = command.options.contains("bundle");
    return QString("%1 %2%3").arg(command.name, arguments, hasOptions ? " ..." : "").trimmed();
}

/// What an option means, without the names of the commands that take it.
QString meaning(const QCommandLineOption &option)
{
    static const QRegularExpression commands(R"(\A[a-z]+(?:, [a-z]+)*: )");
    QString text = option.description();
    if (text.indexOf(commands) == 0)
        text.remove(commands);
    return text.left(1).toUpper() + text.mid(1);
}
} // namespace

QString AdminHelp::description()
{
    QString text =
        "Shows and changes the schedules, asks whether the system's processes are alive, shows the log."
        "\n\nCommands:\n";
    for (const CommandTable::Command &command : CommandTable::all()) {
        if (!command.isShown)
            continue;
        for (const QString &arguments : command.arguments.mid(0, command.arguments.size() - 1))
            text += "  " + form(command, arguments) + '\n';
        text += row(form(command, command.arguments.constLast()), command.summary);
    }
    return text + ending;
}

QString AdminHelp::of(const CommandTable::Command &command)
{
    QString text;
    for (const QString &arguments : command.arguments)
        text += QString("%1 dozely-admin %2\n")
                    .arg(text.isEmpty() ? "Usage:" : "      ", form(command, arguments));
    text += '\n' + wrapped(command.summary, 0) + "\n\nOptions:\n";
    for (const QCommandLineOption &option : options()) {
        const QString name = option.names().constFirst();
        if (!command.options.contains(name))
            continue;
        const QString value = option.valueName().isEmpty() ? QString() : " " + option.valueName();
        text += row((name.size() == 1 ? "-" : "--") + name + value, meaning(option));
    }
    return text + row("--host USER@MACHINE", "Run the command on that machine, over ssh.") +
           row("--root DIR", "Work on the system below that folder instead of /.") +
           row("-h, --help", "Show this help and end.");
}

QList<QCommandLineOption> AdminHelp::options()
{
    return {
        {"json", "Answer in JSON, one object on a line."},
        {"bundle", "add: the plug-in bundle, a path or the name of an installed one.", "BUNDLE"},
        {"program", "add: run this program (an absolute path), with the bundle \"Command\".", "PROGRAM"},
        {"argument", "add: an argument of the program; repeat it for more.", "TEXT"},
        {"date",
         "add, change: when it takes place once, as \"2026-03-14 06:55\" or \"tomorrow 7:00\". output, skip, "
         "postpone: of which time, the latest, or the next, without it.",
         "DATE"},
        {"time-zone",
         "The time zone of what is told, as \"Europe/Berlin\". add, change: the machine's without it, and "
         "what "
         "repeats goes with it wherever that goes; \"machine\" is that again. output, skip, postpone: the "
         "schedule's without it.",
         "ZONE"},
        {"in", "add: when, so many seconds from now (90, 5m, 1h).", "SECONDS"},
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
        {"ics", "export: as a calendar (iCalendar, RFC 5545)."},
        {"dry-run", "apply: change nothing, and say what would be changed."},
        {"spread",
         "add, apply: begin later by a time of up to so much (30m, 1h), which is another one on every "
         "machine and always the same on this one.",
         "DURATION"},
        {"host", "Run the command on that machine, over ssh.", "USER@MACHINE"},
    };
}
