// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandPrefPanePlugIn.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"

#include <QFileDialog>

#include <algorithm>

using namespace dozely;

namespace
{
constexpr int usualLeadTime = 60;

/// One argument a line; no text, no argument.
QVariantList argumentsIn(const QString &text)
{
    QVariantList arguments;
    if (!text.isEmpty()) {
        for (const QString &line : text.split('\n'))
            arguments += line;
    }
    return arguments;
}

/// Whether lines of text can say these arguments.
bool canBeShown(const QVariant &arguments)
{
    const bool isList =
        arguments.typeId() == QMetaType::QVariantList || arguments.typeId() == QMetaType::QStringList;
    if (arguments.isValid() && !isList)
        return false;
    const QVariantList list = arguments.toList();
    const bool areStrings = std::ranges::all_of(
        list, [](const QVariant &argument) { return argument.typeId() == QMetaType::QString; });
    return areStrings && argumentsIn(arguments.toStringList().join('\n')) == list;
}
} // namespace

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
    const QVariant arguments = shown.value(CommandKey::arguments);
    m_program->setText(shown.value(CommandKey::program).toString());
    m_arguments->setPlainText(arguments.toStringList().join('\n'));
    m_arguments->setReadOnly(!canBeShown(arguments));
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
        m_program->text() != own->value(CommandKey::program).toString())
        own->insert(CommandKey::program, m_program->text());
    if (!m_arguments->isReadOnly())
        own->insert(CommandKey::arguments, argumentsIn(m_arguments->toPlainText()));
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
    if (!chosen.isEmpty())
        m_program->setText(chosen);
}
