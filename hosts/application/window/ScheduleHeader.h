// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>

/// The head of an editor: whose settings these are. Icon and words of the action, the schedule's name, and
/// whether it is on.
class ScheduleHeader : public QWidget
{
    Q_OBJECT
public:
    explicit ScheduleHeader(QWidget *parent = nullptr);

    void showAction(const QIcon &icon, const QString &description);
    /// A name that stands there already stays as it is edited.
    void showSchedule(const QString &name, bool isEnabled);
    void editName();

Q_SIGNALS:
    void nameEdited(const QString &name);
    void enabledEdited(bool isEnabled);

private:
    QLabel *m_icon;
    QLabel *m_description;
    QLineEdit *m_name;
    QCheckBox *m_enabled;
};
