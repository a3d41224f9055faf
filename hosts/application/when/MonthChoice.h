// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/when/Timing.h"
#include "hosts/application/when/ToggleGrid.h"

#include <QWidget>

class QComboBox;
class QRadioButton;

/// Picks days of a month: some numbers, the last, or "the first Monday". THREADING: the main thread.
class MonthChoice : public QWidget
{
    Q_OBJECT
public:
    explicit MonthChoice(QWidget *parent = nullptr);

    /// Writes monthDays, or ordinal and weekday.
    void writeTo(Timing::Pattern &pattern) const;

    /// Tells nobody. Reads the same; where it says neither, that which is chosen stays.
    void readFrom(const Timing::Pattern &pattern);

    /// Tells nobody. Proposes a day.
    void propose(const QDate &day);

Q_SIGNALS:
    /// Somebody picked something else.
    void changed();

private:
    QList<ToggleGrid::Item> items() const;
    void showDetail();

    QRadioButton *m_byDays;
    ToggleGrid *m_days;
    QRadioButton *m_byWeekday;
    QWidget *m_detail;
    QComboBox *m_ordinal;
    QComboBox *m_weekday;
};
