// SPDX-License-Identifier: MIT
#include "plugins/common/settings/SettingsPane.h"

#include "DozelyKit/plugin/Names.h"

#include <QFormLayout>

using namespace dozely;

void SettingsPane::loadNib()
{
    WDPrefPanePlugIn::loadNib();
    auto *const form = setupView() ? qobject_cast<QFormLayout *>(setupView()->layout()) : nullptr;
    if (!form)
        return;
    if (!property(PlugInProperty::hostHasUsualOptions).toBool())
        m_usual = new UsualOptions(*form, bundle().get());
    // As the loader does it: hidden views are laid out late otherwise.
    form->setGeometry(setupView()->contentsRect());
    askWhatIsMissing();
}

void SettingsPane::fillSetupInterfaceFromParameters()
{
    if (!setupView())
        return;
    showOptions(parameters() ? *parameters() : QVariantMap());
    if (m_usual)
        m_usual->show(*this);
}

void SettingsPane::fillParametersFromSetupInterface()
{
    const auto own = parameters();
    if (!setupView() || !own)
        return;
    writeOptions(*own);
    if (m_usual)
        m_usual->write(*this);
}

QVariantMap SettingsPane::defaultParameters() const
{
    return {{ParameterKey::alert, 0}, {ParameterKey::delayBeforeAlert, UsualOptions::usualLeadTime}};
}

void SettingsPane::showOptions(const QVariantMap &) {}

void SettingsPane::writeOptions(QVariantMap &) {}

void SettingsPane::askWhatIsMissing() {}

void SettingsPane::tellMissing(const QString &sentence)
{
    auto *const form = setupView() ? qobject_cast<QFormLayout *>(setupView()->layout()) : nullptr;
    if (!form)
        return;
    if (!m_remark && !sentence.isEmpty())
        form->insertRow(0, m_remark = new Remark);
    if (m_remark)
        m_remark->say(sentence);
}

QString SettingsPane::localized(const QString &text) const
{
    return bundle() ? bundle()->localizedStringForKey(text) : text;
}
