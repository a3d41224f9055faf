// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "plugins/Command/CommandRunner.h"

/// Runs a program in the user's session.
class CommandUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    CommandUserAgentPlugIn();

    /// Starts the program and returns; the action goes on until the program ends.
    void actInUserAgent() override;

    void stopAction() override;

    /// Whether the program still runs.
    Q_INVOKABLE bool isActing() const;

    /// How the program ended, for the daemon's record, and why it was not started: as CommandRunner says it.
    /// @{
    Q_INVOKABLE int exitStatus() const { return m_runner.exitStatus(); }
    Q_INVOKABLE QString failure() const { return m_runner.failure(); }
    /// @}

    /// "Cancel" was pressed in the alert: the daemon is asked to drop the occurrence.
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification);

Q_SIGNALS:
    void actionDidFinish();

private:
    CommandRunner m_runner;
};
