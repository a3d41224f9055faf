// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QVariantMap>
#include <QWidget>

/// What happens before an action: the alert, waking, switching on. It edits those of a schedule's parameters
/// that mean the same for every action.
class PowerForm : public QWidget
{
    Q_OBJECT
public:
    explicit PowerForm(QWidget *parent = nullptr);

    /// Shows what the parameters say; tells nobody.
    void show(const QVariantMap &parameters);
    QFormLayout &rows() { return *m_form; }

Q_SIGNALS:
    /// These parameters were edited.
    void edited(const QVariantMap &changes);

private:
    void tellAlert();

    QFormLayout *m_form;
    QCheckBox *m_warns;
    QSpinBox *m_minutes;
    QCheckBox *m_wakes;
    QCheckBox *m_switchesOn;
};
