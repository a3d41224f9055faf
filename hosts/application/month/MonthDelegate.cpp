// SPDX-License-Identifier: MIT
#include "hosts/application/month/MonthDelegate.h"

#include "hosts/application/month/MonthModel.h"
#include "hosts/application/when/DateInWords.h"

#include <QPainter>

#include <algorithm>

namespace
{
constexpr int margin = 4;

QPalette::ColorGroup groupOf(const QStyleOptionViewItem &option)
{
    return option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

/// A colour on its way to another.
QColor between(const QColor &from, const QColor &to, double part)
{
    const auto mixed = [part](int a, int b) { return static_cast<int>(a + (b - a) * part); };
    return {mixed(from.red(), to.red()), mixed(from.green(), to.green()), mixed(from.blue(), to.blue())};
}
} // namespace

MonthDelegate::MonthDelegate(const MonthModel &model, QObject *parent)
    : QStyledItemDelegate(parent), m_model(model)
{
}

MonthDelegate::Lines MonthDelegate::linesIn(const QRect &cell, const QFontMetrics &metrics,
                                            qsizetype count) const
{
    const int height = metrics.height();
    const QRect inside = cell.adjusted(margin, margin, -margin, -margin / 2);
    const int room = std::max(0, (inside.height() - height - margin) / height);
    const bool hasMore = count > room;
    const QRect first(inside.left(), inside.top() + height + margin, inside.width(), height);
    return {first, hasMore ? std::max(0, room - 1) : static_cast<int>(count), hasMore};
}

MonthDelegate::Hit MonthDelegate::hitAt(const QPoint &point, const QRect &cell, const QFontMetrics &metrics,
                                        const QModelIndex &index) const
{
    const QList<MonthOccurrence> occurrences = m_model.occurrencesOn(m_model.dayAt(index));
    const Lines lines = linesIn(cell, metrics, occurrences.size());
    const int below = point.y() - lines.first.top();
    if (below < 0)
        return {};
    const int line = below / lines.first.height();
    if (line < lines.shown)
        return {occurrences.at(line), false};
    return {{}, lines.hasMore};
}

void MonthDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    const QDate day = m_model.dayAt(index);
    const QPalette::ColorGroup group = groupOf(option);
    const bool isSelected = option.state & QStyle::State_Selected;
    const bool isOfMonth = day.month() == m_model.firstOfMonth().month();
    const QColor highlight = option.palette.color(group, QPalette::Highlight);
    const QColor paper = option.palette.color(group, isOfMonth ? QPalette::Base : QPalette::AlternateBase);
    const QColor ground = isSelected ? between(paper, highlight, 0.2) : paper;
    const QColor text = option.palette.color(group, QPalette::Text);
    const QColor quiet = between(text, ground, 0.4);
    painter->save();
    painter->fillRect(option.rect, ground);
    painter->setPen(isOfMonth ? text : quiet);
    paintNumber(painter, option, day);

    const QList<MonthOccurrence> occurrences = m_model.occurrencesOn(day);
    const Lines lines = linesIn(option.rect, option.fontMetrics, occurrences.size());
    const int alignment = static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignLeft)) |
                          Qt::AlignVCenter | Qt::TextSingleLine;
    QRect line = lines.first;
    for (int i = 0; i < lines.shown; ++i, line.translate(0, line.height())) {
        const MonthOccurrence &occurrence = occurrences.at(i);
        QFont font = option.font;
        font.setStrikeOut(occurrence.wasSkipped);
        painter->setFont(font);
        painter->setPen(occurrence.wasSkipped || !isOfMonth ? quiet : text);
        const QString words = m_model.lineOf(occurrence, line.width(), option.fontMetrics);
        painter->drawText(line, alignment,
                          option.fontMetrics.elidedText(words, Qt::ElideRight, line.width()));
        if (occurrence.isPostponed) { // slanted letters are not there in every script
            const QRect edge(0, 0, margin / 2, line.height() - 2);
            const QRect beside = option.rect.adjusted(1, 0, -1, 0);
            QRect bar = QStyle::alignedRect(option.direction, Qt::AlignLeft, edge.size(), beside);
            bar.moveTop(line.top() + 1);
            painter->fillRect(bar, highlight);
        }
    }
    if (lines.hasMore) {
        painter->setFont(option.font);
        painter->setPen(isOfMonth ? text : quiet);
        const QString left = m_model.locale().toString(occurrences.size() - lines.shown);
        const QString words = lines.shown == 0 ? tr("%1 in all", "occurrences of a day").arg(left)
                                               : tr("+%1 more", "occurrences of a day").arg(left);
        const bool hasRoom = option.fontMetrics.horizontalAdvance(words) <= line.width();
        painter->drawText(line, alignment, hasRoom ? words : "+" + left);
    }
    if (isSelected) {
        const bool hasFocus = option.state & QStyle::State_HasFocus;
        painter->setPen(QPen(highlight, hasFocus ? 2 : 1));
        painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
    }
    painter->restore();
}

void MonthDelegate::paintNumber(QPainter *painter, const QStyleOptionViewItem &option, const QDate &day) const
{
    const QLocale &locale = m_model.locale();
    const QString first = DateInWords::isDayFirst(locale) ? "d MMM" : "MMM d";
    const QString number = day.day() == 1 ? locale.toString(day, first) : locale.toString(day.day());
    QRect place(option.rect.left() + margin, option.rect.top() + margin, option.rect.width() - 2 * margin,
                option.fontMetrics.height());
    const auto alignment = QStyle::visualAlignment(option.direction, Qt::AlignLeft);
    painter->setFont(option.font);
    if (day == m_today) {
        QFont bold = option.font;
        bold.setBold(true);
        painter->setFont(bold);
        const QSize size(QFontMetrics(bold).horizontalAdvance(number) + 2 * margin, place.height() + 2);
        const QRect mark =
            QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, size, place);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(option.palette.color(QPalette::Highlight));
        painter->drawRoundedRect(mark, margin, margin);
        painter->setBrush(Qt::NoBrush);
        painter->setRenderHint(QPainter::Antialiasing, false);
        painter->setPen(option.palette.color(QPalette::HighlightedText));
        painter->drawText(mark, Qt::AlignCenter, number);
        return;
    }
    painter->drawText(place, static_cast<int>(alignment) | Qt::AlignVCenter, number);
}

QSize MonthDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex & /*index*/) const
{
    constexpr int letters = 8;
    const int height = option.fontMetrics.height();
    return {option.fontMetrics.averageCharWidth() * letters + 2 * margin, 3 * height + 2 * margin};
}
