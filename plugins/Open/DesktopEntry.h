// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QString>
#include <QStringList>

/// An application as its desktop entry (".desktop") describes it, by the Desktop Entry Specification.
struct DesktopEntry {
    QStringList command; ///< The program, as it is to be looked for, and its arguments; never empty.
    QString folder;      ///< Where it is to work; empty for anywhere.
    bool needsTerminal = false;

    /// Reads a file, its first 256 KiB at most. An error, a clause, for one that describes no application
    /// that could be started. BLOCKING: for the disk.
    static dozely::Result<DesktopEntry> read(const QString &path);

    /// The words of a value of "Exec", without those that stand for files to be opened. None when its quotes
    /// do not match.
    static QStringList wordsOf(const QString &exec);
};
