// SPDX-License-Identifier: MIT
#include "SettingsGroup.h"

#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <QBoxLayout>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace
{
std::shared_ptr<WDPrefPanePlugIn> load(const QString &bundlePath)
{
    const QString roleKey = dozely::InfoKey::prefPaneModule;
    const auto bundle = NSBundle::bundleWithPath(bundlePath);
    if (!bundle)
        return nullptr;
    const auto module =
        bundle->loadModule(bundle->objectForInfoDictionaryKey(roleKey).toString(), WDPlugInFactory_iid);
    auto *const factory = module ? qobject_cast<WDPlugInFactory *>(*module) : nullptr;
    if (!factory || !factory->initializeClass(bundle))
        return nullptr;
    const std::shared_ptr<WDPlugIn> made = factory->makeForRole(roleKey);
    auto plugIn = std::dynamic_pointer_cast<WDPrefPanePlugIn>(made);
    if (plugIn) {
        plugIn->setBundle(bundle);
        plugIn->loadNib();
    }
    return plugIn && plugIn->setupView() ? plugIn : nullptr;
}
} // namespace

SettingsGroup::SettingsGroup(const QString &bundlePath, QWidget *parent)
    : QGroupBox("Settings of a plug-in", parent), m_plugIn(load(bundlePath))
{
    auto *const column = new QVBoxLayout(this);
    if (!m_plugIn) {
        column->addWidget(new QLabel("Start the gallery with --plug-in BUNDLE to see one."));
        return;
    }
    setTitle("Settings of the plug-in \"" + m_plugIn->pluginName() + '"');
    m_plugIn->setParameters(m_plugIn->defaultParameters());
    m_plugIn->fillSetupInterfaceFromParameters();
    // Of a height that does not depend on its width: a layout does not ask for that in time.
    auto *const written = new QPlainTextEdit;
    written->setReadOnly(true);
    written->setTabChangesFocus(true);
    written->setAccessibleName("Written parameters");
    written->setFixedHeight(written->fontMetrics().lineSpacing() * 3 + 2 * written->frameWidth() +
                            2 * qRound(written->document()->documentMargin()));
    auto *const write = new QPushButton("Write parameters");
    connect(write, &QPushButton::clicked, this, [this, written] {
        m_plugIn->fillParametersFromSetupInterface();
        const auto json = QJsonDocument(QJsonObject::fromVariantMap(*m_plugIn->parameters()));
        written->setPlainText(m_plugIn->actionString() + ": " + json.toJson(QJsonDocument::Compact));
    });
    column->addWidget(m_plugIn->setupView());
    auto *const row = new QHBoxLayout;
    row->addWidget(written, 1);
    row->addWidget(write, 0, Qt::AlignTop);
    column->addLayout(row);
    write->click();
}

SettingsGroup::~SettingsGroup() = default;
