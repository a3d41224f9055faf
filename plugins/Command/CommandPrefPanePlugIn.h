// SPDX-License-Identifier: MIT
#pragma once

#include "plugins/common/settings/SettingsPane.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

class TextRows;

/// Where a user says which program is run, and with which arguments. The view is laid out in
/// CommandSettings.ui; each property here is an outlet.
class CommandPrefPanePlugIn : public SettingsPane
{
    Q_OBJECT
    Q_PROPERTY(QLineEdit *program MEMBER m_program)
    Q_PROPERTY(QListWidget *arguments MEMBER m_arguments)
    Q_PROPERTY(QPushButton *add MEMBER m_add)
    Q_PROPERTY(QPushButton *remove MEMBER m_remove)
public:
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

protected:
    /// Parameters that the view cannot show, such as a program's path of several lines, stay as they are
    /// until the user changes what it shows in their place. An argument that a row cannot show stays as long
    /// as its row.
    /// @{
    void showOptions(const QVariantMap &parameters) override;
    void writeOptions(QVariantMap &parameters) override;
    /// @}

private:
    /// Those of the view; made when they are first needed.
    TextRows &rows();

    QLineEdit *m_program = nullptr; // the view owns these; all are null without it
    QListWidget *m_arguments = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_remove = nullptr;
    QPointer<TextRows> m_rows;
};
