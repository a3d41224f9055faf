// SPDX-License-Identifier: MIT
#pragma once

#include <DozelyKit/plugin/WDPlugIn.h>

/// Greets from the daemon.
class GreetingDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    void actInDaemon() override;
};

/// Greets from the user's session.
class GreetingUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    void actInUserAgent() override;

    /// "Cancel" was pressed in the alert that precedes the action.
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification);
};
