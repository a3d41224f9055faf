// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>

/// What became of an occurrence, in the person's language.
class OutcomeNames
{
    Q_DECLARE_TR_FUNCTIONS(OutcomeNames)
public:
    /// In a word or two, for a state of the record ("done", "not performed"); one that is not known stays.
    static QString of(const QString &state);

    /// "exit status 3".
    static QString ofExit(qint64 status);
};
