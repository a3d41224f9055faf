// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/when/Timing.h"

#include <QWidget>

class QComboBox;
class QDateEdit;
class QSpinBox;

/// Edits when something that repeats ends. THREADING: the main thread.
class EndChoice : public QWidget
{
    Q_OBJECT
public:
    explicit EndChoice(QWidget *parent = nullptr);

    Timing::Ending ending() const;

    /// Tells nobody. `proposal` is the last day that is shown where the ending names none.
    void setEnding(const Timing::Ending &ending, const QDate &proposal);

Q_SIGNALS:
    /// Somebody changed it.
    void changed();

private:
    void showDetail();

    QComboBox *m_choice;
    QDateEdit *m_until;
    QSpinBox *m_count;
};
