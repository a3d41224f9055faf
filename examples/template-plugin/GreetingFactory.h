// SPDX-License-Identifier: MIT
#pragma once

#include <DozelyKit/plugin/WDPlugInFactory.h>

#include <QObject>

/// The root object of the module: makes the plug-in of the role that a host asks for.
class GreetingFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override;
    std::unique_ptr<WDPlugIn> makeForRole(const QString &roleKey) override;
};
