// SPDX-License-Identifier: MIT
#pragma once

#include "plugins/common/settings/SettingsPane.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>

/// Where a user writes a script, or says which file is one. The view is laid out in ScriptSettings.ui; each
/// property here is an outlet.
class ScriptPrefPanePlugIn : public SettingsPane
{
    Q_OBJECT
    Q_PROPERTY(QRadioButton *isText MEMBER m_isText)
    Q_PROPERTY(QPlainTextEdit *script MEMBER m_script)
    Q_PROPERTY(QRadioButton *isFile MEMBER m_isFile)
    Q_PROPERTY(QLineEdit *file MEMBER m_file)
    Q_PROPERTY(QPushButton *browse MEMBER m_browse)
public:
    ~ScriptPrefPanePlugIn() override;

    /// "Run NAME" for a file, "Run a script" for a text; "-" without either.
    QString actionString() const override;

    /// The user looks for the script among the files.
    Q_INVOKABLE void on_browse_clicked();

    /// The one or the other field can be written in.
    Q_INVOKABLE void on_isFile_toggled(bool isFile);

protected:
    /// The parameters have the text or the file, never both; what a field cannot show as it is stays until
    /// the user changes what stands in its place.
    /// @{
    void showOptions(const QVariantMap &parameters) override;
    void writeOptions(QVariantMap &parameters) override;
    /// @}

    /// Runs the shortest script there is.
    void askWhatIsMissing() override;

private:
    QRadioButton *m_isText = nullptr; // the view owns these; all are null without it
    QPlainTextEdit *m_script = nullptr;
    QRadioButton *m_isFile = nullptr;
    QLineEdit *m_file = nullptr;
    QPushButton *m_browse = nullptr;
    QString m_shownScript; // as the fields give back what they were given
    QString m_shownFile;
    bool m_wasFile = false;
    QProcess m_trial;
};
