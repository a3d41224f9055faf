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

    /// How the program ended, for the daemon's record: its exit status, 128 and the number of the signal that
    /// ended it, or -1 when it was not started.
    Q_INVOKABLE int exitStatus() const;

Q_SIGNALS:
    void actionDidFinish();

private:
    CommandRunner m_runner;
};
