// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

/// An action in the session that goes on until somebody has answered. THREADING: the main thread.
class SessionAction : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    /// `name` begins the lines of the log.
    explicit SessionAction(QString name) : m_name(std::move(name)) {}

    /// Begins the action and returns; one that goes on already is left to itself.
    void actInUserAgent() override;

    Q_INVOKABLE bool isActing() const { return m_isActing; }

    /// 0, or -1 when the action failed; and why, a clause.
    /// @{
    Q_INVOKABLE int exitStatus() const { return m_failure.isEmpty() ? 0 : -1; }
    Q_INVOKABLE QString failure() const { return m_failure; }
    /// @}

    /// "Cancel" was pressed in the alert: the daemon is asked to drop the occurrence.
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification);

Q_SIGNALS:
    void actionDidFinish();

protected:
    /// Does it. Leads to `end` or `fail`, perhaps at once.
    virtual void begin() = 0;

    /// The action is done.
    void end();

    /// It cannot be done; one line in the log. What it is told first is what the record says.
    void fail(const QString &why);

    const QString &name() const { return m_name; }

private:
    const QString m_name;
    QString m_failure;
    bool m_isActing = false;
};
