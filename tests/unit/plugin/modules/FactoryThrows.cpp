// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <stdexcept>

/// A module whose factory cannot be made.
class ThrowingFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    ThrowingFactory() { throw std::runtime_error("no factory today"); }
    std::unique_ptr<WDPlugIn> make() override { return nullptr; }
};

#include "FactoryThrows.moc"
