// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionBundle.h"
#include "hosts/application/book/BookEntry.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QWidget>

/// What becomes of a schedule's occurrences: when one was missed, what the machine does afterwards, and as
/// whom it acts.
class PolicyForm : public QWidget
{
    Q_OBJECT
public:
    /// `user` is who sits before the window.
    explicit PolicyForm(quint32 user, QWidget *parent = nullptr);

    /// Shows what an entry wants, as far as its action can do it; tells nobody.
    void show(const BookEntry &entry, const ActionBundle &action);
    QFormLayout &rows() { return *m_form; }

Q_SIGNALS:
    /// These values of the schedule were edited; `what` names the step.
    void edited(const QVariantMap &changes, const QString &what);

private:
    void fillChoices();
    void showPerson(const BookEntry &entry, const ActionBundle &action);

    const quint32 m_user;
    QFormLayout *m_form;
    QComboBox *m_missed;
    QComboBox *m_after;
    QComboBox *m_person;
    QLabel *m_afterHint;
    QLabel *m_hint;
};
