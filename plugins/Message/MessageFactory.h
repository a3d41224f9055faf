// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <QObject>

/// The root object of the module, which serves the agent alone.
class MessageFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override;
};
