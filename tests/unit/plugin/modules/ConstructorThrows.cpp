// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"

class UnmakeablePlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    UnmakeablePlugIn() { throw NSException("Unmakeable", "There is nothing to make."); }
};

/// A module whose plug-ins cannot be made, though its factory can.
class UnmakeableFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<UnmakeablePlugIn>(); }
};

#include "ConstructorThrows.moc"
