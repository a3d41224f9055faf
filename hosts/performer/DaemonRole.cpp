// SPDX-License-Identifier: MIT
#include "hosts/performer/DaemonRole.h"

#include "DozelyKit/plugin/Names.h"

using namespace dozely;

std::unique_ptr<ActingRole> ActingRole::ofThisProgram()
{
    return std::make_unique<DaemonRole>();
}

QString DaemonRole::moduleKey() const
{
    return InfoKey::daemonModule;
}

QList<PlugInLoader::Source> DaemonRole::trustedSources() const
{
    return PlugInLoader::sourcesOfTheSystem();
}

bool DaemonRole::canAct(const WDPlugIn &plugIn) const
{
    return dynamic_cast<const WDDaemonPlugIn *>(&plugIn);
}

void DaemonRole::act(WDPlugIn &plugIn)
{
    dynamic_cast<WDDaemonPlugIn &>(plugIn).actInDaemon();
}
