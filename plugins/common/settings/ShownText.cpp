// SPDX-License-Identifier: MIT
#include "plugins/common/settings/ShownText.h"

#include <QList>

#include <algorithm>

namespace
{
constexpr qsizetype longestField = 32767; // characters that a QLineEdit holds
constexpr qsizetype longestEscaped = 1000;
constexpr char32_t ideographicSpace = 0x3000;

/// The text's characters; halves of characters stand for themselves.
QList<char32_t> charactersOf(const QString &text)
{
    QList<char32_t> characters;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        if (unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            characters += QChar::surrogateToUcs4(unit, text.at(++i));
        else
            characters += unit.unicode();
    }
    return characters;
}

bool isSeen(char32_t character)
{
    if (character == ' ' || character == ideographicSpace)
        return true;
    return QChar::isPrint(character) && !QChar::isSpace(character) && !QChar::isNonCharacter(character);
}

QString escape(char32_t character)
{
    switch (character) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    case '\\':
        return "\\\\";
    default:
        return character > 0xFFFF ? QString("\\U%1").arg(uint(character), 8, 16, QChar('0'))
                                  : QString("\\u%1").arg(uint(character), 4, 16, QChar('0'));
    }
}
} // namespace

bool ShownText::canBeShown(const QString &text)
{
    return text.size() <= longestField && std::ranges::all_of(charactersOf(text), isSeen);
}

QString ShownText::escaped(const QString &text)
{
    QString shown;
    for (const char32_t character : charactersOf(text)) {
        if (shown.size() > longestEscaped)
            return shown + QChar(0x2026);
        if (isSeen(character) && character != '\\')
            shown += QChar::fromUcs4(character);
        else
            shown += escape(character);
    }
    return shown;
}
