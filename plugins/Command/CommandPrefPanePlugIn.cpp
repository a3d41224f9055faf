// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandPrefPanePlugIn.h"

#include "DozelyKit/plugin/Names.h"
#include "plugins/common/settings/ShownText.h"
#include "plugins/common/settings/TextRows.h"

#include <QFileDialog>

using namespace dozely;

TextRows &CommandPrefPanePlugIn::rows()
{
    if (!m_rows)
        m_rows = new TextRows(m_arguments, {localized("(empty)"),
                                            localized("Kept as it is, because it cannot be shown unchanged."),
                                            localized("Kept as they are, because they are no list.")});
    return *m_rows;
}

void CommandPrefPanePlugIn::showOptions(const QVariantMap &parameters)
{
    const QString program = parameters.value(CommandKey::program).toString();
    const bool isShown = ShownText::canBeShown(program);
    m_program->setText(isShown ? program : ShownText::escaped(program));
    m_program->setReadOnly(!isShown);
    rows().show(parameters.value(CommandKey::arguments));
    m_add->setEnabled(rows().canBeChanged());
    on_arguments_currentRowChanged(m_arguments->currentRow());
}

void CommandPrefPanePlugIn::writeOptions(QVariantMap &parameters)
{
    if (!parameters.contains(CommandKey::program) ||
        (!m_program->isReadOnly() && m_program->text() != parameters.value(CommandKey::program).toString()))
        parameters.insert(CommandKey::program, m_program->text());
    parameters.insert(CommandKey::arguments, rows().parameter());
}

QString CommandPrefPanePlugIn::actionString() const
{
    const QString program = parameters() ? parameters()->value(CommandKey::program).toString() : QString();
    const QString name = program.section('/', -1, -1, QString::SectionSkipEmpty);
    if (name.isEmpty())
        return SettingsPane::actionString();
    return localized("Run %@").replace("%@", name);
}

void CommandPrefPanePlugIn::on_browse_clicked()
{
    const QString chosen = QFileDialog::getOpenFileName(setupView(), {}, m_program->text());
    if (chosen.isEmpty())
        return;
    m_program->setReadOnly(false); // what could not be shown is replaced
    m_program->setText(chosen);
}

void CommandPrefPanePlugIn::on_add_clicked()
{
    rows().add();
}

void CommandPrefPanePlugIn::on_remove_clicked()
{
    rows().remove();
    m_arguments->setFocus();
}

void CommandPrefPanePlugIn::on_arguments_currentRowChanged(int row)
{
    m_remove->setEnabled(row >= 0 && rows().canBeChanged());
}
