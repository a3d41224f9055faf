// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>
#include <QStringList>

/// The options of all commands, and what they mean. THREADING: any thread, after the language is chosen.
namespace OptionTable
{
struct Meaning {
    QStringList commands; ///< For which it means that; none for all. What "add" has, "change" has too.
    const char *text;     ///< Begins with a small letter; to be translated.
};

struct Option {
    QString name;
    QString valueName; ///< "DATE"; empty for one without a value.
    QList<Meaning> meanings;

    /// "--date", "-n".
    QString dashed() const { return (name.size() == 1 ? "-" : "--") + name; }
};

/// Without those that every program of the system has.
const QList<Option> &all();

/// The one of that name; null when there is none.
const Option *find(const QString &name);

/// What it means to one command, in the person's language: a sentence.
QString meaningFor(const Option &option, const QString &command);

/// What it means to whichever command, with their names.
QString meaningForAll(const Option &option);

/// For the parser of the command line.
QList<QCommandLineOption> forParser();
} // namespace OptionTable
