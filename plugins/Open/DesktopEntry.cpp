// SPDX-License-Identifier: MIT
#include "plugins/Open/DesktopEntry.h"

#include <QFile>
#include <QHash>

using namespace dozely;

namespace
{
constexpr qint64 largestFile = 256 << 10; // one that fills the memory

/// The keys of the group "Desktop Entry", not those in other languages.
QHash<QString, QString> keysOf(const QString &content)
{
    QHash<QString, QString> keys;
    bool isGroup = false;
    for (const QString &line : content.split('\n')) {
        if (line.startsWith('['))
            isGroup = line.trimmed() == "[Desktop Entry]";
        const qsizetype equals = line.indexOf('=');
        if (isGroup && equals > 0 && !line.startsWith('#'))
            keys.insert(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
    }
    return keys;
}

/// A value with its escapes (\\s, \\n, \\t, \\r, \\\\) resolved; others stay.
QString unescaped(const QString &value)
{
    static const QHash<QChar, QChar> meanings{
        {'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'}};
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == '\\' && i + 1 < value.size() && meanings.contains(value[i + 1]);
        text += isEscape ? meanings.value(value[++i]) : value[i];
    }
    return text;
}

/// A word without its codes: "%%" is a percent sign, the others stand for files, icons and names.
QString withoutCodes(const QString &word)
{
    QString text;
    for (qsizetype i = 0; i < word.size(); ++i) {
        if (word[i] != '%')
            text += word[i];
        else if (++i < word.size() && word[i] == '%')
            text += '%';
    }
    return text;
}
} // namespace

QStringList DesktopEntry::wordsOf(const QString &exec)
{
    QStringList words;
    QString word;
    bool isQuoted = false;
    bool isWord = false; // "" is one, too
    const auto finish = [&] {
        const QString plain = withoutCodes(word);
        if (isWord && (!plain.isEmpty() || word.isEmpty()))
            words += plain; // what was nothing but a code is left out
        word.clear();
        isWord = false;
    };
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const QChar character = exec[i];
        if (character == '"') {
            isQuoted = !isQuoted;
            isWord = true;
        } else if (!isQuoted && character == ' ') {
            finish();
        } else {
            const bool isEscape = isQuoted && character == '\\' && i + 1 < exec.size();
            word += isEscape ? exec[++i] : character;
            isWord = true;
        }
    }
    finish();
    return isQuoted ? QStringList() : words;
}

Result<DesktopEntry> DesktopEntry::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Error{QString("%1 cannot be read").arg(path)};
    const auto keys = keysOf(QString::fromUtf8(file.read(largestFile)));
    DesktopEntry entry;
    entry.command = wordsOf(unescaped(keys.value("Exec")));
    entry.folder = unescaped(keys.value("Path"));
    entry.needsTerminal = keys.value("Terminal") == "true";
    if (keys.value("Type") != "Application" || entry.command.isEmpty() || entry.command.first().isEmpty())
        return Error{QString("%1 describes no application").arg(path)};
    return entry;
}
