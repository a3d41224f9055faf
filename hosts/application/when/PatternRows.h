// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/when/Timing.h"

#include <QObject>

class MonthChoice;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class ToggleGrid;
class YearChoice;

/// The rows of a form that say how often something takes place and on which days, of which those are there
/// that its kind has use for. THREADING: the main thread.
class PatternRows : public QObject
{
    Q_OBJECT
public:
    /// Adds the rows at the end of the form, whose widget owns their fields.
    explicit PatternRows(QFormLayout *form);

    /// The pattern as it is picked, in the kind that is shown.
    Timing::Pattern pattern() const;

    /// Tells nobody. What other kinds show is proposed by the day.
    void setPattern(const Timing::Pattern &pattern, const QDate &day);

    /// Shows another kind; what nobody touched so far is proposed by the day.
    void setKind(Timing::Kind kind, const QDate &day);

    /// The rule for experts, where nobody has written one.
    void proposeRule(const QString &rule);

Q_SIGNALS:
    /// Somebody picked something else.
    void changed();

private:
    void makeEvery();
    void makeRule();
    void showRows();
    void nameUnit();
    void propose(const QDate &day);

    QFormLayout *m_form;
    QWidget *m_every;
    QSpinBox *m_interval;
    QLabel *m_unit;
    QComboBox *m_distance;
    ToggleGrid *m_weekdays;
    MonthChoice *m_month;
    YearChoice *m_year;
    QLineEdit *m_rule;
    Timing::Pattern m_shown;
    Timing::Kind m_kind = Timing::Kind::Once;
    bool m_hasRule = false;     // somebody wrote one, or it was there
    bool m_hasWeekdays = false; // likewise
    bool m_hasMonth = false;
    bool m_hasYear = false;
};
