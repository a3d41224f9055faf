// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/performer/ActingRole.h"

/// Actions in the session of a user: the process is like the agent, with windows where there is a display,
/// and its name in the log is the agent's.
class SessionRole : public ActingRole
{
    Q_OBJECT
public:
    ~SessionRole() override;

    PerformanceOrder::Role role() const override { return PerformanceOrder::Role::Session; }
    void beginProcess(std::unique_ptr<QCoreApplication> &application, int &argc, char **argv) override;
    QString moduleKey() const override;
    QList<PlugInLoader::Source> trustedSources() const override;
    QString host() const override { return "the agent"; }
    bool canAct(const WDPlugIn &plugIn) const override;
    void act(WDPlugIn &plugIn) override;
    bool stopsActions() const override { return true; }
    void stop(WDPlugIn &plugIn) override;

    /// A window that somebody can see, and close.
    bool goesOn() const override;

    bool eventFilter(QObject *receiver, QEvent *event) override;
};
