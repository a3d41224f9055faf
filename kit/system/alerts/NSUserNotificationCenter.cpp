// SPDX-License-Identifier: MIT
#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"

#include "DozelyKit/system/alerts/UserNotificationCallbacks_p.h"
#include "DozelyKit/system/alerts/UserNotificationPresenter.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <algorithm>
#include <utility>
#include <vector>

using namespace dozely;

NSUserNotificationCenterDelegate::~NSUserNotificationCenterDelegate() = default;

namespace
{
using Notification = UserNotificationPresenter::Notification;

/// An alert that somebody was asked to show.
struct Delivery {
    Notification notification;
    /// Who shows it or was asked to, and how often each has shown it.
    QHash<const UserNotificationPresenter *, int> presenters;
    int told = 0; ///< How often the delegate has heard of it.
};
} // namespace

struct NSUserNotificationCenter::Private {
    NSUserNotificationCenter *center = nullptr;
    NSUserNotificationCenterDelegate *delegate = nullptr;
    QPointer<QObject> delegateObject; // the same, to know when it is gone
    std::vector<Delivery> deliveries; // in the order in which they were first delivered
    QObject loop;                     // callbacks are events of its own, never within one of a presenter

    static std::vector<std::shared_ptr<UserNotificationPresenter>> presenters()
    {
        std::vector<std::shared_ptr<UserNotificationPresenter>> present;
        for (const auto &presenter : {Port<UserNotificationPresenter>::current(), alertWindow()}) {
            if (presenter)
                present.push_back(presenter);
        }
        return present;
    }

    auto find(const Notification &notification)
    {
        return std::ranges::find(deliveries, notification, &Delivery::notification);
    }

    NSUserNotificationCenterDelegate *liveDelegate() const { return delegateObject ? delegate : nullptr; }

    void listenTo(UserNotificationPresenter *presenter);
    void closeEverywhere(const Notification &notification);
    void hasBeenShown(const UserNotificationPresenter *presenter, const Notification &notification);
    void hasBeenActivated(const Notification &notification);
    void hasBeenClosed(const UserNotificationPresenter *presenter, const Notification &notification);

    /// Calls the delegate from the event loop: there the host stops what a plug-in raises.
    void tellLater(bool (*callback)(NSUserNotificationCenterDelegate *, NSUserNotificationCenter *,
                                    const Notification &),
                   const Notification &notification)
    {
        QMetaObject::invokeMethod(
            &loop, [this, callback, notification] { callback(liveDelegate(), center, notification); },
            Qt::QueuedConnection);
    }
};

void NSUserNotificationCenter::Private::listenTo(UserNotificationPresenter *presenter)
{
    presenter->setEvents({
        .shown = [=, this](const Notification &notification) { hasBeenShown(presenter, notification); },
        .activated = [this](const Notification &notification) { hasBeenActivated(notification); },
        .closed = [=, this](const Notification &notification) { hasBeenClosed(presenter, notification); },
    });
}

void NSUserNotificationCenter::Private::closeEverywhere(const Notification &notification)
{
    for (const auto &presenter : presenters())
        presenter->close(notification);
}

void NSUserNotificationCenter::Private::hasBeenShown(const UserNotificationPresenter *presenter,
                                                     const Notification &notification)
{
    const auto delivery = find(notification);
    if (delivery == deliveries.end())
        return;
    // What a second presenter shows as well is no second delivery.
    if (++delivery->presenters[presenter] <= delivery->told)
        return;
    ++delivery->told;
    tellLater(UserNotificationCallbacks::didDeliver, notification);
}

void NSUserNotificationCenter::Private::hasBeenActivated(const Notification &notification)
{
    const auto delivery = find(notification);
    if (delivery == deliveries.end())
        return;
    const Notification activated = notification; // the presenter may let go of its own
    deliveries.erase(delivery);
    closeEverywhere(activated);
    activated->setActivationType(NSUserNotification::ActivationType::ActionButtonClicked);
    tellLater(UserNotificationCallbacks::didActivate, activated);
}

void NSUserNotificationCenter::Private::hasBeenClosed(const UserNotificationPresenter *presenter,
                                                      const Notification &notification)
{
    const auto delivery = find(notification);
    if (delivery == deliveries.end())
        return;
    delivery->presenters.remove(presenter);
    if (delivery->presenters.isEmpty())
        deliveries.erase(delivery);
}

NSUserNotificationCenter::NSUserNotificationCenter() : d(std::make_unique<Private>())
{
    d->center = this;
}

NSUserNotificationCenter::~NSUserNotificationCenter() = default;

NSUserNotificationCenter &NSUserNotificationCenter::defaultUserNotificationCenter()
{
    // Never destroyed: presenters refer to it, and plug-ins take their alerts back while the process ends.
    static auto *const center = new NSUserNotificationCenter;
    return *center;
}

void NSUserNotificationCenter::setDelegate(NSUserNotificationCenterDelegate *delegate)
{
    d->delegate = delegate;
    d->delegateObject = dynamic_cast<QObject *>(delegate);
}

NSUserNotificationCenterDelegate *NSUserNotificationCenter::delegate() const
{
    return d->liveDelegate();
}

void NSUserNotificationCenter::deliverNotification(const std::shared_ptr<NSUserNotification> &notification)
{
    if (!notification ||
        !UserNotificationCallbacks::shouldPresent(d->liveDelegate(), this, notification).value_or(true))
        return;
    auto delivery = d->find(notification);
    if (delivery == d->deliveries.end())
        delivery = d->deliveries.insert(d->deliveries.end(), Delivery{notification, {}});
    const auto presenters = Private::presenters();
    for (const auto &presenter : presenters)
        delivery->presenters.insert(presenter.get(), delivery->presenters.value(presenter.get()));
    notification->setActivationType(NSUserNotification::ActivationType::None);
    for (const auto &presenter : presenters) {
        d->listenTo(presenter.get());
        presenter->show(notification);
    }
}

void NSUserNotificationCenter::removeDeliveredNotification(
    const std::shared_ptr<NSUserNotification> &notification)
{
    const auto delivery = d->find(notification);
    if (delivery == d->deliveries.end())
        return;
    const Notification removed = notification; // the caller's may be the very one in the list
    d->deliveries.erase(delivery);
    d->closeEverywhere(removed);
}

void NSUserNotificationCenter::removeAllDeliveredNotifications()
{
    for (const Delivery &delivery : std::exchange(d->deliveries, {}))
        d->closeEverywhere(delivery.notification);
}

QList<std::shared_ptr<NSUserNotification>> NSUserNotificationCenter::deliveredNotifications() const
{
    QList<Notification> shown;
    for (const Delivery &delivery : d->deliveries) {
        if (delivery.told > 0)
            shown += delivery.notification;
    }
    return shown;
}
