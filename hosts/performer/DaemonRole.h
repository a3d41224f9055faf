// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/performer/ActingRole.h"

/// Actions in the daemon.
class DaemonRole : public ActingRole
{
    Q_OBJECT
public:
    PerformanceOrder::Role role() const override { return PerformanceOrder::Role::Daemon; }
    QString moduleKey() const override;
    QList<PlugInLoader::Source> trustedSources() const override;
    QString host() const override { return "the daemon"; }
    bool canAct(const WDPlugIn &plugIn) const override;
    void act(WDPlugIn &plugIn) override;
};
