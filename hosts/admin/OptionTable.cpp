// SPDX-License-Identifier: MIT
#include "hosts/admin/OptionTable.h"

#include "hosts/admin/AdminText.h"

#include <algorithm>

namespace
{
const QString none; // no value

bool isFor(const OptionTable::Meaning &meaning, const QString &command)
{
    return meaning.commands.isEmpty() || meaning.commands.contains(command);
}
} // namespace

const QList<OptionTable::Option> &OptionTable::all()
{
    static const QList<Option> options{
        {"json", none, {{{}, QT_TRANSLATE_NOOP("AdminText", "answer in JSON, one object on a line.")}}},
        {"bundle",
         "BUNDLE",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText", "the plug-in bundle, a path or the name of an installed one.")}}},
        {"program",
         "PROGRAM",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText",
                             "run this program (an absolute path), with the bundle \"Command\".")}}},
        {"argument",
         "TEXT",
         {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "an argument of the program; repeat it for more.")}}},
        {"date",
         "DATE",
         {{{"add", "change"},
           QT_TRANSLATE_NOOP("AdminText",
                             "when it takes place once, as \"2026-03-14 06:55\" or \"tomorrow 7:00\".")},
          {{"output"}, QT_TRANSLATE_NOOP("AdminText", "of which time; the latest without it.")},
          {{"skip", "postpone"}, QT_TRANSLATE_NOOP("AdminText", "of which time; the next without it.")}}},
        {"time-zone",
         "ZONE",
         {{{"add", "change"},
           QT_TRANSLATE_NOOP("AdminText",
                             "the time zone of what is told, as \"Europe/Berlin\"; the machine's without it, "
                             "and what repeats goes with it wherever that goes. \"machine\" is that again.")},
          {{"output", "skip", "postpone"},
           QT_TRANSLATE_NOOP("AdminText",
                             "the time zone of --date, as \"Europe/Berlin\"; the schedule's without it.")}}},
        {"in",
         "SECONDS",
         {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "when, so many seconds from now (90, 5m, 1h).")}}},
        {"every",
         "TERM",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText", "how often: day, weekday, week, month, year, days such as "
                                          "monday,thursday, or a distance such as 15m or 2h.")}}},
        {"at",
         "TIME",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText", "at what time of those days, as 22:00; repeat it for more.")}}},
        {"on",
         "DAYS",
         {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "on which days of every month, as 1,15,last.")}}},
        {"rule",
         "RRULE",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText", "how often, as a rule of RFC 5545: FREQ=WEEKLY;BYDAY=MO.")}}},
        {"from",
         "DATE",
         {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "repeat it from then on, now without it.")}}},
        {"until",
         "DATE",
         {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "repeat it up to then, that day included.")},
          {{"next"}, QT_TRANSLATE_NOOP("AdminText", "show what comes up to then, that day included.")}}},
        {"count", "N", {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "repeat it so many times.")}}},
        {"except",
         "DATE",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText", "not on that day, or at that date; repeat it for more.")}}},
        {"no-except",
         "DATE",
         {{{"change"},
           QT_TRANSLATE_NOOP("AdminText",
                             "no exception on that day, or at that date; repeat it for more.")}}},
        {"endless", none, {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "repeat it without an end.")}}},
        {"once",
         none,
         {{{"change"},
           QT_TRANSLATE_NOOP("AdminText",
                             "repeat it no more: the next time is the last one, or --date is.")}}},
        {"missed",
         "POLICY",
         {{{"add"},
           QT_TRANSLATE_NOOP(
               "AdminText",
               "what becomes of it when its time passed while the machine was off or asleep: skip, run-once "
               "(of all that were missed the latest), run-once=LIMIT (no older than 90, 10m, 6h, 2d), or "
               "plug-in. bundle: what the bundle says, as without it.")}}},
        {"overlap",
         "POLICY",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText",
                             "whether it is performed while the time before still goes on: skip or run.")}}},
        {"after",
         "ACTION",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText", "what the machine does afterwards when it was woken or switched on "
                                          "for it and nobody uses it: nothing, sleep or power-off.")}}},
        {"name", "NAME", {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "another name.")}}},
        {"parameter",
         "KEY=VALUE",
         {{{"add"},
           QT_TRANSLATE_NOOP(
               "AdminText",
               "a parameter of the action; repeat it for more. \"true\", \"false\" and numbers are taken as "
               "such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.")},
          {{"event"},
           QT_TRANSLATE_NOOP("AdminText",
                             "a parameter of the event, whose KEY is four characters; repeat it for more. "
                             "\"true\", \"false\" and numbers are taken as such; KEY:string=VALUE, "
                             ":integer=, :real= and :boolean= name the type.")}}},
        {"parameters",
         "FILE",
         {{{"add", "event"}, QT_TRANSLATE_NOOP("AdminText", "parameters from a property list.")}}},
        {"no-parameter",
         "KEY",
         {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "without that parameter; repeat it for more.")}}},
        {"alert",
         "SECONDS",
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText",
                             "alert the user so many seconds before, with a button to cancel.")}}},
        {"no-alert", none, {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "without the alert.")}}},
        {"in-daemon", none, {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "act in the daemon.")}}},
        {"in-session", none, {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "act in the user's session.")}}},
        {"in-default", none, {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "act where the bundle says.")}}},
        {"wake",
         none,
         {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "wake the machine for it, a minute ahead.")}}},
        {"no-wake", none, {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "do not wake the machine for it.")}}},
        {"power-on",
         none,
         {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "switch the machine on for it, three minutes ahead.")}}},
        {"no-power-on",
         none,
         {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "do not switch the machine on for it.")}}},
        {"tell-failure",
         none,
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText",
                             "tell the user at the console when it fails or is not performed.")}}},
        {"no-tell-failure",
         none,
         {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "do not tell the user of failures.")}}},
        {"disabled",
         none,
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText", "the schedule is not to come due before it is enabled.")}}},
        {"enabled", none, {{{"change"}, QT_TRANSLATE_NOOP("AdminText", "let it come due.")}}},
        {"anyway",
         none,
         {{{"add", "apply"}, QT_TRANSLATE_NOOP("AdminText", "also what nothing could come of.")}}},
        {"stays",
         none,
         {{{"add"},
           QT_TRANSLATE_NOOP("AdminText",
                             "the schedule is not removed when it is over, but by \"remove\".")}}},
        {"no-stays",
         none,
         {{{"change"},
           QT_TRANSLATE_NOOP("AdminText", "the schedule is removed some time after it is over.")}}},
        {"owner",
         "USER",
         {{{"add"}, QT_TRANSLATE_NOOP("AdminText", "whose schedule it is; yours without it.")}}},
        {"n",
         "N",
         {{{"next"}, QT_TRANSLATE_NOOP("AdminText", "how many to show, 10 without it.")},
          {{"history"}, QT_TRANSLATE_NOOP("AdminText", "how many to show, 20 without it.")}}},
        {"lines",
         "N",
         {{{"log"}, QT_TRANSLATE_NOOP("AdminText", "how many lines to show first, 20 without it.")}}},
        {"follow", none, {{{"log"}, QT_TRANSLATE_NOOP("AdminText", "go on showing lines as they come.")}}},
        {"user",
         "USER",
         {{{"event"}, QT_TRANSLATE_NOOP("AdminText", "whose process is to have it; yours without it.")}}},
        {"timeout",
         "SECONDS",
         {{{"event"}, QT_TRANSLATE_NOOP("AdminText", "how long to wait for the reply, 60 without it.")}}},
        {"no-reply", none, {{{"event"}, QT_TRANSLATE_NOOP("AdminText", "do not wait for a reply.")}}},
        {"ics", none, {{{"export"}, QT_TRANSLATE_NOOP("AdminText", "as a calendar (iCalendar, RFC 5545).")}}},
        {"dry-run",
         none,
         {{{"apply"}, QT_TRANSLATE_NOOP("AdminText", "change nothing, and say what would be changed.")}}},
        {"spread",
         "DURATION",
         {{{"add", "apply"},
           QT_TRANSLATE_NOOP("AdminText", "begin later by a time of up to so much (30m, 1h), which is "
                                          "another one on every machine and always the same on this one.")}}},
        {"host",
         "USER@MACHINE",
         {{{}, QT_TRANSLATE_NOOP("AdminText", "run the command on that machine, over ssh.")}}},
    };
    return options;
}

const OptionTable::Option *OptionTable::find(const QString &name)
{
    const auto found =
        std::find_if(all().cbegin(), all().cend(), [&](const Option &option) { return option.name == name; });
    return found == all().cend() ? nullptr : &*found;
}

QString OptionTable::meaningFor(const Option &option, const QString &command)
{
    for (const QString &asked : {command, QString("add")}) {
        for (const Meaning &meaning : option.meanings) {
            if (isFor(meaning, asked))
                return AdminText::begun(AdminText::tr(meaning.text));
        }
    }
    return {};
}

QString OptionTable::meaningForAll(const Option &option)
{
    QStringList texts;
    for (const Meaning &meaning : option.meanings) {
        const QString text = AdminText::tr(meaning.text);
        texts += meaning.commands.isEmpty() ? AdminText::begun(text)
                                            : QString("%1: %2").arg(meaning.commands.join(", "), text);
    }
    return texts.join(' ');
}

QList<QCommandLineOption> OptionTable::forParser()
{
    QList<QCommandLineOption> options;
    for (const Option &option : all())
        options += QCommandLineOption(option.name, {}, option.valueName);
    return options;
}
