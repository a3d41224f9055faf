// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"

/// A module whose class refuses to work for bundles that say so.
class RefusingFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    bool initializeClass(const std::shared_ptr<NSBundle> &bundle) override
    {
        return !bundle->objectForInfoDictionaryKey("Refuses").toBool();
    }
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<WDDaemonPlugIn>(); }
};

#include "InitializeClassRefuses.moc"
