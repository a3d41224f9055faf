// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/LogLabel.h"

namespace dozely
{

namespace
{
bool breaksTheLine(QChar c)
{
    return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
           c.category() == QChar::Separator_Paragraph;
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

QString logLabel(const QString &text, qsizetype longest, LineBreaks breaks)
{
    QString label;
    for (const QChar c : QStringView(text).left(longest))
        label += breaksTheLine(c) ? standIn(c, breaks) : QString(c);
    if (text.size() <= longest)
        return label;
    if (!label.isEmpty() && label.back().isHighSurrogate())
        label.chop(1); // half a character
    return label + "...";
}

} // namespace dozely
