// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandPrefPanePlugIn.h"

#include "platform/IntegerValue.h"

#include <QFileDialog>

#include <algorithm>

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

void CommandPrefPanePlugIn::fillSetupInterfaceFromParameters()
{
    if (!setupView())
        return;
    const QVariantMap shown = parameters() ? *parameters() : QVariantMap();
    const QVariant arguments = shown.value("Arguments");
    m_program->setText(shown.value("Program").toString());
    m_arguments->setPlainText(arguments.toStringList().join('\n'));
    m_arguments->setReadOnly(!canBeShown(arguments));
    const qint64 lead = timeBeforeSelfAnticipation();
    m_alert->setChecked(lead != -1);
    m_leadTime->setEnabled(m_alert->isChecked());
    m_leadTime->setValue(shown.contains("Delay before alert")
                             ? integerValue(shown.value("Delay before alert"))
                             : usualLeadTime);
    m_wakeUp->setChecked(needsWakeUp());
    m_startup->setChecked(needsStartup());
}

void CommandPrefPanePlugIn::fillParametersFromSetupInterface()
{
    const auto own = parameters();
    if (!setupView() || !own)
        return;
    own->insert("Program", m_program->text());
    if (!m_arguments->isReadOnly())
        own->insert("Arguments", argumentsIn(m_arguments->toPlainText()));
    own->insert("Alert", m_alert->isChecked() ? 1 : 0);
    own->insert("Delay before alert", m_leadTime->value());
    setNeedsWakeUp(m_wakeUp->isChecked());
    setNeedsStartup(m_startup->isChecked());
}

QVariantMap CommandPrefPanePlugIn::defaultParameters() const
{
    return {{"Alert", 0}, {"Delay before alert", usualLeadTime}};
}

QString CommandPrefPanePlugIn::actionString() const
{
    const QString program = parameters() ? parameters()->value("Program").toString() : QString();
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
