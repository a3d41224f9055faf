// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

class MonthDelegate;
class MonthModel;
struct MonthOccurrence;

/// The days of a month as a table. Arrows go from day to day and on into other months, Page Up and Page Down
/// a month, Home and End to the first and the last day; Enter opens a day. THREADING: the main thread.
class MonthGrid : public QTableView
{
    Q_OBJECT
public:
    explicit MonthGrid(const QLocale &locale, QWidget *parent = nullptr);

    MonthModel &month() { return *m_model; }

    /// The day that is chosen.
    QDate day() const { return m_day; }

    /// Chooses another day, and shows its month.
    void setDay(const QDate &day);
    void setToday(const QDate &day);

Q_SIGNALS:
    void dayChanged(const QDate &day);
    void monthChanged();

    /// Somebody wants to see all that takes place on the chosen day.
    void dayOpened();

    /// Somebody clicked twice on an occurrence.
    void occurrenceOpened(const MonthOccurrence &occurrence);

    /// Somebody asks for what can be done with an occurrence, at a place on the screen.
    void menuWanted(const MonthOccurrence &occurrence, const QPoint &place);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    QDate dayAfter(int key) const;
    QStyleOptionViewItem viewOptionsForSize() const;

    MonthModel *m_model;
    MonthDelegate *m_delegate;
    QDate m_day;
};
