// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <stdexcept>

/// A module whose class refuses to work for bundles that say so, and breaks down for others.
class RefusingFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    bool initializeClass(const std::shared_ptr<NSBundle> &bundle) override
    {
        if (bundle->objectForInfoDictionaryKey("Breaks Down").toBool())
            throw std::runtime_error("no class today");
        return !bundle->objectForInfoDictionaryKey("Refuses").toBool();
    }
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<WDDaemonPlugIn>(); }
};

#include "InitializeClassRefuses.moc"
