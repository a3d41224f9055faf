// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/WDUserNotificationCenterDelegate.h"

#include <QStringList>

/// Delegates of alerts that differ in which of the three callbacks they implement. Each writes down what it
/// hears, by the title of the alert.
class SilentDelegate : public QObject, public WDUserNotificationCenterDelegateDelegate
{
    Q_OBJECT
public:
    QStringList delivered;
    QStringList activated;
    QStringList asked;
    NSUserNotificationCenter *lastCenter = nullptr;
};

class ActivationDelegate : public SilentDelegate
{
    Q_OBJECT
public:
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification)
    {
        activated += notification->title();
        lastCenter = center;
    }
};

class FullDelegate : public ActivationDelegate
{
    Q_OBJECT
public:
    Q_INVOKABLE void
    userNotificationCenterDidDeliverNotification(NSUserNotificationCenter *center,
                                                 const std::shared_ptr<NSUserNotification> &notification)
    {
        delivered += notification->title();
        lastCenter = center;
    }
    Q_INVOKABLE bool
    userNotificationCenterShouldPresentNotification(NSUserNotificationCenter *center,
                                                    const std::shared_ptr<NSUserNotification> &notification)
    {
        asked += notification->title();
        lastCenter = center;
        return presents;
    }
    bool presents = true;
};

/// Has the names with other arguments: implements nothing.
class MistakenDelegate : public SilentDelegate
{
    Q_OBJECT
public:
    Q_INVOKABLE bool userNotificationCenterShouldPresentNotification(NSUserNotificationCenter *)
    {
        asked += "?";
        return false;
    }
    Q_INVOKABLE void userNotificationCenterDidActivateNotification(const QString &) { activated += "?"; }
};
