// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <QObject>

/// The root object of the module.
class RestartFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    /// The daemon's plug-in.
    std::unique_ptr<WDPlugIn> make() override;
    std::unique_ptr<WDPlugIn> makeForRole(const QString &roleKey) override;
};
