// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

#include <limits>

namespace dozely
{

/// What stands for a character that would end the line or steer a terminal: a control character, or a
/// separator of lines or paragraphs.
enum class LineBreaks {
    Blanks,
    QuestionMarks,
    Escapes, ///< "\u000a": shows what was there.
};

/// Whether the text holds no character that would end the line or steer a terminal. Any thread.
bool isOneLine(QStringView text);

/// No limit to the length of a label.
constexpr qsizetype wholeText = std::numeric_limits<qsizetype>::max();

/// A text that comes from elsewhere, fit to stand within one log line: what would break the line is
/// replaced; what goes beyond `longest` characters is cut off, and "..." says so. Any thread.
DOZELYKIT_EXPORT QString logLabel(const QString &text, qsizetype longest = 200,
                                  LineBreaks breaks = LineBreaks::Blanks);

} // namespace dozely
