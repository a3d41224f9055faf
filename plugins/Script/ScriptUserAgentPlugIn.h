// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "plugins/Command/CommandRunner.h"

/// Runs a script in the user's session: the text of the parameter "Script", or the file whose absolute path
/// is the parameter "Script File".
///
/// The script runs in a process of its own ("/usr/bin/osascript" below the root folder), so that the agent
/// goes on serving meanwhile and a script can be stopped. Its result, or what went wrong, is a line in the
/// log.
class ScriptUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    ScriptUserAgentPlugIn();

    /// Starts the script and returns; the action goes on until the script ends.
    void actInUserAgent() override;

    void stopAction() override;

    /// Whether the script still runs.
    Q_INVOKABLE bool isActing() const;

    /// How the script ended, for the daemon's record, and why it was not started: as CommandRunner says it.
    /// @{
    Q_INVOKABLE int exitStatus() const { return m_runner.exitStatus(); }
    Q_INVOKABLE QString failure() const { return m_failure.isEmpty() ? m_runner.failure() : m_failure; }
    /// @}

    /// "Cancel" was pressed in the alert: the daemon is asked to drop the occurrence.
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification);

Q_SIGNALS:
    void actionDidFinish();

private:
    CommandRunner m_runner;
    QString m_failure; // of the parameters
};
