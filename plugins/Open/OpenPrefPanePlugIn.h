// SPDX-License-Identifier: MIT
#pragma once

#include "plugins/common/settings/SettingsPane.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

class TextRows;

/// Where a user says what is opened. The view is laid out in OpenSettings.ui; each property here is an
/// outlet.
class OpenPrefPanePlugIn : public SettingsPane
{
    Q_OBJECT
    Q_PROPERTY(QListWidget *items MEMBER m_items)
    Q_PROPERTY(QLineEdit *item MEMBER m_item)
    Q_PROPERTY(QPushButton *addFile MEMBER m_addFile)
    Q_PROPERTY(QPushButton *addFolder MEMBER m_addFolder)
    Q_PROPERTY(QPushButton *addApplication MEMBER m_addApplication)
    Q_PROPERTY(QPushButton *addAddress MEMBER m_addAddress)
    Q_PROPERTY(QPushButton *remove MEMBER m_remove)
public:
    /// "Open NAME", of the first item, with "…" when there are more; "-" without one.
    QString actionString() const override;

    Q_INVOKABLE void on_addFile_clicked();
    Q_INVOKABLE void on_addFolder_clicked();
    Q_INVOKABLE void on_addApplication_clicked();
    Q_INVOKABLE void on_addAddress_clicked(); ///< A row to write into.
    Q_INVOKABLE void on_remove_clicked();
    Q_INVOKABLE void on_items_currentRowChanged(int row);

protected:
    /// A list that a row cannot show as it is stays as long as its row.
    /// @{
    void showOptions(const QVariantMap &parameters) override;
    void writeOptions(QVariantMap &parameters) override;
    /// @}
    void askWhatIsMissing() override;

private:
    TextRows &rows();

    QListWidget *m_items = nullptr; // the view owns these; all are null without it
    QLineEdit *m_item = nullptr;
    QPushButton *m_addFile = nullptr;
    QPushButton *m_addFolder = nullptr;
    QPushButton *m_addApplication = nullptr;
    QPushButton *m_addAddress = nullptr;
    QPushButton *m_remove = nullptr;
    QPointer<TextRows> m_rows;
};
