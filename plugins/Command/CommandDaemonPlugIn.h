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

Q_SIGNALS:
    void actionDidFinish();

private:
    CommandRunner m_runner;
};
