// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// How much room texts take on a terminal, whatever its locale: most characters a column, those of East Asia
/// two, marks above others none.
namespace DisplayWidth
{
/// In columns.
qsizetype of(const QString &text);

/// That of the widest text.
qsizetype widest(const QStringList &texts);

/// `text` with blanks behind it that make it `width` columns wide.
QString padded(const QString &text, qsizetype width);

/// `text` in lines of at most `width` columns, broken at blanks, and between characters of East Asia. A word
/// that is wider has a line of its own.
QStringList lines(const QString &text, qsizetype width);
} // namespace DisplayWidth
