// SPDX-License-Identifier: MIT
#include "DozelyKit/system/alerts/UserNotificationCallbacks_p.h"

#include <QMetaMethod>
#include <QObject>

namespace dozely
{

namespace
{
/// The delegate's invokable of that name for a centre and an alert; invalid when it has none.
QMetaMethod callback(const QObject *object, const QByteArray &name)
{
    if (!object)
        return {};
    static constexpr char arguments[] = "(NSUserNotificationCenter*,std::shared_ptr<NSUserNotification>)";
    const QMetaObject *const meta = object->metaObject();
    return meta->method(meta->indexOfMethod((name + arguments).constData()));
}

bool call(NSUserNotificationCenterDelegate *delegate, const QByteArray &name,
          NSUserNotificationCenter *center, const std::shared_ptr<NSUserNotification> &notification)
{
    auto *const object = dynamic_cast<QObject *>(delegate);
    const QMetaMethod method = callback(object, name);
    return method.isValid() &&
           method.invoke(object, Qt::DirectConnection, Q_ARG(NSUserNotificationCenter *, center),
                         Q_ARG(std::shared_ptr<NSUserNotification>, notification));
}
} // namespace

bool UserNotificationCallbacks::didDeliver(NSUserNotificationCenterDelegate *delegate,
                                           NSUserNotificationCenter *center,
                                           const std::shared_ptr<NSUserNotification> &notification)
{
    return call(delegate, "userNotificationCenterDidDeliverNotification", center, notification);
}

bool UserNotificationCallbacks::didActivate(NSUserNotificationCenterDelegate *delegate,
                                            NSUserNotificationCenter *center,
                                            const std::shared_ptr<NSUserNotification> &notification)
{
    return call(delegate, "userNotificationCenterDidActivateNotification", center, notification);
}

std::optional<bool>
UserNotificationCallbacks::shouldPresent(NSUserNotificationCenterDelegate *delegate,
                                         NSUserNotificationCenter *center,
                                         const std::shared_ptr<NSUserNotification> &notification)
{
    auto *const object = dynamic_cast<QObject *>(delegate);
    const QMetaMethod method = callback(object, "userNotificationCenterShouldPresentNotification");
    bool answer = true;
    if (method.returnType() != QMetaType::Bool ||
        !method.invoke(object, Qt::DirectConnection, Q_RETURN_ARG(bool, answer),
                       Q_ARG(NSUserNotificationCenter *, center),
                       Q_ARG(std::shared_ptr<NSUserNotification>, notification)))
        return std::nullopt;
    return answer;
}

} // namespace dozely
