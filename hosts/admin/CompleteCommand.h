// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class AdminOptions;

/// The command that shells ask how a word may go on (share/bash-completion and so on): "complete -- WORD...",
/// the last of which is the one at the cursor. It never fails: where nothing is known it prints nothing, and
/// the shell offers files. BLOCKING: for the disk.
namespace CompleteCommand
{
void run(const AdminOptions &options);

struct Candidate {
    QString text;
    QString meaning; ///< What zsh and fish show beside it.
};

/// What the last of the words, which may be empty, can become.
QList<Candidate> candidates(const QStringList &words);
} // namespace CompleteCommand
