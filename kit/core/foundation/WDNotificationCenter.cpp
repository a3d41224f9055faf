// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/WDNotificationCenter.h"

#include "DozelyKit/core/foundation/Equality.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace
{
// One observer of a (sender, name) pair. Shared with the postings that run, which so see a replaced selector.
struct Entry {
    std::shared_ptr<QObject> observer;
    QByteArray selector;
};
using ObserverTable = std::vector<std::shared_ptr<Entry>>; // in the order of registration

struct Sender {
    QVariant object;
    QHash<QString, ObserverTable> tables; // by notification name
};

// Never destroyed: observers are held for good, and some could not be destroyed once the application object
// is gone.
std::shared_ptr<WDNotificationCenter> &sharedCenter()
{
    static auto *const center = new std::shared_ptr<WDNotificationCenter>;
    return *center;
}
} // namespace

struct WDNotificationCenter::Private {
    std::vector<Sender> _notificationObjects; // a handful; QVariant has no hash

    Sender *sender(const QVariant &object)
    {
        const auto found =
            std::find_if(_notificationObjects.begin(), _notificationObjects.end(),
                         [&object](const Sender &sender) { return dozely::isEqual(sender.object, object); });
        return found == _notificationObjects.end() ? nullptr : &*found;
    }
};

WDNotificationCenter::WDNotificationCenter() : d(std::make_unique<Private>()) {}

WDNotificationCenter::~WDNotificationCenter() = default;

std::shared_ptr<WDNotificationCenter> WDNotificationCenter::init()
{
    sharedCenter() = std::shared_ptr<WDNotificationCenter>(new WDNotificationCenter);
    return sharedCenter();
}

std::shared_ptr<WDNotificationCenter> WDNotificationCenter::defaultCenter()
{
    return sharedCenter() ? sharedCenter() : init();
}

void WDNotificationCenter::addObserver(const std::shared_ptr<QObject> &observer, const QByteArray &selector,
                                       const QString &name, const QVariant &object)
{
    if (!observer || name.isNull() || !object.isValid())
        return;
    Sender *sender = d->sender(object);
    if (!sender)
        sender = &d->_notificationObjects.emplace_back(Sender{object, {}});
    ObserverTable &table = sender->tables[name];
    const auto known = std::find_if(table.begin(), table.end(),
                                    [&observer](const auto &entry) { return entry->observer == observer; });
    if (known != table.end())
        (*known)->selector = selector;
    else
        table.push_back(std::make_shared<Entry>(Entry{observer, selector}));
}

void WDNotificationCenter::postNotification(const NSNotification &notification)
{
    if (!notification.object().isValid() || notification.name().isNull())
        return;
    Sender *const sender = d->sender(notification.object());
    if (!sender)
        return;
    // A copy: observers may register further ones, or replace this centre, while they are called.
    const ObserverTable observers = sender->tables.value(notification.name());
    for (const auto &entry : observers) {
        // A selector that the observer does not have is reported by Qt on the console and reaches nobody.
        QMetaObject::invokeMethod(entry->observer.get(), entry->selector.constData(), Qt::DirectConnection,
                                  Q_ARG(NSNotification, notification));
    }
}
