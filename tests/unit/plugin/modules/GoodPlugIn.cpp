// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <QVariantMap>

class GoodDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    void actInDaemon() override { (*parameters())["Acted"] = true; }
};

class GoodUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
};

/// A module that serves two roles.
class GoodPlugInFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<GoodDaemonPlugIn>(); }
    std::unique_ptr<WDPlugIn> makeForRole(const QString &roleKey) override
    {
        if (roleKey == "WDUserAgentModule")
            return std::make_unique<GoodUserAgentPlugIn>();
        return WDPlugInFactory::makeForRole(roleKey);
    }
};

#include "GoodPlugIn.moc"
