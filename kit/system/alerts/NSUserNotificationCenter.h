// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/NSUserNotification.h"

#include <QList>

#include <memory>

class NSUserNotificationCenter;

/// Marks a QObject class as delegate of the user notification centre. Each of the three callbacks is
/// optional: the class declares, as invokables of exactly these signatures, those that it wants to hear:
///
///     Q_INVOKABLE void userNotificationCenterDidDeliverNotification(
///         NSUserNotificationCenter *center, const std::shared_ptr<NSUserNotification> &notification);
///     Q_INVOKABLE void userNotificationCenterDidActivateNotification(
///         NSUserNotificationCenter *center, const std::shared_ptr<NSUserNotification> &notification);
///     Q_INVOKABLE bool userNotificationCenterShouldPresentNotification(
///         NSUserNotificationCenter *center, const std::shared_ptr<NSUserNotification> &notification);
///
/// The first says that the alert is on its way to the screen (whoever shows it accepted it), the second that
/// its button was pressed, and both come from the event loop; what they raise goes there, to be stopped by
/// the host's application object. The third is asked before each delivery, from within it; false shows
/// nothing. A class without the third lets everything be shown.
class DOZELYKIT_EXPORT NSUserNotificationCenterDelegate
{
public:
    virtual ~NSUserNotificationCenterDelegate();
};

/// Shows alerts to the user of this session: through the desktop's notifications and, in a process that has
/// it, through a window of the system's own (alertWindow). The button counts wherever it is
/// pressed, and takes the alert away everywhere.
///
/// Nothing here waits: what is delivered is shown by and by, from the event loop. What cannot be shown costs
/// one line (ProblemReport.h); the next delivery tries again.
///
/// THREADING: the main thread, with an event loop.
class DOZELYKIT_EXPORT NSUserNotificationCenter
{
public:
    /// The process's centre.
    static NSUserNotificationCenter &defaultUserNotificationCenter();

    NSUserNotificationCenter(const NSUserNotificationCenter &) = delete;
    NSUserNotificationCenter &operator=(const NSUserNotificationCenter &) = delete;

    /// Who is told; null for nobody. A QObject, not owned, forgotten when it is destroyed.
    void setDelegate(NSUserNotificationCenterDelegate *delegate);
    NSUserNotificationCenterDelegate *delegate() const;

    /// Shows the alert until its button is pressed, the user dismisses it or it is removed; an alert that is
    /// shown already is replaced. Passes on what the delegate raises when it is asked.
    void deliverNotification(const std::shared_ptr<NSUserNotification> &notification);

    /// Takes the alert from the screen, also when it is only on its way there. Tells nobody.
    void removeDeliveredNotification(const std::shared_ptr<NSUserNotification> &notification);

    /// Takes all alerts of this process away; for a process that ends.
    void removeAllDeliveredNotifications();

    /// The alerts that were accepted and, as far as can be known, still show; the oldest first.
    QList<std::shared_ptr<NSUserNotification>> deliveredNotifications() const;

private:
    NSUserNotificationCenter();
    ~NSUserNotificationCenter();
    struct Private;
    std::unique_ptr<Private> d;
};
