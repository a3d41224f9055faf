// SPDX-License-Identifier: MIT
#pragma once

#include <DozelyKit/plugin/WDPlugIn.h>
#include <DozelyKit/plugin/WDPlugInFactory.h>

#include <QLineEdit>

/// Where a user says which text is the greeting. The view is laid out in GreetingSettings.ui.
class GreetingPrefPanePlugIn : public WDPrefPanePlugIn
{
    Q_OBJECT
    Q_PROPERTY(QLineEdit *greeting MEMBER m_greeting) // the widget of this name in the view
public:
    void fillSetupInterfaceFromParameters() override;
    void fillParametersFromSetupInterface() override;
    QVariantMap defaultParameters() const override;
    QString actionString() const override;

private:
    QLineEdit *m_greeting = nullptr; // the view's; null without it
};

/// The root object of the module for configuration interfaces.
class GreetingPrefPaneFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override;
};
