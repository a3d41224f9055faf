// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/application/month/MonthOccurrence.h"

#include <QWidget>

#include <chrono>
#include <memory>

class DayList;
class MonthGrid;
class OccurrenceActions;
class QLabel;
class QToolButton;

/// A calendar's month with what takes place in it, by the machine's clocks, and beside it all that the chosen
/// day has, where it is skipped, put off or run now. It shows what it is given: who shows it listens to
/// rangeChanged() and gives the occurrences of that time.
///
/// THREADING: the main thread.
class MonthView : public QWidget
{
    Q_OBJECT
public:
    explicit MonthView(QWidget *parent = nullptr);

    /// In any order. Some of other months do no harm.
    void setOccurrences(const QList<MonthOccurrence> &occurrences);

    /// The moments between which days are shown: some days of the months before and after, too. The first is
    /// included, the last is not. UTC.
    QDateTime rangeBegin() const;
    QDateTime rangeEnd() const;

    /// The chosen day; at first today.
    QDate day() const;
    void setDay(const QDate &day);

Q_SIGNALS:
    /// Another month is shown.
    void rangeChanged(const QDateTime &begin, const QDateTime &end);

    void skipWanted(const QString &identifier, const QDateTime &date);
    void putOffWanted(const QString &identifier, const QDateTime &date, std::chrono::seconds delay);
    void runWanted(const QString &identifier);

    /// Somebody wants to see the schedule itself.
    void openWanted(const QString &identifier);

protected:
    void changeEvent(QEvent *event) override;

private:
    void makeHead();
    void turnArrows();
    void connectParts();
    void showMonth();
    void showToday();

    QToolButton *m_previous = nullptr;
    QToolButton *m_next = nullptr;
    QLabel *m_title;
    OccurrenceActions *m_menu; // of the grid
    MonthGrid *m_grid = nullptr;
    DayList *m_list = nullptr;
    std::unique_ptr<dozely::AbsoluteTimer> m_midnight;
};
