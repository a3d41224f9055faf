// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>

class ArgumentRows;

/// Where a user says which program is run, with which arguments, and when to be alerted, to wake the computer
/// and to power it on for it. The view is laid out in CommandSettings.ui; each property here is an outlet.
class CommandPrefPanePlugIn : public WDPrefPanePlugIn
{
    Q_OBJECT
    Q_PROPERTY(QLineEdit *program MEMBER m_program)
    Q_PROPERTY(QListWidget *arguments MEMBER m_arguments)
    Q_PROPERTY(QPushButton *add MEMBER m_add)
    Q_PROPERTY(QPushButton *remove MEMBER m_remove)
    Q_PROPERTY(QCheckBox *alert MEMBER m_alert)
    Q_PROPERTY(QSpinBox *leadTime MEMBER m_leadTime)
    Q_PROPERTY(QCheckBox *wakeUp MEMBER m_wakeUp)
    Q_PROPERTY(QCheckBox *startup MEMBER m_startup)
public:
    /// Parameters that the view cannot show, such as a program's path of several lines or a lead time of no
    /// seconds, stay as they are until the user changes what it shows in their place. An argument that a row
    /// cannot show stays as long as its row.
    void fillSetupInterfaceFromParameters() override;
    void fillParametersFromSetupInterface() override;

    /// No alert; if there is one, a minute ahead.
    QVariantMap defaultParameters() const override;

    /// "Run NAME"; "-" without a program.
    QString actionString() const override;

    /// The user looks for the program among the files.
    Q_INVOKABLE void on_browse_clicked();

    /// The user adds an argument, removes the current one, or goes to another one.
    /// @{
    Q_INVOKABLE void on_add_clicked();
    Q_INVOKABLE void on_remove_clicked();
    Q_INVOKABLE void on_arguments_currentRowChanged(int row);
    /// @}

private:
    /// Those of the view; made when they are first needed.
    ArgumentRows &rows();

    /// In seconds: the lead time of the parameters, or the nearest that the view can show.
    int leadTimeToShow(const QVariantMap &parameters) const;

    QLineEdit *m_program = nullptr; // the view owns these; all are null without it
    QListWidget *m_arguments = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_remove = nullptr;
    QCheckBox *m_alert = nullptr;
    QPointer<ArgumentRows> m_rows;
    QSpinBox *m_leadTime = nullptr; // in seconds
    QCheckBox *m_wakeUp = nullptr;
    QCheckBox *m_startup = nullptr;
};
