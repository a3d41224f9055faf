// SPDX-License-Identifier: MIT
#include "hosts/admin/CompleteCommand.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/CommandTable.h"
#include "hosts/admin/OptionTable.h"
#include "hosts/admin/Output.h"
#include "hosts/common/schedules/ScheduleStore.h"

#include <QDir>
#include <QTimeZone>

#include <algorithm>

using namespace dozely;

namespace
{
using Candidate = CompleteCommand::Candidate;

QList<Candidate> words(const QStringList &texts)
{
    QList<Candidate> candidates;
    for (const QString &text : texts)
        candidates += Candidate{text, {}};
    return candidates;
}

/// The names of schedules, and the identifiers of those that share a name.
QList<Candidate> schedules()
{
    QList<Candidate> candidates;
    const auto content = ScheduleStore::read();
    if (!content)
        return candidates;
    QHash<QString, int> count;
    for (const Schedule &schedule : content->schedules)
        ++count[schedule.name];
    for (const Schedule &schedule : content->schedules) {
        if (count.value(schedule.name) == 1)
            candidates += Candidate{schedule.name, schedule.identifier};
        else
            candidates += Candidate{schedule.identifier, schedule.name};
    }
    return candidates;
}

QList<Candidate> bundles()
{
    QStringList names = QDir(RootFolder::join(FixedPath::plugIns)).entryList({"*.plugin"}, QDir::Dirs);
    for (QString &name : names)
        name.chop(static_cast<qsizetype>(qstrlen(".plugin")));
    return words(names);
}

QList<Candidate> zones()
{
    QStringList names{"machine"};
    for (const QByteArray &name : QTimeZone::availableTimeZoneIds())
        names += QString::fromLatin1(name);
    return words(names);
}

/// What an option, or an argument, of that name can be; none for what only the user knows, or the shell:
/// files.
QList<Candidate> valuesOf(const QString &option, const QString &valueName)
{
    static const QHash<QString, QStringList> fixed{
        {"every",
         {"day", "weekday", "week", "month", "year", "monday", "tuesday", "wednesday", "thursday", "friday",
          "saturday", "sunday", "15m", "1h"}},
        {"missed", {"skip", "run-once", "plug-in", "bundle"}},
        {"overlap", {"skip", "run"}},
        {"after", {"nothing", "sleep", "power-off"}},
        {"spread", {"10m", "30m", "1h"}},
        {"on", {"1", "15", "last"}}};
    if (fixed.contains(option))
        return words(fixed.value(option));
    if (valueName == "SCHEDULE")
        return schedules();
    if (valueName == "BUNDLE")
        return bundles();
    if (valueName == "ZONE")
        return zones();
    if (valueName == "DATE")
        return words({"today", "tomorrow", "now", "+5m"});
    return {};
}

bool takesValue(const QString &word)
{
    const auto *const option = OptionTable::find(word.mid(word.startsWith("--") ? 2 : 1));
    return word == "--root" || (word.startsWith('-') && option && !option->valueName.isEmpty());
}

QList<Candidate> commands()
{
    QList<Candidate> candidates;
    for (const CommandTable::Command &command : CommandTable::all()) {
        if (command.isShown)
            candidates += Candidate{command.name, AdminText::tr(command.summary)};
    }
    return candidates;
}

QList<Candidate> optionsOf(const CommandTable::Command *command)
{
    QList<Candidate> candidates;
    for (const OptionTable::Option &option : OptionTable::all()) {
        if (option.name == "host" || (command && command->options.contains(option.name)))
            candidates += Candidate{option.dashed(),
                                    OptionTable::meaningFor(option, command ? command->name : QString())};
    }
    return candidates + QList<Candidate>{{"--help", AdminText::tr("Show help and end.")},
                                         {"--root", AdminText::tr("Work below a folder.")}};
}

/// What may stand as the argument number `index` of a command.
QList<Candidate> argumentsOf(const CommandTable::Command &command, qsizetype index, const QString &before)
{
    QList<Candidate> candidates;
    for (const QString &form : command.arguments) {
        const QStringList names = form.split(' ', Qt::SkipEmptyParts);
        if (index >= names.size() ||
            (index > 0 && names.at(0).toLower() == names.at(0) && names.at(0) != before))
            continue;
        const QString name = QString(names.at(index)).remove('[').remove(']');
        candidates += name == name.toLower() ? words({name}) : valuesOf({}, name);
    }
    return candidates;
}
} // namespace

QList<Candidate> CompleteCommand::candidates(const QStringList &words)
{
    const QString last = words.isEmpty() ? QString() : words.constLast();
    const CommandTable::Command *command = nullptr;
    QStringList arguments;
    for (qsizetype i = 0; i + 1 < words.size(); ++i) {
        if (takesValue(words.at(i)) && i + 2 < words.size()) {
            if (words.at(i) == "--root" && RootFolder::refusal(words.at(i + 1)).isEmpty())
                RootFolder::set(words.at(i + 1));
            ++i;
        } else if (!words.at(i).startsWith('-') && !command) {
            command = CommandTable::find(words.at(i));
            if (!command)
                return {};
        } else if (!words.at(i).startsWith('-')) {
            arguments += words.at(i);
        }
    }
    const QString before = words.size() > 1 ? words.at(words.size() - 2) : QString();
    QList<Candidate> all;
    if (takesValue(before)) {
        const QString name = before.mid(before.startsWith("--") ? 2 : 1);
        const auto *const option = OptionTable::find(name);
        all = option ? valuesOf(name, option->valueName) : QList<Candidate>();
    } else if (last.startsWith('-')) {
        all = optionsOf(command);
    } else {
        all = command ? argumentsOf(*command, arguments.size(), arguments.value(0)) : commands();
    }
    all.removeIf([&](const Candidate &candidate) { return !candidate.text.startsWith(last); });
    return all;
}

void CompleteCommand::run(const AdminOptions &options)
{
    QStringList words;
    for (qsizetype i = 0; !options.argument(i).isNull(); ++i)
        words += options.argument(i);
    for (const Candidate &candidate : candidates(words)) {
        // A name with a control character would be more than one line; nobody can type it either.
        if (Output::escaped(candidate.text) == candidate.text)
            Output::line(candidate.text + '\t' + Output::escaped(candidate.meaning));
    }
}
