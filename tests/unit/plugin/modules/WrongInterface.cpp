// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"

/// A module of a later interface than this system's.
class WrongFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.dozely.WDPlugInFactory/2")
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return nullptr; }
};

#include "WrongInterface.moc"
