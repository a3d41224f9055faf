// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/NSDistributedNotificationCenter.h"

#include "DozelyKit/core/broadcast/DistributedNotifications.h"
#include "DozelyKit/core/foundation/Equality.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"

#include <QMetaMethod>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <utility>
#include <vector>

using namespace dozely;

namespace
{
using Posted = DistributedNotifications::Posted;

// A suspended centre keeps no more than this: anybody may post under names without end.
constexpr size_t mostWaiting = 256;

std::optional<quint32> &senderNow()
{
    static std::optional<quint32> sender;
    return sender;
}

QVariant objectFor(const QString &object)
{
    return object.isNull() ? QVariant() : QVariant(object);
}
} // namespace

struct NSDistributedNotificationCenter::Private {
    struct Interest {
        QPointer<QObject> observer;
        QString name;
        QString object;
    };

    /// Listens to what the observers want to hear, and to nothing when there are none.
    void update()
    {
        std::erase_if(interests, [](const Interest &interest) { return interest.observer.isNull(); });
        if (interests.empty()) {
            listening.reset();
            return;
        }
        if (!listening)
            listening = Port<DistributedNotifications>::current()->listen(
                [this](const Posted &posted) { receive(posted); });
        QStringList names;
        bool everyName = false;
        for (const Interest &interest : interests) {
            everyName = everyName || interest.name.isNull();
            names += interest.name;
        }
        names.removeDuplicates();
        listening->setNames(names, everyName);
    }

    void receive(const Posted &posted)
    {
        if (!isSuspended || posted.deliverImmediately)
            return deliver(posted);
        std::erase_if(waiting, [&posted](const Posted &earlier) {
            return earlier.notification.name() == posted.notification.name() &&
                   isEqual(earlier.notification.object(), posted.notification.object());
        });
        if (waiting.size() < mostWaiting)
            waiting.push_back(posted);
    }

    void deliver(const Posted &posted)
    {
        // An observer may run an event loop, in which another notification is delivered.
        const auto outer = std::exchange(senderNow(), posted.sender);
        const auto restore = qScopeGuard([&outer] { senderNow() = outer; });
        registry.postNotification(posted.notification);
    }

    NSNotificationCenter registry;
    std::vector<Interest> interests;
    std::unique_ptr<DistributedNotifications::Listening> listening;
    std::vector<Posted> waiting;
    bool isSuspended = false;
};

NSDistributedNotificationCenter::NSDistributedNotificationCenter() : d(std::make_unique<Private>()) {}

NSDistributedNotificationCenter::~NSDistributedNotificationCenter() = default;

NSDistributedNotificationCenter &NSDistributedNotificationCenter::defaultCenter()
{
    // Never destroyed: observers may still take themselves back while the process ends.
    static auto *const center = new NSDistributedNotificationCenter;
    return *center;
}

void NSDistributedNotificationCenter::addObserver(QObject *observer, const QByteArray &selector,
                                                  const QString &name, const QString &object)
{
    if (!observer)
        return;
    d->registry.addObserver(observer, selector, name, objectFor(object));
    d->interests.push_back({observer, name, object});
    d->update();
}

void NSDistributedNotificationCenter::removeObserver(QObject *observer, const QString &name,
                                                     const QString &object)
{
    d->registry.removeObserver(observer, name, objectFor(object));
    std::erase_if(d->interests, [&](const Private::Interest &interest) {
        return interest.observer == observer && (name.isNull() || interest.name == name) &&
               (object.isNull() || interest.object == object);
    });
    d->update();
}

void NSDistributedNotificationCenter::postNotificationName(const QString &name, const QString &object,
                                                           const QVariantMap &userInfo, quint32 options)
{
    const auto reach = (options & NSDistributedNotificationPostToAllSessions) != 0
                           ? DistributedNotifications::Reach::AllSessions
                           : DistributedNotifications::Reach::Session;
    Port<DistributedNotifications>::current()->post(NSNotification(name, objectFor(object), userInfo), reach,
                                                    (options & NSDistributedNotificationDeliverImmediately) !=
                                                        0);
}

void NSDistributedNotificationCenter::postNotificationNameDeliverImmediately(const QString &name,
                                                                             const QString &object,
                                                                             const QVariantMap &userInfo,
                                                                             bool deliverImmediately)
{
    Port<DistributedNotifications>::current()->post(NSNotification(name, objectFor(object), userInfo),
                                                    DistributedNotifications::Reach::Session,
                                                    deliverImmediately);
}

bool NSDistributedNotificationCenter::respondsToSelector(const QByteArray &selector) const
{
    const QMetaObject *const meta = metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        if (meta->method(i).name() == selector)
            return true;
    }
    return false;
}

void NSDistributedNotificationCenter::setSuspended(bool suspended)
{
    d->isSuspended = suspended;
    // An observer may suspend it again: what is left then goes on waiting.
    while (!d->isSuspended && !d->waiting.empty()) {
        const Posted posted = d->waiting.front();
        d->waiting.erase(d->waiting.begin());
        d->deliver(posted);
    }
}

bool NSDistributedNotificationCenter::suspended() const
{
    return d->isSuspended;
}

std::optional<quint32> NSDistributedNotificationCenter::currentSender()
{
    return senderNow();
}
