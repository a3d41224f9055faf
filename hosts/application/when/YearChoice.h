// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QComboBox;
class QSpinBox;

/// Picks a day of the year, 29 February among them. THREADING: the main thread.
class YearChoice : public QWidget
{
    Q_OBJECT
public:
    explicit YearChoice(QWidget *parent = nullptr);

    int month() const;
    int day() const;

    /// Tells nobody.
    void setDay(int month, int day);

Q_SIGNALS:
    /// Somebody picked another.
    void changed();

private:
    void limitDay();

    QComboBox *m_month;
    QSpinBox *m_day;
};
