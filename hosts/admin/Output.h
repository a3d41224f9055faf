// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

/// What the tool prints. Texts from the store and the log come from elsewhere: what could steer a terminal is
/// shown escaped. BLOCKING: as the standard streams do.
namespace Output
{
/// `text` with control characters, line separators and marks of writing direction as \uXXXX.
QString escaped(const QString &text);

/// Prints a line to the standard output at once. Raises AdminError when that cannot be written.
void line(const QString &text);

/// Prints bytes to the standard output as they are. Raises AdminError as line does.
void raw(const QByteArray &bytes);

/// Prints rows in columns below their titles.
void table(const QStringList &titles, const QList<QStringList> &rows);

/// How something is.
enum class Mood { Good, Bad, Doubtful };

/// `text` in the colour for that, where the standard output is a terminal that has colours and nobody has
/// set NO_COLOR (https://no-color.org).
QString coloured(const QString &text, Mood mood);

/// Prints one JSON object on one line. Data becomes Base64 text, a date ISO 8601 text.
void json(const QVariantMap &object);

/// Prints a remark or a complaint to the standard error stream.
void remark(const QString &sentence);
} // namespace Output
