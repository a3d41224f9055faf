// SPDX-License-Identifier: MIT
#include "hosts/common/LogLabel.h"

QString logLabel(const QString &text)
{
    constexpr int longest = 200;
    QString label = text.left(longest);
    for (QChar &c : label) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
            c.category() == QChar::Separator_Paragraph)
            c = ' ';
    }
    return text.size() > longest ? label + "..." : label;
}
