// SPDX-License-Identifier: MIT
#include "GreetingPrefPane.h"

void GreetingPrefPanePlugIn::fillSetupInterfaceFromParameters()
{
    const auto shown = parameters();
    if (m_greeting && shown)
        m_greeting->setText(shown->value("Text").toString());
}

void GreetingPrefPanePlugIn::fillParametersFromSetupInterface()
{
    const auto written = parameters(); // the dictionary itself, no copy
    if (m_greeting && written)
        written->insert("Text", m_greeting->text());
}

QVariantMap GreetingPrefPanePlugIn::defaultParameters() const
{
    return {{"Text", "Hello"}};
}

QString GreetingPrefPanePlugIn::actionString() const
{
    const auto described = parameters();
    return described ? "Say " + described->value("Text").toString() : WDPrefPanePlugIn::actionString();
}

std::unique_ptr<WDPlugIn> GreetingPrefPaneFactory::make()
{
    return std::make_unique<GreetingPrefPanePlugIn>();
}
