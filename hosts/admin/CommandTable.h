// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class AdminOptions;

/// What the tool can do: the one place that knows all commands. The command line, `--help` and what shells
/// complete come from it.
namespace CommandTable
{
struct Command {
    QString name;
    /// What `--help` shows behind the name, one form a line; "SCHEDULE", "[USER]", "daemon".
    QStringList arguments;
    const char *summary; ///< A sentence, to be translated.
    QString example;     ///< What may stand behind the tool's name.
    qsizetype fewest;    ///< How many arguments it needs at least, and takes at most.
    qsizetype most;
    QStringList options; ///< Names, without those that all commands take.
    void (*run)(const AdminOptions &options);
    bool isShown = true; ///< Otherwise `--help` says nothing of it: shells use it.
};

/// All of them, in the order in which they are shown.
const QList<Command> &all();

/// The one of that name; null when there is none.
const Command *find(const QString &name);
} // namespace CommandTable
