// SPDX-License-Identifier: MIT
#include "plugins/Open/OpenPrefPanePlugIn.h"

#include "DozelyKit/plugin/Names.h"
#include "plugins/common/settings/TextRows.h"

#include <QFileDialog>
#include <QStandardPaths>

using namespace dozely;

TextRows &OpenPrefPanePlugIn::rows()
{
    if (!m_rows) {
        m_rows = new TextRows(m_items, {localized("(empty)"),
                                        localized("Kept as it is, because it cannot be shown unchanged."),
                                        localized("Kept as they are, because they are no list.")});
        m_rows->setField(m_item);
    }
    return *m_rows;
}

void OpenPrefPanePlugIn::showOptions(const QVariantMap &parameters)
{
    rows().show(parameters.value(OpenKey::items));
    for (QPushButton *const button : {m_addFile, m_addFolder, m_addApplication, m_addAddress})
        button->setEnabled(rows().canBeChanged());
    on_items_currentRowChanged(m_items->currentRow());
}

void OpenPrefPanePlugIn::writeOptions(QVariantMap &parameters)
{
    parameters.insert(OpenKey::items, rows().parameter());
}

void OpenPrefPanePlugIn::askWhatIsMissing()
{
    // It opens all but applications.
    if (QStandardPaths::findExecutable("xdg-open").isEmpty())
        tellMissing(localized("No xdg-open"));
}

QString OpenPrefPanePlugIn::actionString() const
{
    const QStringList items =
        parameters() ? parameters()->value(OpenKey::items).toStringList() : QStringList();
    const QString first = items.value(0);
    QString name = first.startsWith('/') ? first.section('/', -1, -1, QString::SectionSkipEmpty) : first;
    if (name.endsWith(".desktop"))
        name = name.chopped(8).section('.', -1);
    if (name.isEmpty())
        return SettingsPane::actionString();
    return localized("Open %@").replace("%@", items.size() > 1 ? name + ", …" : name);
}

void OpenPrefPanePlugIn::on_addFile_clicked()
{
    for (const QString &file : QFileDialog::getOpenFileNames(setupView()))
        rows().add(file);
}

void OpenPrefPanePlugIn::on_addFolder_clicked()
{
    const QString folder = QFileDialog::getExistingDirectory(setupView());
    if (!folder.isEmpty())
        rows().add(folder);
}

void OpenPrefPanePlugIn::on_addApplication_clicked()
{
    const QString folder = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation).last();
    for (const QString &file : QFileDialog::getOpenFileNames(setupView(), {}, folder, "*.desktop"))
        rows().add(file);
}

void OpenPrefPanePlugIn::on_addAddress_clicked()
{
    rows().add();
}

void OpenPrefPanePlugIn::on_remove_clicked()
{
    rows().remove();
    m_items->setFocus();
}

void OpenPrefPanePlugIn::on_items_currentRowChanged(int row)
{
    m_remove->setEnabled(row >= 0 && rows().canBeChanged());
}
