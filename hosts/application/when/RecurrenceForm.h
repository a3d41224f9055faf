// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/when/TimingWriter.h"

#include <QWidget>

class EndChoice;
class ExceptionList;
class FaultLabel;
class PatternRows;
class QComboBox;
class QDateEdit;
class QFormLayout;
class TimesOfDay;
class ZoneChoice;

/// Edits when a schedule takes place: once, or by a rule.
///
/// A rule that the form's plain fields do not show exactly is shown as a rule for experts. What nobody edits
/// is returned as it was given, to the letter. What is edited begins anew, at the first occurrence from now
/// on or from the first day that is picked; so date() and recurrence() of an edited form move on with the
/// clock: ask for them when they are needed.
///
/// THREADING: the main thread.
class RecurrenceForm : public QWidget
{
    Q_OBJECT
public:
    explicit RecurrenceForm(QWidget *parent = nullptr);

    /// Shows when a schedule takes place, which is taken for unedited, and tells nobody. `date` is the
    /// moment, or of what repeats that of the first occurrence; an invalid one stands for the next full hour.
    /// `timeZone` is an IANA name, empty for the machine's zone.
    void setRecurrence(const QDateTime &date, const QString &timeZone,
                       const std::optional<Recurrence> &recurrence);

    /// What is picked. UTC; of what repeats the first occurrence. While it is not valid: as it was given.
    QDateTime date() const;

    /// Empty: the machine's.
    QString timeZone() const;

    /// Absent: it takes place once. While it is not valid: as it was given.
    std::optional<Recurrence> recurrence() const;

    /// Whether it is another than was given.
    bool isEdited() const;

    bool isValid() const { return fault().isEmpty(); }

    /// A sentence that says why what is picked cannot be; empty when it can.
    QString fault() const;

Q_SIGNALS:
    /// Somebody picked something else, valid or not.
    void changed();

private:
    void makeRows();
    Timing timing() const;
    TimingWriter::Schedule schedule() const;
    void changeKind();
    QDate nextDay() const;
    void showRows();
    void showVerdict();
    void tell();

    TimingWriter m_writer;
    QFormLayout *m_form;
    QComboBox *m_kind = nullptr;
    QDateEdit *m_day = nullptr;
    PatternRows *m_pattern = nullptr;
    FaultLabel *m_verdict = nullptr;
    TimesOfDay *m_times = nullptr;
    QDateEdit *m_begin = nullptr;
    EndChoice *m_end = nullptr;
    ZoneChoice *m_zone = nullptr;
    ExceptionList *m_exceptions = nullptr;
    Timing::Kind m_shownKind = Timing::Kind::Once;
    QDate m_shownBegin; // of the field
    Timing m_settled;   // as it was before the kinds that somebody merely passed
};
