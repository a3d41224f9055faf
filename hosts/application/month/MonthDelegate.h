// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/month/MonthOccurrence.h"

#include <QStyledItemDelegate>

#include <optional>

class MonthModel;

/// Draws a day of a month: its number, and as many of its occurrences as there is room for; where there is
/// not for all, how many more there are. THREADING: the main thread.
class MonthDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit MonthDelegate(const MonthModel &model, QObject *parent = nullptr);

    /// The day whose number is marked.
    void setToday(const QDate &day) { m_today = day; }

    /// What lies at a point of the cell of an index.
    struct Hit {
        std::optional<MonthOccurrence> occurrence;
        bool isMore = false; ///< The line that says how many more there are.
    };
    Hit hitAt(const QPoint &point, const QRect &cell, const QFontMetrics &metrics,
              const QModelIndex &index) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    struct Lines {
        QRect first;  ///< That of the first occurrence; the others are below it.
        int shown;    ///< How many occurrences have a line.
        bool hasMore; ///< Whether one more says how many are left.
    };
    Lines linesIn(const QRect &cell, const QFontMetrics &metrics, qsizetype count) const;
    void paintNumber(QPainter *painter, const QStyleOptionViewItem &option, const QDate &day) const;

    const MonthModel &m_model;
    QDate m_today;
};
