// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/LogLabel.h"

#include <algorithm>

namespace dozely
{

namespace
{
// Control characters, and the separators of lines and of paragraphs; by number, since every log line is
// looked at.
bool breaksTheLine(QChar c)
{
    const char16_t code = c.unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0x2028 || code == 0x2029;
}

QString standIn(QChar c, LineBreaks breaks)
{
    switch (breaks) {
    case LineBreaks::QuestionMarks:
        return "?";
    case LineBreaks::Escapes:
        return QString("\\u%1").arg(c.unicode(), 4, 16, QChar('0'));
    case LineBreaks::Blanks:
        break;
    }
    return " ";
}
} // namespace

bool isOneLine(QStringView text)
{
    return std::none_of(text.begin(), text.end(), breaksTheLine);
}

QString logLabel(const QString &text, qsizetype longest, LineBreaks breaks)
{
    QString label = text.isNull() ? QString() : QString(""); // of none there is none
    for (const QChar c : QStringView(text).left(longest))
        label += breaksTheLine(c) ? standIn(c, breaks) : QString(c);
    if (text.size() <= longest)
        return label;
    if (!label.isEmpty() && label.back().isHighSurrogate())
        label.chop(1); // half a character
    return label + "...";
}

} // namespace dozely
