// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What a line of text on a screen can say of a text that somebody gave.
namespace ShownText
{
/// Whether a field of one line shows the text so that each of its characters can be seen for what it is, and
/// gives it back unchanged. False with control characters, line and paragraph ends, blanks that look like
/// others, invisible and unassigned characters, halves of characters, and texts longer than such a field
/// holds.
bool canBeShown(const QString &text);

/// The text with all that cannot be seen written as an escape (\n, \u00a0), a backslash as two; shortened
/// when it is very long. To be read, not to be taken back.
QString escaped(const QString &text);
} // namespace ShownText
