// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSNotificationCenter.h"

#include "DozelyKit/core/foundation/Equality.h"

#include <QPointer>

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace
{
struct Registration {
    QPointer<QObject> observer;
    QByteArray selector;
    QString name;
    QVariant object;
    bool taken = false; // taken back, perhaps by an observer that was called before this one

    bool matches(const NSNotification &notification) const
    {
        return (name.isNull() || name == notification.name()) &&
               (!object.isValid() || dozely::isEqual(object, notification.object()));
    }
};
} // namespace

struct NSNotificationCenter::Private {
    std::mutex mutex;
    std::vector<std::shared_ptr<Registration>> registrations; // in the order in which they were made

    void forgetIf(const auto &condition)
    {
        const std::lock_guard guard(mutex);
        std::erase_if(registrations, [&condition](const auto &registration) {
            if (!condition(*registration))
                return false;
            registration->taken = true;
            return true;
        });
    }

    std::vector<std::shared_ptr<Registration>> observersOf(const NSNotification &notification)
    {
        const std::lock_guard guard(mutex);
        std::vector<std::shared_ptr<Registration>> found;
        for (const auto &registration : registrations) {
            if (registration->matches(notification))
                found.push_back(registration);
        }
        return found;
    }

    // The observer to call now; null when it was taken back or destroyed in the meantime.
    QObject *liveObserver(const Registration &registration)
    {
        const std::lock_guard guard(mutex);
        return registration.taken ? nullptr : registration.observer.data();
    }
};

NSNotificationCenter::NSNotificationCenter() : d(std::make_unique<Private>()) {}

NSNotificationCenter::~NSNotificationCenter() = default;

NSNotificationCenter &NSNotificationCenter::defaultCenter()
{
    // Never destroyed: observers may still take themselves back while the process ends.
    static auto *const center = new NSNotificationCenter;
    return *center;
}

void NSNotificationCenter::addObserver(QObject *observer, const QByteArray &selector, const QString &name,
                                       const QVariant &object)
{
    if (!observer)
        return;
    d->forgetIf([](const Registration &registration) { return registration.observer.isNull(); });
    auto registration = std::make_shared<Registration>(Registration{observer, selector, name, object});
    const std::lock_guard guard(d->mutex);
    d->registrations.push_back(std::move(registration));
}

void NSNotificationCenter::removeObserver(QObject *observer, const QString &name, const QVariant &object)
{
    d->forgetIf([&](const Registration &registration) {
        return registration.observer.isNull() ||
               (registration.observer == observer && (name.isNull() || registration.name == name) &&
                (!object.isValid() || dozely::isEqual(registration.object, object)));
    });
}

void NSNotificationCenter::postNotification(const NSNotification &notification)
{
    for (const auto &registration : d->observersOf(notification)) {
        // A selector that the observer does not have is reported by Qt on the console and reaches nobody.
        if (QObject *const observer = d->liveObserver(*registration))
            QMetaObject::invokeMethod(observer, registration->selector.constData(), Qt::DirectConnection,
                                      Q_ARG(NSNotification, notification));
    }
}

void NSNotificationCenter::postNotificationName(const QString &name, const QVariant &object,
                                                const QVariantMap &userInfo)
{
    NSNotificationCenter::postNotification(NSNotification(name, object, userInfo));
}
