// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/WallTime.h"

#include <QWidget>

class QDateEdit;
class QListWidget;
class QToolButton;
class FaultLabel;

/// Shows the exceptions of something that repeats, the dates that are left out and those that come beside it,
/// and takes some back or leaves out more. THREADING: the main thread.
class ExceptionList : public QWidget
{
    Q_OBJECT
public:
    explicit ExceptionList(QWidget *parent = nullptr);

    QList<WallTime> excluded() const { return m_excluded; }
    QList<WallTime> extra() const { return m_extra; }

    /// Tells nobody. `proposal` is the day that is proposed to be left out.
    void setDates(const QList<WallTime> &excluded, const QList<WallTime> &extra, const QDate &proposal);

    /// Leaves these out, too; none: says that nothing takes place on that day.
    void leaveOut(const QDate &day, const QList<WallTime> &dates);

Q_SIGNALS:
    /// Somebody took one back, or left one out.
    void changed();

    /// A day is to be left out: leaveOut() is to be called with what takes place then.
    void dayChosen(const QDate &day);

private:
    void takeBack();
    void showDates();

    QDateEdit *m_day;
    QToolButton *m_leaveOut;
    FaultLabel *m_fault;
    QListWidget *m_list;
    QToolButton *m_takeBack;
    QList<WallTime> m_excluded;
    QList<WallTime> m_extra;
};
