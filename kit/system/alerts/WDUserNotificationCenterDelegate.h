// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"

#include <QObject>

#include <utility>

/// A plug-in that hears about its own alerts: a QObject with those callbacks of
/// NSUserNotificationCenterDelegate that it wants.
class DOZELYKIT_EXPORT WDUserNotificationCenterDelegateDelegate : public NSUserNotificationCenterDelegate
{
public:
    ~WDUserNotificationCenterDelegateDelegate() override;
};

/// The one delegate of the process's user notification centre: passes each callback on to the plug-in whose
/// alert it concerns. Alerts are told apart by their identifiers.
///
/// OWNERSHIP: alerts and their plug-ins are held for the life of the process; no entry is ever taken out.
/// THREADING: the main thread; there is no lock.
class DOZELYKIT_EXPORT WDUserNotificationCenterDelegate : public QObject,
                                                          public NSUserNotificationCenterDelegate
{
    Q_OBJECT
public:
    using Key = std::shared_ptr<NSUserNotification>;
    using Value = std::shared_ptr<WDUserNotificationCenterDelegateDelegate>;

    /// From alert to plug-in; its order is that in which the alerts were first entered.
    using MapTable = QList<std::pair<Key, Value>>;

    /// The process's instance, made at first use; it becomes the delegate of the default user notification
    /// centre then, and its troubles are written to the shared log.
    static std::shared_ptr<WDUserNotificationCenterDelegate> sharedInstance();

    /// The process's instance, however often it is called.
    static std::shared_ptr<WDUserNotificationCenterDelegate> init();

    ~WDUserNotificationCenterDelegate() override;

    /// Enters the delegate under the alert, instead of an earlier one of that same object.
    void setDelegateForUserNotification(const Value &delegate, const Key &notification);

    /// The table itself, not a copy.
    std::shared_ptr<MapTable> mapTable() const;

    /// With a null pointer nothing is entered nor passed on.
    void setMapTable(std::shared_ptr<MapTable> mapTable);

    /// @{ Passed on to the delegate under the first alert of the same identifier, if it implements that very
    /// callback. Nothing else is looked at, even when it does not.
    Q_INVOKABLE void
    userNotificationCenterDidDeliverNotification(NSUserNotificationCenter *center,
                                                 const std::shared_ptr<NSUserNotification> &notification);
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification);
    /// True unless a delegate was asked and said no.
    Q_INVOKABLE bool
    userNotificationCenterShouldPresentNotification(NSUserNotificationCenter *center,
                                                    const std::shared_ptr<NSUserNotification> &notification);
    /// @}

private:
    WDUserNotificationCenterDelegate();
    std::shared_ptr<MapTable> m_mapTable;
};

// The name lacks the s of the other extensions.
namespace zandorSoftwareExtensions
{
/// Whether both have the same identifier; nothing else is compared. False when `receiver` has none.
DOZELYKIT_EXPORT bool isEqualToUserNotification(const NSUserNotification &receiver,
                                                const NSUserNotification &other);
} // namespace zandorSoftwareExtensions
