// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "plugins/Command/CommandRunner.h"

/// Runs a program in the daemon.
class CommandDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    CommandDaemonPlugIn();

    /// Starts the program and returns; the action goes on until the program ends.
    void actInDaemon() override;

    /// Whether the program still runs.
    Q_INVOKABLE bool isActing() const;

    /// How the program ended, for the daemon's record, and why it was not started: as CommandRunner says it.
    /// @{
    Q_INVOKABLE int exitStatus() const { return m_runner.exitStatus(); }
    Q_INVOKABLE QString failure() const { return m_runner.failure(); }
    /// @}

Q_SIGNALS:
    void actionDidFinish();

private:
    CommandRunner m_runner;
};
