// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// What a process of its own does with configuration sides before a window loads them: all that the window
/// will do, so that what hangs or crashes does so here.
namespace PlugInTrial
{
/// The option with which the program of the window becomes such a process: "--try BUNDLE...".
inline constexpr QLatin1StringView option("try");

/// Tries the bundles one after the other and prints a line before each and one after: trialLine. 0.
int run(const QStringList &paths);

/// A line of that process: its mark, a word ("begin", "ready" or "failed"), the path, a sentence.
/// @{
inline constexpr QLatin1StringView mark("dozely-trial");
QString line(const QString &word, const QString &path, const QString &sentence = {});
QStringList partsOf(const QString &line); ///< Word, path, sentence; empty for a line of somebody else.
/// @}
} // namespace PlugInTrial
