// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// What the tool tells a person, in the language of the locale: all its texts are in this one context. What
/// programs read (`--json`, what is exported, names of options and states) is never translated.
class AdminText
{
    Q_DECLARE_TR_FUNCTIONS(AdminText)
public:
    /// Chooses the language for a command line, once; with `--json` among the arguments it is English. Needs
    /// the application object.
    static void install(const QStringList &arguments);

    /// A state of the record for a person; in English the word that the record has.
    static QString state(const QString &state);

    /// Why something failed, a clause to be put into a sentence.
    static QString reason(const dozely::Error &error);
    static QString reason(const QString &text) { return reason(dozely::Error{text}); }

    /// The sentence of an error that the daemon answers with.
    static QString answer(const dozely::Error &error);

    /// A clause with the full stop of the language.
    static QString sentence(const QString &clause);

    /// The text with a capital letter.
    static QString begun(const QString &text);

private:
    static bool isEnglish;
};
