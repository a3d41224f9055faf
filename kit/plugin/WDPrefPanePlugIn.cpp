// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/plugin/Names.h"

using namespace dozely;

WDPrefPanePlugInProtocol::~WDPrefPanePlugInProtocol() = default;

WDPrefPanePlugIn::WDPrefPanePlugIn() = default;

WDPrefPanePlugIn::~WDPrefPanePlugIn()
{
    delete m_setupView.data();
}

bool WDPrefPanePlugIn::isBaseModule() const
{
    return false;
}

void WDPrefPanePlugIn::loadNib()
{
    const auto own = bundle();
    const QString name = own ? own->objectForInfoDictionaryKey(InfoKey::editNibFile).toString() : QString();
    const auto loader = Port<InterfaceFileLoader>::current();
    if (!name.isEmpty() && loader)
        loader->loadNibNamed(name, *own, this);
}

QWidget *WDPrefPanePlugIn::setupView() const
{
    // The cast that needs no declaration of the class.
    return m_setupView ? static_cast<QWidget *>(m_setupView->qt_metacast("QWidget")) : nullptr;
}

QObject *WDPrefPanePlugIn::setupViewObject() const
{
    return m_setupView;
}

void WDPrefPanePlugIn::setSetupView(QObject *view)
{
    if (view == m_setupView)
        return;
    delete m_setupView.data();
    m_setupView = view && view->isWidgetType() ? view : nullptr;
}

bool WDPrefPanePlugIn::needsWakeUp() const
{
    return longIntegerParameter(ParameterKey::needsWakeUp) != 0;
}

bool WDPrefPanePlugIn::needsStartup() const
{
    return longIntegerParameter(ParameterKey::needsStartup) != 0;
}

void WDPrefPanePlugIn::setNeedsWakeUp(bool needsWakeUp)
{
    setBooleanParameter(ParameterKey::needsWakeUp, needsWakeUp);
}

void WDPrefPanePlugIn::setNeedsStartup(bool needsStartup)
{
    setBooleanParameter(ParameterKey::needsStartup, needsStartup);
}

void WDPrefPanePlugIn::setBooleanParameter(const QString &key, bool value)
{
    if (const auto own = parameters())
        own->insert(key, value ? 1 : 0);
}

bool WDPrefPanePlugIn::needsWakeUpByDefault() const
{
    return false;
}

bool WDPrefPanePlugIn::needsStartupByDefault() const
{
    return false;
}

QString WDPrefPanePlugIn::pluginName() const
{
    return WDPlugIn::pluginName();
}

void WDPrefPanePlugIn::fillSetupInterfaceFromParameters() {}

void WDPrefPanePlugIn::fillParametersFromSetupInterface() {}

QVariantMap WDPrefPanePlugIn::defaultParameters() const
{
    return {};
}

QString WDPrefPanePlugIn::actionString() const
{
    return "-";
}
