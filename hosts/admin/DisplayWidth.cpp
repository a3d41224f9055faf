// SPDX-License-Identifier: MIT
#include "hosts/admin/DisplayWidth.h"

#include <QChar>

#include <algorithm>
#include <string>
#include <string_view>

namespace
{
/// East_Asian_Width=W and F (Unicode, annex 11), without what is not assigned between them.
constexpr struct {
    char32_t first;
    char32_t last;
} wide[] = {{0x1100, 0x115f},   {0x2e80, 0x303e},  {0x3041, 0x33ff},   {0x3400, 0x4dbf},   {0x4e00, 0x9fff},
            {0xa000, 0xa4cf},   {0xa960, 0xa97f},  {0xac00, 0xd7a3},   {0xf900, 0xfaff},   {0xfe30, 0xfe6f},
            {0xff00, 0xff60},   {0xffe0, 0xffe6},  {0x1f300, 0x1f64f}, {0x1f680, 0x1f6ff}, {0x1f900, 0x1f9ff},
            {0x20000, 0x2fffd}, {0x30000, 0x3fffd}};

int columnsOf(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return 0;
    default:
        return std::any_of(std::begin(wide), std::end(wide),
                           [&](const auto &range) { return range.first <= c && c <= range.last; })
                   ? 2
                   : 1;
    }
}

/// What does not begin a line in Japanese, and what does not end one.
constexpr std::u32string_view closing = U"、。，．・：；？！）」』】〕ーぁぃぅぇぉっゃゅょァィゥェォッャュョ";
constexpr std::u32string_view opening = U"（「『【〔";

bool isIn(std::u32string_view set, char32_t c)
{
    return set.find(c) != std::u32string_view::npos;
}

/// Whether a line may end between the two characters.
bool isBreak(char32_t before, char32_t after)
{
    if (before == U' ')
        return after != U' ';
    if (after == U' ' || (columnsOf(before) < 2 && columnsOf(after) < 2))
        return false;
    return !isIn(closing, after) && !isIn(opening, before);
}

qsizetype columnsOf(std::u32string_view text)
{
    qsizetype columns = 0;
    for (const char32_t c : text)
        columns += columnsOf(c);
    return columns;
}

/// Without the blanks at its end.
std::u32string_view trimmed(std::u32string_view line)
{
    return line.substr(0, line.find_last_not_of(U' ') + 1);
}
} // namespace

qsizetype DisplayWidth::of(const QString &text)
{
    return columnsOf(std::u32string_view(text.toStdU32String()));
}

qsizetype DisplayWidth::widest(const QStringList &texts)
{
    qsizetype columns = 0;
    for (const QString &text : texts)
        columns = std::max(columns, of(text));
    return columns;
}

QString DisplayWidth::padded(const QString &text, qsizetype width)
{
    return text + QString(std::max<qsizetype>(0, width - of(text)), ' ');
}

QStringList DisplayWidth::lines(const QString &text, qsizetype width)
{
    const std::u32string all = text.toStdU32String();
    QStringList lines;
    const auto add = [&](size_t begin, size_t end) {
        const auto line = trimmed(std::u32string_view(all).substr(begin, end - begin));
        lines += QString::fromUcs4(line.data(), static_cast<qsizetype>(line.size()));
    };
    size_t begin = 0;     // of the line
    size_t piece = 0;     // of what must not be broken
    qsizetype before = 0; // columns of the line up to that
    for (size_t end = 1; end <= all.size(); ++end) {
        if (end < all.size() && !isBreak(all[end - 1], all[end]))
            continue;
        const auto taken = std::u32string_view(all).substr(piece, end - piece);
        if (piece > begin && before + columnsOf(trimmed(taken)) > width) {
            add(begin, piece);
            begin = piece;
            before = 0;
        }
        before += columnsOf(taken);
        piece = end;
    }
    add(begin, all.size());
    return lines;
}
