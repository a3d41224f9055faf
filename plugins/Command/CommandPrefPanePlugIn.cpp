// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandPrefPanePlugIn.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"
#include "plugins/Command/ArgumentRows.h"
#include "plugins/Command/ArgumentText.h"

#include <QFileDialog>

#include <algorithm>

using namespace dozely;

namespace
{
constexpr int usualLeadTime = 60;
} // namespace

ArgumentRows &CommandPrefPanePlugIn::rows()
{
    const auto localized = [this](const QString &text) {
        return bundle() ? bundle()->localizedStringForKey(text) : text;
    };
    if (!m_rows)
        m_rows =
            new ArgumentRows(m_arguments, {localized("(empty)"),
                                           localized("Kept as it is, because it cannot be shown unchanged."),
                                           localized("Kept as they are, because they are no list.")});
    return *m_rows;
}

int CommandPrefPanePlugIn::leadTimeToShow(const QVariantMap &parameters) const
{
    const QVariant lead = parameters.value(ParameterKey::delayBeforeAlert);
    // -1 is no time but says that there is no alert.
    const int seconds = lead.isValid() && integerValue(lead) != -1 ? integerValue(lead) : usualLeadTime;
    return std::max(seconds, m_leadTime->minimum());
}

void CommandPrefPanePlugIn::fillSetupInterfaceFromParameters()
{
    if (!setupView())
        return;
    const QVariantMap shown = parameters() ? *parameters() : QVariantMap();
    const QString program = shown.value(CommandKey::program).toString();
    const bool isShown = ArgumentText::canBeShown(program);
    m_program->setText(isShown ? program : ArgumentText::escaped(program));
    m_program->setReadOnly(!isShown);
    rows().show(shown.value(CommandKey::arguments));
    m_add->setEnabled(rows().canBeChanged());
    on_arguments_currentRowChanged(m_arguments->currentRow());
    m_alert->setChecked(timeBeforeSelfAnticipation() != -1);
    m_leadTime->setEnabled(m_alert->isChecked());
    m_leadTime->setValue(leadTimeToShow(shown));
    m_wakeUp->setChecked(needsWakeUp());
    m_startup->setChecked(needsStartup());
}

void CommandPrefPanePlugIn::fillParametersFromSetupInterface()
{
    const auto own = parameters();
    if (!setupView() || !own)
        return;
    const bool wasToAlert = timeBeforeSelfAnticipation() != -1;
    const bool isToAlert = m_alert->isChecked();
    if (!own->contains(CommandKey::program) ||
        (!m_program->isReadOnly() && m_program->text() != own->value(CommandKey::program).toString()))
        own->insert(CommandKey::program, m_program->text());
    own->insert(CommandKey::arguments, rows().arguments());
    // Somebody who asks for an alert gets the lead time that stands beside it.
    if (!own->contains(ParameterKey::delayBeforeAlert) || m_leadTime->value() != leadTimeToShow(*own) ||
        (isToAlert && !wasToAlert))
        own->insert(ParameterKey::delayBeforeAlert, m_leadTime->value());
    if (!own->contains(ParameterKey::alert) || isToAlert != wasToAlert)
        own->insert(ParameterKey::alert, isToAlert ? 1 : 0);
    setNeedsWakeUp(m_wakeUp->isChecked());
    setNeedsStartup(m_startup->isChecked());
}

QVariantMap CommandPrefPanePlugIn::defaultParameters() const
{
    return {{ParameterKey::alert, 0}, {ParameterKey::delayBeforeAlert, usualLeadTime}};
}

QString CommandPrefPanePlugIn::actionString() const
{
    const QString program = parameters() ? parameters()->value(CommandKey::program).toString() : QString();
    const QString name = program.section('/', -1, -1, QString::SectionSkipEmpty);
    if (name.isEmpty())
        return WDPrefPanePlugIn::actionString();
    const QString format = bundle() ? bundle()->localizedStringForKey("Run %@") : QString("Run %@");
    return QString(format).replace("%@", name);
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
